#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXMath/Estimation/BaseCostFunction.h>

#include <array>
#include <cstddef>
#include <vector>

namespace ormix::geom {

/// The equations of a circle (D = 2: cx, cy, r) or sphere (D = 3: cx, cy, cz, r), one for each point: the squared
/// distance from the centre less r² = 0.
template <std::size_t D>
class ORMIX_GEOMETRY_API SphereEquations : public BaseCostFunction {
 public:
  /// Copies the points. Fails, with the function empty as after clear(), when there are none, and for a point that does
  /// not have D coordinates or has one that is NaN or infinite; the message has the index of the point.
  BoolResult init(const DataSet& dataSet) override;
  /// The value of each equation. Fails unless there are D + 1 parameters.
  BoolResult processEquations(const RealVector& params, RealVector& values) const override;
  /// The row of a point is (-2 (x - cx) cx, -2 (y - cy) cy, ..., -2 r). The factors cx, cy, ... are not those of the
  /// derivative (intended): results of existing programs depend on them. Fails unless there are D + 1 parameters.
  BoolResult processJacobian(const RealVector& params, RealMatrix& jacobian) const override;

 protected:
  /// No points.
  SphereEquations();
  SphereEquations(const SphereEquations&) = default;
  SphereEquations(SphereEquations&&) = default;
  SphereEquations& operator=(const SphereEquations&) = default;
  SphereEquations& operator=(SphereEquations&&) = default;
  ~SphereEquations() override;

  /// Removes the points and releases their memory.
  void clearDerived() override;

 private:
  std::vector<std::array<omReal64, D>> _points;
};

extern template class SphereEquations<2>;
extern template class SphereEquations<3>;

}  // namespace ormix::geom
