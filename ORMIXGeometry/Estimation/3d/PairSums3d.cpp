#include <ORMIXGeometry/Estimation/3d/PairSums3d.h>
#include <ORMIXGeometry/Estimation/CentredSums.h>
#include <ORMIXMath/Scalar/Round.h>
#include <ORMIXUtil/NumericLimits.h>

#include <algorithm>
#include <cmath>

namespace ormix::geom::detail {
namespace {

/// The products of a pair of points: all between source and target, then the two spreads.
struct PairProducts3d {
  static constexpr std::size_t dimension = 6;
  static constexpr std::size_t nbProducts = 11;

  [[gnu::always_inline]] static inline void add(const SumLanes* c, SumLanes* sums) {
    for (std::size_t i = 0; i < 3; ++i)
      for (std::size_t j = 0; j < 3; ++j) sums[3 * i + j] += c[i] * c[3 + j];
    sums[9] += c[0] * c[0] + c[1] * c[1] + c[2] * c[2];
    sums[10] += c[3] * c[3] + c[4] * c[4] + c[5] * c[5];
  }

  static bool isSmall(const omReal64* step, const omReal64* sums) {
    return 2 * step[9] <= sums[9] && 2 * step[10] <= sums[10];
  }
};

template <class Rows>
PairSums3d sumsOf(const Rows& rows) {
  const auto all = CentredSummation<PairProducts3d, Rows>::of(rows);
  PairSums3d sums{};
  sums.nbPairs = all.nbRows;
  std::copy_n(all.mean.begin(), 3, sums.mean1.begin());
  std::copy_n(all.mean.begin() + 3, 3, sums.mean2.begin());
  std::copy_n(all.sums.begin(), 9, sums.products.begin());
  sums.spread1 = all.sums[9];
  sums.spread2 = all.sums[10];
  return sums;
}

}  // namespace

PairSums3d PairSums3d::of(const SampleView& samples) { return sumsOf(RowView<6>::of(samples)); }

PairSums3d PairSums3d::of(const SampleView& sources, const SampleView& targets) {
  const omReal64* p = sources.data;
  const omReal64* q = targets.data;
  return sumsOf(RowView<6, 3>{{p, p + 1, p + 2, q, q + 1, q + 2}, sources.nbSamples});
}

bool PairSums3d::determineTranslation() const {
  constexpr omReal64 threshold = NumericLimits<omReal64>::s_sqrt_eps;
  omReal64 largest = 0;
  // Not std::max, which ignores NaN.
  for (const omReal64 product : products)
    if (std::isnan(product) || std::abs(product) > largest) largest = std::abs(product);
  return std::isfinite(largest) && largest >= threshold;
}

bool PairSums3d::bestRotation(EulerAngles& angles, omReal64& sumOfTurned) const {
  BestRotation best;
  if (!areSeveralPoints(spread1, mean1, nbPairs) || !areSeveralPoints(spread2, mean2, nbPairs)) return false;
  if (!rotationFromSums(products, best)) return false;
  // NaN counts as no gap. The product of the lengths is an upper bound of the sum.
  if (!(best.gap > NumericLimits<omReal64>::s_sqrt_eps * (std::sqrt(spread1) * std::sqrt(spread2)))) return false;
  const auto rounded = ormix::round<omReal64, omReal64>;
  if (!quaternionToEuler(rounded(best.w), rounded(best.x), rounded(best.y), rounded(best.z), angles.alpha, angles.beta,
                         angles.chi))
    return false;
  sumOfTurned = best.sum;
  return true;
}

PairVerdict PairSums3d::whyNoTranslation() const {
  const PairVerdict coincident = whichCoincide(spread1, mean1, spread2, mean2, nbPairs);
  if (coincident.code != eEC_Success) return coincident;
  omReal64 largest = 0;
  for (const omReal64 product : products) largest = std::max(largest, std::abs(product));
  return {eEC_RankDeficient, s_prescribedSums, largest, NumericLimits<omReal64>::s_sqrt_eps};
}

PairVerdict PairSums3d::whyNoRotation() const {
  const PairVerdict coincident = whichCoincide(spread1, mean1, spread2, mean2, nbPairs);
  if (coincident.code != eEC_Success) return coincident;
  constexpr omReal64 threshold = NumericLimits<omReal64>::s_sqrt_eps;
  const omReal64 lengths = std::sqrt(spread1) * std::sqrt(spread2);
  // Sources or targets on a line make the matrix of products one of rank 1: its minors of two rows vanish.
  omReal64 minors = 0;
  for (std::size_t r = 0; r < 3; ++r)
    for (std::size_t c = 0; c < 3; ++c) {
      const auto at = [&](std::size_t i, std::size_t j) { return products[3 * ((r + i) % 3) + (c + j) % 3] / lengths; };
      const omReal64 minor = at(1, 1) * at(2, 2) - at(1, 2) * at(2, 1);
      minors += minor * minor;
    }
  if (!(std::sqrt(minors) > threshold))
    return {eEC_Collinear, "second singular value of the products of sources and targets over the first",
            std::sqrt(minors), threshold};
  BestRotation best;
  const omReal64 gap = rotationFromSums(products, best) ? best.gap / lengths : 0;
  return {eEC_NotUnique, "what the best rotation gains over others", gap, threshold};
}

SimilarityDistance3d SimilarityDistance3d::ofMeans(omReal64 factor, const EulerAngles& angles, const PairSums3d& sums) {
  SimilarityDistance3d map(factor, angles, std::array<omReal64, 3>{});
  const auto& mean = sums.mean1;
  for (std::size_t k = 0; k < 3; ++k) {
    const auto& row = map.rotation[k];
    map.translation[k] = sums.mean2[k] - factor * (row[0] * mean[0] + row[1] * mean[1] + row[2] * mean[2]);
  }
  return map;
}

}  // namespace ormix::geom::detail
