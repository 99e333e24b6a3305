#pragma once

#include <ORMIXGeometry/Estimation/GeometryEstimator.h>

#include <cstddef>
#include <type_traits>

namespace ormix::geom {

namespace detail {
struct PairSums2d;
struct PairSums3d;
struct PairVerdict;
}  // namespace detail

/// An estimator of a transform of the plane (D = 2) or of space (D = 3) that is computed from the means of its pairs
/// and their sums of products alone: `Self` has static functions `estimate(sums, params)` and `whyNot(sums)`, which
/// says why it failed. The bodies are in PairEstimator.ipp.
template <class Self, std::size_t D>
class ORMIX_GEOMETRY_API PairEstimator : public GeometryEstimator<Self> {
 public:
  /// Means and sums of products of pairs.
  using Sums = std::conditional_t<D == 2, detail::PairSums2d, detail::PairSums3d>;

  using BaseEstimator::computeEstimation;
  /// The same from sources and targets in separate arrays, such as two collections of points, which are not copied:
  /// target i belongs to source i. Fails, with `params` unchanged, with message 13 for different numbers of them, and
  /// as the estimation from pairs.
  BoolResult computeEstimation(const SampleView& sources, const SampleView& targets, RealVector& params);

  /// Computes the sums of the pairs and calls `Self::estimate`.
  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override;

 private:
  BoolResult estimateFrom(const Sums& sums, RealVector& params);
};

}  // namespace ormix::geom
