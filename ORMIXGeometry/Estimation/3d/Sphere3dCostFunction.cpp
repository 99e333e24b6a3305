#include <ORMIXGeometry/Estimation/3d/Sphere3dCostFunction.h>

namespace ormix::geom {

Sphere3dCostFunction::Sphere3dCostFunction() = default;
Sphere3dCostFunction::~Sphere3dCostFunction() = default;

}  // namespace ormix::geom
