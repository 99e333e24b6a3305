#pragma once

#include <ORMIXGeometry/Estimation/GeometryEstimator.h>

#include <cstddef>
#include <type_traits>

namespace ormix::geom {

namespace detail {
struct PairSums2d;
struct PairSums3d;
}  // namespace detail

/// An estimator of a transform of the plane (D = 2) or of space (D = 3) that needs no more of its pairs than their
/// means and sums of products: `Self` states `estimate(sums, params)`, static. The bodies are in PairEstimator.ipp.
template <class Self, std::size_t D>
class ORMIX_GEOMETRY_API PairEstimator : public GeometryEstimator<Self> {
 public:
  using Sums = std::conditional_t<D == 2, detail::PairSums2d, detail::PairSums3d>;

  using BaseEstimator::computeEstimation;
  /// The same from sources and targets that stand apart, such as two collections of points, which are read where they
  /// are: pairs made of them would have to be written and read first. Fails with message 13 for different numbers of
  /// them, and as the estimation from pairs, `params` untouched.
  BoolResult computeEstimation(const SampleView& sources, const SampleView& targets, RealVector& params);

  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override;
};

}  // namespace ormix::geom
