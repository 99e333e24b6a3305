#pragma once

#include <ORMIXGeometry/Estimation/GeometryEstimator.h>
#include <ORMIXMath/Estimation/IterativeRefinement.h>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(extern, Circle2dEstimator)

namespace ormix::geom {

/// Circle of points (x, y): centre x, centre y, radius.
///
/// Three points give the circle through them. More give the one that minimises the sum of squared residuals, the
/// solution of the linear system with the rows (2x, 2y, 1 | x² + y²) (Kåsa 1976). Fails with message 0 for points that
/// are collinear or coincide, to rounding of their coordinates. The residual of a point is algebraic and signed,
/// (x - cx)² + (y - cy)² - r². O(points); nothing is allocated.
class ORMIX_GEOMETRY_API Circle2dEstimator : public GeometryEstimator<Circle2dEstimator> {
 public:
  static constexpr const char* s_className = "ormix::geom::Circle2dEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 3;                           ///< points
  static constexpr std::size_t s_nbParams = 3;                                  ///< cx, cy, r
  static constexpr std::size_t s_sampleDimension = 2;                           ///< x, y

  /// Improves `start` on the samples by iterative refinement of Circle2dCostFunction, whose Jacobian is not the
  /// derivative (intended): the descent may end early, or at its start. `result` holds how it ended and the cost, half
  /// the sum of squared residuals, before and after, which never grows. Fails with message 1 and the reason when the
  /// cost function cannot be initialised, or as refineIteratively(), with `result` unchanged.
  BoolResult refineEstimation(const DataSet& dataSet, const RealVector& start, RefinementResult& result,
                              const RefinementOptions& options = {}) const;
  /// The same for the parameters alone. Fails as well, with how it ended and the cost in the message, when no step made
  /// the cost smaller and the start is not known to be the minimum; every failure leaves `params` unchanged.
  BoolResult refineEstimation(const DataSet& dataSet, const RealVector& start, RealVector& params,
                              const RefinementOptions& options = {}) const;

  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override;
  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;
  /// 2r: near the surface the residual is about 2r times the distance.
  omReal64 getResidualScale(const RealVector& params) const override;
};

}  // namespace ormix::geom
