#pragma once

#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXUtil/NumericLimits.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

/// \file
/// The coordinates in which shapes are fitted to a cloud of points; not installed.

namespace ormix::detail {

/// Where the cloud is and how far it reaches: enough to bring the coordinates near 1, and exactness is not needed, for
/// the solution does not depend on it but for rounding.
template <std::size_t D>
struct CloudFrame {
  std::array<omReal64, D> origin{};
  omReal64 extent = 0;      ///< A power of two; 0 when all samples looked at are one point, or something is not finite.
  omReal64 coarseness = 0;  ///< What rounding of the coordinates is, in parts of the extent.
  /// \name What alignWithFlatCloud() adds in the plane
  /// @{
  bool isFlat = false;
  bool isSteep = false;  ///< y is the frame's first coordinate.
  omReal64 shear = 0;    ///< Times the first coordinate this is taken from the second one.
  /// @}
};

// Samples looked at for the frame at first.
constexpr std::size_t s_nbFrameSamples = 64;

/// Some of the samples: all where there are no more, else spread over them by multiples of the golden ratio, since even
/// steps may be in step with the data.
struct SpreadSamples {
  const SampleView& samples;
  std::size_t nb;

  SpreadSamples(const SampleView& all, std::size_t nbMost) : samples(all), nb(std::min(all.nbSamples, nbMost)) {}

  const omReal64* operator()(std::size_t k) const {
    if (nb == samples.nbSamples) return samples[k];
    constexpr omReal64 golden = 0.6180339887498949;
    const omReal64 turns = static_cast<omReal64>(k) * golden;
    const auto wholeTurns = static_cast<omReal64>(static_cast<omInt64>(turns));
    const auto index = static_cast<std::size_t>((turns - wholeTurns) * static_cast<omReal64>(samples.nbSamples));
    return samples[std::min(index, samples.nbSamples - 1)];
  }
};

template <std::size_t D>
CloudFrame<D> cloudFrame(const SampleView& samples, std::size_t nbLookedAt) {
  CloudFrame<D> frame;
  const SpreadSamples used(samples, nbLookedAt);
  const omReal64* first = used(0);
  for (std::size_t k = 0; k < used.nb; ++k)
    for (std::size_t d = 0; d < D; ++d) frame.origin[d] += (used(k)[d] - first[d]) / static_cast<omReal64>(used.nb);
  omReal64 largest = 0;
  for (std::size_t d = 0; d < D; ++d) {
    frame.origin[d] += first[d];
    largest = std::max(largest, std::abs(frame.origin[d]));
  }
  omReal64 reach = 0;
  for (std::size_t k = 0; k < used.nb; ++k)
    for (std::size_t d = 0; d < D; ++d) reach = std::max(reach, std::abs(used(k)[d] - frame.origin[d]));
  if (!(reach > 0) || !std::isfinite(reach)) return frame;
  // A power of two, so that scaling is exact; held where its inverse is a number, too.
  frame.extent = std::ldexp(1.0, std::clamp(std::ilogb(reach) + 1, -1000, 1000));
  frame.coarseness = NumericLimits<omReal64>::s_eps * std::max(1.0, largest / frame.extent);
  // Of few binary digits, so that taking it away rounds only coordinates smaller than the distance to it.
  const omReal64 step = 0x1p-8 * frame.extent;
  for (omReal64& origin : frame.origin) {
    const omReal64 nbSteps = origin / step;
    if (std::abs(nbSteps) < 0x1p52) origin = std::nearbyint(nbSteps) * step;
  }
  return frame;
}

/// Lays the first coordinate of the frame along a flat cloud and takes its slope from the second one, which then is as
/// small as the cloud is flat, and so are the products with it and what rounding takes from them. Without this, that
/// would be in proportion to the length of the cloud, and many times what rounding of the points does to a fit.
inline void alignWithFlatCloud(const SampleView& samples, CloudFrame<2>& frame) {
  // Four times as long as it is wide; rounder ones gain little.
  constexpr omReal64 largestFlatness = 1.0 / 16;
  // Its product with 32 binary digits is exact.
  constexpr omReal64 shearUnit = 0x1p-20;
  const omReal64 scale = 1 / frame.extent;
  omReal64 xx = 0;
  omReal64 xy = 0;
  omReal64 yy = 0;
  const SpreadSamples used(samples, s_nbFrameSamples);
  for (std::size_t k = 0; k < used.nb; ++k) {
    const omReal64* point = used(k);
    const omReal64 x = (point[0] - frame.origin[0]) * scale;
    const omReal64 y = (point[1] - frame.origin[1]) * scale;
    xx += x * x;
    xy += x * y;
    yy += y * y;
  }
  const omReal64 along = std::max(xx, yy);
  const omReal64 slope = xy / along;
  if (!(std::min(xx, yy) - slope * xy < largestFlatness * along)) return;
  frame.isFlat = true;
  frame.isSteep = yy > xx;
  frame.shear = shearUnit * std::nearbyint(slope / shearUnit);
}

/// Brings x and y, shifted and scaled, into the order of a frame aligned with a flat cloud and shears them: with about
/// one rounding of the small result, and without fused multiplications, which not all processors have.
inline void alignRows(const CloudFrame<2>& frame, omReal64* first, omReal64* second, std::size_t nbRows) {
  // Added and taken away again it leaves 32 binary digits behind the point.
  constexpr omReal64 cut = 0x1.8p20;
  if (frame.isSteep) std::swap_ranges(first, first + nbRows, second);
  for (std::size_t i = 0; i < nbRows; ++i) {
    const omReal64 leading = (first[i] + cut) - cut;
    second[i] = (second[i] - frame.shear * leading) - frame.shear * (first[i] - leading);
  }
}

}  // namespace ormix::detail
