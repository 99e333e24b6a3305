#pragma once

#include <ORMIXGeometry/Estimation/GeometryEstimator.h>
#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Estimation/RobustModel.h>

#include <cstddef>
#include <type_traits>

namespace ormix::geom {

/// The estimators of projective maps of the plane (D = 2) and of space (D = 3), from pairs of a source p1 and its
/// target p2.
///
/// Direct linear transformation: the elements of the matrix are the vector of length 1 that minimises the squared
/// residuals of a homogeneous linear system with one row for each pair and target coordinate, in coordinates that are
/// centred at the means and scaled by the spreads (Hartley 1997). Fails with the message of the class when the rank of
/// the system is more than two below the number of elements. A null space of dimension two is accepted (intended): it
/// occurs with the fewest pairs when all but one of the sources are collinear in the plane or coplanar in space, and
/// one of the maps through the pairs is then returned. Fails with the same message when the matrix is singular, to
/// rounding of the coordinates, and when it does not map the fewest pairs, to half the digits of the spread of the
/// targets: for collinear or coplanar targets, and for collinear sources whose targets are not.
///
/// The residual of a pair is the transfer error, the distance of p2 from the image of p1; infinite or NaN where p1 has
/// no finite image. Far from the origin the elements of the matrix represent a perspective less precisely than the
/// pairs do, see docs/accuracy.md. O(pairs); nothing is allocated. The bodies are in HomographyEstimator.ipp.
template <class Self, std::size_t D>
class ORMIX_GEOMETRY_API HomographyEstimator : public GeometryEstimator<Self>, public RobustModel {
 public:
  /// The matrix of the map.
  using Matrix = std::conditional_t<D == 2, Matrix3x3, Matrix4x4>;

  using BaseEstimator::computeEstimation;
  using BaseEstimator::computeResiduals;
  /// The functions of the same names of BaseEstimator with a matrix in place of the parameters.
  /// @{
  BoolResult computeEstimation(const DataSet& dataSet, Matrix& matrix);
  BoolResult computeEstimation(const SampleView& samples, Matrix& matrix);
  BoolResult computeResiduals(const DataSet& dataSet, const Matrix& matrix, RealVector& residuals) const;
  BoolResult computeResiduals(const SampleView& samples, const Matrix& matrix, RealVector& residuals) const;
  /// @}

  /// The functions that computeEstimation() and computeResiduals() call; see BaseEstimator.
  /// @{
  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override;
  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;
  /// @}

  /// Many times faster than processViewEstimation(): through the fewest pairs by two projective frames
  /// (HartleyZisserman2004), for more by the normal equations of the direct linear system, its last element set to 1 in
  /// coordinates centred at the means. False for flat sources or targets, and where the matrix is singular.
  bool estimateRoughly(const SampleView& samples, RealVector& params) const override;
  bool hasRoughEstimation() const override { return true; }
};

}  // namespace ormix::geom
