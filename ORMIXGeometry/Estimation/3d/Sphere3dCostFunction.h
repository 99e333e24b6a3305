#pragma once

#include <ORMIXGeometry/Estimation/SphereEquations.h>

namespace ormix::geom {

/// The equations of a sphere (cx, cy, cz, r), one for each point (x, y, z): (x - cx)² + (y - cy)² + (z - cz)² - r² = 0.
/// Their Jacobian is not the derivative: see SphereEquations.
class ORMIX_GEOMETRY_API Sphere3dCostFunction : public SphereEquations<3> {
 public:
  /// No points; see init().
  Sphere3dCostFunction();
  Sphere3dCostFunction(const Sphere3dCostFunction&) = default;
  Sphere3dCostFunction(Sphere3dCostFunction&&) = default;
  Sphere3dCostFunction& operator=(const Sphere3dCostFunction&) = default;
  Sphere3dCostFunction& operator=(Sphere3dCostFunction&&) = default;
  ~Sphere3dCostFunction() override;
};

}  // namespace ormix::geom
