#pragma once

#include <ORMIXGeometry/Estimation/SphereEquations.h>

namespace ormix::geom {

/// The equations of a circle (cx, cy, r), one for each point (x, y): (x - cx)² + (y - cy)² - r² = 0. Their Jacobian is
/// not the derivative: see SphereEquations.
class ORMIX_GEOMETRY_API Circle2dCostFunction : public SphereEquations<2> {
 public:
  /// No points; see init().
  Circle2dCostFunction();
  Circle2dCostFunction(const Circle2dCostFunction&) = default;
  Circle2dCostFunction(Circle2dCostFunction&&) = default;
  Circle2dCostFunction& operator=(const Circle2dCostFunction&) = default;
  Circle2dCostFunction& operator=(Circle2dCostFunction&&) = default;
  ~Circle2dCostFunction() override;
};

}  // namespace ormix::geom
