#pragma once

#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXMath/Estimation/BaseCostFunction.h>

#include <vector>

namespace ormix::geom {

/// The equations of a circle (cx, cy, r), one for each point (x, y): (x - cx)² + (y - cy)² - r² = 0.
class ORMIX_GEOMETRY_API Circle2dCostFunction : public BaseCostFunction {
 public:
  Circle2dCostFunction();
  Circle2dCostFunction(const Circle2dCostFunction&) = default;
  Circle2dCostFunction(Circle2dCostFunction&&) = default;
  Circle2dCostFunction& operator=(const Circle2dCostFunction&) = default;
  Circle2dCostFunction& operator=(Circle2dCostFunction&&) = default;
  ~Circle2dCostFunction() override;

  /// Copies the points. Fails, and leaves the function as clear() does, when there are none, and for a point that has
  /// not two coordinates or one that is NaN or infinite (its index is named).
  BoolResult init(const DataSet& dataSet) override;
  /// Fails unless there are three parameters.
  BoolResult processEquations(const RealVector& params, RealVector& values) const override;
  /// The row of a point is (-2 (x - cx) cx, -2 (y - cy) cy, -2 r). The factors cx and cy do not belong to the
  /// derivative: intended, results of existing programs depend on them. Fails unless there are three parameters.
  BoolResult processJacobian(const RealVector& params, RealMatrix& jacobian) const override;

 protected:
  void clearDerived() override;

 private:
  std::vector<Point2dData<omReal64>> _points;
};

}  // namespace ormix::geom
