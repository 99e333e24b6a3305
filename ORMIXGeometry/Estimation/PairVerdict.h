#pragma once

#include <ORMIXGeometry/Estimation/CentredSums.h>
#include <ORMIXMath/Estimation/EstimationStatus.h>
#include <ORMIXUtil/NumericLimits.h>

#include <array>
#include <cmath>
#include <string_view>

/// \file
/// Why samples do not determine a model, and pairs no transform; not installed.

namespace ormix::geom::detail {

/// What was compared, as EstimationStatus has it.
struct PairVerdict {
  eEstimationCode code;       ///< eEC_Success where nothing speaks against the pairs
  std::string_view quantity;  ///< lives as long as the program
  omReal64 value, threshold;
};

// The thresholds with a unit: what passes them depends on the scale of the coordinates.
constexpr std::string_view s_prescribedSums =
    "largest sum of products of centred coordinates, against a prescribed absolute threshold";

constexpr std::string_view s_prescribedProduct =
    "mean product of the centred coordinates, against a prescribed absolute threshold";

/// Whether the sources or the targets are one point to rounding.
template <std::size_t D>
PairVerdict whichCoincide(omReal64 spread1, const std::array<omReal64, D>& mean1, omReal64 spread2,
                          const std::array<omReal64, D>& mean2, omReal64 nbPairs) {
  constexpr omReal64 threshold = 4 * NumericLimits<omReal64>::s_eps;
  const auto relative = [&](omReal64 spread, const std::array<omReal64, D>& mean) {
    omReal64 largest = 0;
    for (const omReal64 coordinate : mean) largest = std::max(largest, std::abs(coordinate));
    return largest > 0 ? std::sqrt(spread / nbPairs) / largest : 0;
  };
  if (!std::isfinite(spread1) || !std::isfinite(spread2)) return {eEC_NotFinite, {}, 0, 0};
  if (!areSeveralPoints(spread1, mean1, nbPairs))
    return {eEC_Coincident, "spread of the sources over their coordinates", relative(spread1, mean1), threshold};
  if (!areSeveralPoints(spread2, mean2, nbPairs))
    return {eEC_Coincident, "spread of the targets over their coordinates", relative(spread2, mean2), threshold};
  return {eEC_Success, {}, 0, 0};
}

}  // namespace ormix::geom::detail
