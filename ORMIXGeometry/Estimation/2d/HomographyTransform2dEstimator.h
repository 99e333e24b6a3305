#pragma once

#include <ORMIXGeometry/Estimation/2d/Estimation2d.h>

namespace ormix::geom {
class ORMIX_GEOMETRY_API HomographyTransform2dEstimator;
}  // namespace ormix::geom

namespace ormix {
extern template class VersionedLevel<geom::HomographyTransform2dEstimator, BaseEstimator>;
extern template class RegisteredObject<geom::HomographyTransform2dEstimator, BaseEstimator>;
}  // namespace ormix

namespace ormix::geom {

extern template class Estimation2d<HomographyTransform2dEstimator>;

/// Projective map of pairs (x1, y1, x2, y2): the 3 x 3 matrix row by row, its last element 1, or of length 1 where that
/// is 0 (the origin goes to infinity).
///
/// Solves the direct linear system of two rows a pair over the nine elements, of least squares under unit length, in
/// coordinates moved to the means and scaled to the spreads (Hartley 1997). Fails with message 8 when its rank is not
/// greater than 6. A rank of 7 (four pairs of which three are collinear) leaves the map open: one of those that agree
/// with the pairs is returned, intended. The residual of a pair is the transfer distance, from p2 to the image of p1,
/// infinite or NaN where that has none. O(pairs), no allocation.
class ORMIX_GEOMETRY_API HomographyTransform2dEstimator : public Estimation2d<HomographyTransform2dEstimator> {
 public:
  static constexpr const char* s_className = "ormix::geom::HomographyTransform2dEstimator";
  static constexpr std::size_t s_minimalDataSize = 4;
  static constexpr std::size_t s_nbParams = 9;
  static constexpr std::size_t s_sampleDimension = 4;

  using BaseEstimator::computeEstimation;
  using BaseEstimator::computeResiduals;
  /// \name The same with a matrix in place of the parameters
  /// @{
  BoolResult computeEstimation(const DataSet& dataSet, Matrix3x3& matrix);
  BoolResult computeEstimation(const SampleView& samples, Matrix3x3& matrix);
  BoolResult computeResiduals(const DataSet& dataSet, const Matrix3x3& matrix, RealVector& residuals) const;
  BoolResult computeResiduals(const SampleView& samples, const Matrix3x3& matrix, RealVector& residuals) const;
  /// @}

  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override;
  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;
};

}  // namespace ormix::geom
