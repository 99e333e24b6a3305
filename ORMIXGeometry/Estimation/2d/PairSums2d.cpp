#include <ORMIXGeometry/Estimation/2d/PairSums2d.h>
#include <ORMIXGeometry/Estimation/CentredSums.h>
#include <ORMIXUtil/NumericLimits.h>

#include <algorithm>
#include <cmath>

namespace ormix::geom::detail {
namespace {

/// The products of PairSums2d, in its order.
struct PairProducts2d {
  static constexpr std::size_t dimension = 4;
  static constexpr std::size_t nbProducts = 4;

  [[gnu::always_inline]] static inline void add(const SumLanes* c, SumLanes* sums) {
    sums[0] += c[0] * c[0] + c[1] * c[1];
    sums[1] += c[2] * c[2] + c[3] * c[3];
    sums[2] += c[1] * c[2] - c[0] * c[3];
    sums[3] += c[0] * c[2] + c[1] * c[3];
  }

  static bool isSmall(const omReal64* step, const omReal64* sums) {
    return 2 * step[0] <= sums[0] && 2 * step[1] <= sums[1];
  }
};

template <class Rows>
PairSums2d sumsOf(const Rows& rows) {
  const auto all = CentredSummation<PairProducts2d, Rows>::of(rows);
  return {all.nbRows,  all.mean[0], all.mean[1], all.mean[2], all.mean[3],
          all.sums[0], all.sums[1], all.sums[2], all.sums[3]};
}

}  // namespace

bool PairSums2d::determineRotation() const {
  constexpr omReal64 threshold = NumericLimits<omReal64>::s_sqrt_eps;
  // The absolute threshold is intended.
  if (std::abs(s) < threshold && std::abs(c) < threshold) return false;
  if (!areSeveralPoints<2>(spread1, {mx1, my1}, nbPairs) || !areSeveralPoints<2>(spread2, {mx2, my2}, nbPairs))
    return false;
  // What turning the sources the best way gains, against the product of the lengths, which it never exceeds.
  const omReal64 gain = std::hypot(s, c);
  return std::isfinite(gain) && gain > threshold * (std::sqrt(spread1) * std::sqrt(spread2));
}

PairVerdict PairSums2d::whyNoRotation() const {
  const PairVerdict coincident = whichCoincide<2>(spread1, {mx1, my1}, spread2, {mx2, my2}, nbPairs);
  if (coincident.code != eEC_Success) return coincident;
  constexpr omReal64 threshold = NumericLimits<omReal64>::s_sqrt_eps;
  const omReal64 gain = std::hypot(s, c) / (std::sqrt(spread1) * std::sqrt(spread2));
  if (!(gain > threshold)) return {eEC_NotUnique, "what the best rotation gains over others", gain, threshold};
  return {eEC_RankDeficient, s_prescribedSums, std::max(std::abs(s), std::abs(c)), threshold};
}

omReal64 PairSums2d::rotationAngle() const {
  // A difference from 0 is never -0, so that a half turn is always pi.
  return std::atan2(0.0 - s, c);
}

PairSums2d PairSums2d::of(const SampleView& samples) { return sumsOf(RowView<4>::of(samples)); }

PairSums2d PairSums2d::of(const SampleView& sources, const SampleView& targets) {
  const omReal64* p = sources.data;
  const omReal64* q = targets.data;
  return sumsOf(RowView<4, 2>{{p, p + 1, q, q + 1}, sources.nbSamples});
}

}  // namespace ormix::geom::detail
