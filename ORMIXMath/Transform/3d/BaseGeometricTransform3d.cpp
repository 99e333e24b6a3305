#include <ORMIXMath/Transform/3d/BaseGeometricTransform3d.h>

namespace ormix {

BaseGeometricTransform3d::~BaseGeometricTransform3d() = default;

}  // namespace ormix
