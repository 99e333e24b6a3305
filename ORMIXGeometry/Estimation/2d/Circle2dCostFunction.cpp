#include <ORMIXGeometry/Estimation/2d/Circle2dCostFunction.h>

namespace ormix::geom {

Circle2dCostFunction::Circle2dCostFunction() = default;
Circle2dCostFunction::~Circle2dCostFunction() = default;

}  // namespace ormix::geom
