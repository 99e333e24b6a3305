#pragma once

#include <ORMIXGeometry/Estimation/PairEstimator.h>

namespace ormix::geom {
class ORMIX_GEOMETRY_API TranslationTransform2dEstimator;
}  // namespace ormix::geom

namespace ormix {
extern template class VersionedLevel<geom::TranslationTransform2dEstimator, BaseEstimator>;
extern template class RegisteredObject<geom::TranslationTransform2dEstimator, BaseEstimator>;
}  // namespace ormix

namespace ormix::geom {

extern template class GeometryEstimator<TranslationTransform2dEstimator>;
extern template class PairEstimator<TranslationTransform2dEstimator, 2>;

/// Translation of pairs (x1, y1, x2, y2): tx, ty, the difference of the means of targets and sources.
///
/// Fails with message 16 where a rotation could not be told either, as for RigidTransform2dEstimator, so when all
/// sources or all targets coincide. A translation would exist: intended. The residual of a pair is the distance of p2
/// to the image of p1. O(pairs), no allocation.
class ORMIX_GEOMETRY_API TranslationTransform2dEstimator : public PairEstimator<TranslationTransform2dEstimator, 2> {
 public:
  static constexpr const char* s_className = "ormix::geom::TranslationTransform2dEstimator";
  static constexpr std::size_t s_minimalDataSize = 2;
  static constexpr std::size_t s_nbParams = 2;
  static constexpr std::size_t s_sampleDimension = 4;

  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;

 private:
  friend PairEstimator<TranslationTransform2dEstimator, 2>;
  static BoolResult estimate(const detail::PairSums2d& sums, RealVector& params);
};

}  // namespace ormix::geom
