#pragma once

#include <ORMIXGeometry/Estimation/GeometryEstimator.h>
#include <ORMIXMath/Algebra/AlgebraTypes.h>

#include <cstddef>
#include <type_traits>

namespace ormix::geom {

/// The estimators of projective maps of the plane (D = 2) and of space (D = 3), from pairs of a source p1 and its
/// target p2.
///
/// Solves the direct linear system of one row a pair and target coordinate over the elements of the matrix, of least
/// squares under unit length, in coordinates moved to the means and scaled to the spreads (Hartley 1997). Fails with
/// the message of the class when its rank is more than two below the number of elements. One more than the matrix'
/// factor may stay open (with the fewest pairs, when all but one of the sources are collinear in the plane or coplanar
/// in space): one of the maps that agree with the pairs is returned, intended. The residual of a pair is the transfer
/// distance, from p2 to the image of p1, infinite or NaN where that has none. Far from the origin a perspective is held
/// by the matrix less well than by the pairs: docs/accuracy.md has the sizes. O(pairs), no allocation. The bodies are
/// in HomographyEstimator.ipp.
template <class Self, std::size_t D>
class ORMIX_GEOMETRY_API HomographyEstimator : public GeometryEstimator<Self> {
 public:
  using Matrix = std::conditional_t<D == 2, Matrix3x3, Matrix4x4>;

  using BaseEstimator::computeEstimation;
  using BaseEstimator::computeResiduals;
  /// \name The same with a matrix in place of the parameters
  /// @{
  BoolResult computeEstimation(const DataSet& dataSet, Matrix& matrix);
  BoolResult computeEstimation(const SampleView& samples, Matrix& matrix);
  BoolResult computeResiduals(const DataSet& dataSet, const Matrix& matrix, RealVector& residuals) const;
  BoolResult computeResiduals(const SampleView& samples, const Matrix& matrix, RealVector& residuals) const;
  /// @}

  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override;
  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;
};

}  // namespace ormix::geom
