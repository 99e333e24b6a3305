#include <ORMIXMath/Transform/2d/BaseGeometricTransform2d.h>

namespace ormix {

BaseGeometricTransform2d::~BaseGeometricTransform2d() = default;

}  // namespace ormix
