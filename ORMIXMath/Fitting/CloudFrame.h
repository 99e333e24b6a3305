#pragma once

#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXUtil/NumericLimits.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>

/// \file
/// Normalised coordinates in which shapes are fitted to a cloud of points; not installed.

namespace ormix::detail {

/// An origin within a cloud of points and a length of about its radius: coordinates about the origin divided by the
/// extent are near 1. Both need not be exact, as the fitted shape depends on them by rounding only.
template <std::size_t D>
struct CloudFrame {
  std::array<omReal64, D> origin{};  ///< A point near the mean of the samples used.
  omReal64 extent = 0;               ///< A power of two; 0 when the samples used are equal or not finite.
  omReal64 coarseness = 0;           ///< Rounding error of the coordinates divided by the extent.
  /// \name Set by alignWithFlatCloud() in the plane
  /// @{
  bool isFlat = false;   ///< Whether the frame is aligned.
  bool isSteep = false;  ///< Whether y is the first coordinate of the aligned frame: for clouds higher than wide.
  omReal64 shear = 0;    ///< The aligned second coordinate is the other one minus this times the first one.
  /// @}
};

// Number of samples from which a frame is computed at first.
constexpr std::size_t s_nbFrameSamples = 64;

/// A selection of at most `nbMost` samples: all if there are no more, else spread over them by multiples of the golden
/// ratio, since equal steps may coincide with a period of the data.
struct SpreadSamples {
  const SampleView& samples;
  std::size_t nb;  ///< Number of samples selected.

  SpreadSamples(const SampleView& all, std::size_t nbMost) : samples(all), nb(std::min(all.nbSamples, nbMost)) {}

  /// Row k of the selection.
  const omReal64* operator()(std::size_t k) const {
    if (nb == samples.nbSamples) return samples[k];
    constexpr omReal64 golden = 0.6180339887498949;
    const omReal64 multiple = static_cast<omReal64>(k) * golden;
    const auto wholePart = static_cast<omReal64>(static_cast<omInt64>(multiple));
    const auto index = static_cast<std::size_t>((multiple - wholePart) * static_cast<omReal64>(samples.nbSamples));
    return samples[std::min(index, samples.nbSamples - 1)];
  }
};

/// The least power of two above a positive finite value, clamped so that its inverse is a normal number.
inline omReal64 powerOfTwoAbove(omReal64 value) {
  constexpr int bias = 1023;
  constexpr int nbDigits = 52;
  omUInt64 bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  const int exponent = std::clamp(static_cast<int>(bits >> nbDigits) - bias + 1, -1000, 1000);
  bits = static_cast<omUInt64>(exponent + bias) << nbDigits;
  std::memcpy(&value, &bits, sizeof bits);
  return value;
}

/// The nearest integer, ties to even, of a value below 2^52 in magnitude.
inline omReal64 nearestInteger(omReal64 value) { return std::copysign((std::abs(value) + 0x1p52) - 0x1p52, value); }

/// The frame of at most `nbUsed` of the samples, not aligned.
template <std::size_t D>
CloudFrame<D> cloudFrame(const SampleView& samples, std::size_t nbUsed) {
  CloudFrame<D> frame;
  const SpreadSamples used(samples, nbUsed);
  const omReal64* first = used(0);
  const omReal64 part = 1 / static_cast<omReal64>(used.nb);
  for (std::size_t k = 0; k < used.nb; ++k)
    for (std::size_t d = 0; d < D; ++d) frame.origin[d] += (used(k)[d] - first[d]) * part;
  omReal64 largest = 0;
  for (std::size_t d = 0; d < D; ++d) {
    frame.origin[d] += first[d];
    largest = std::max(largest, std::abs(frame.origin[d]));
  }
  // One maximum a coordinate: a single one would wait for itself at each value.
  std::array<omReal64, D> reaches{};
  for (std::size_t k = 0; k < used.nb; ++k)
    for (std::size_t d = 0; d < D; ++d) reaches[d] = std::max(reaches[d], std::abs(used(k)[d] - frame.origin[d]));
  const omReal64 reach = *std::max_element(reaches.begin(), reaches.end());
  if (!(reach > 0) || !std::isfinite(reach)) return frame;
  // A power of two, so that scaling is exact.
  frame.extent = powerOfTwoAbove(reach);
  frame.coarseness = NumericLimits<omReal64>::s_eps * std::max(1.0, largest / frame.extent);
  // Rounded to few binary digits, so that subtracting it is exact except for coordinates much closer to zero than to
  // it.
  const omReal64 step = 0x1p-8 * frame.extent;
  for (omReal64& origin : frame.origin) {
    const omReal64 nbSteps = origin / step;
    if (std::abs(nbSteps) < 0x1p52) origin = nearestInteger(nbSteps) * step;
  }
  return frame;
}

/// Aligns the frame with a long and narrow cloud by a shear along the second coordinate, which then is as small as the
/// cloud is narrow, and so are the rounding errors of the products with it. Without the shear these errors would be in
/// proportion to the length of the cloud, and much larger than the effect of the rounding of the points on a fit.
inline void alignWithFlatCloud(const SampleView& samples, CloudFrame<2>& frame) {
  // Ratio of variances of a cloud four times as long as wide; clouds nearer to a disk gain little.
  constexpr omReal64 largestVarianceRatio = 1.0 / 16;
  // Shears are multiples of this: few enough digits for an exact product with a number of 32 binary digits.
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
  if (!(std::min(xx, yy) - slope * xy < largestVarianceRatio * along)) return;
  frame.isFlat = true;
  frame.isSteep = yy > xx;
  frame.shear = shearUnit * std::nearbyint(slope / shearUnit);
}

/// Orders and shears columns of x and y, shifted and scaled, as an aligned frame requires. The error is about one
/// rounding of the small result, without fused multiply-add, which not all processors have: the product is split in
/// two.
inline void alignRows(const CloudFrame<2>& frame, omReal64* first, omReal64* second, std::size_t nbRows) {
  // Adding and subtracting this rounds to a multiple of 2^-32.
  constexpr omReal64 cut = 0x1.8p20;
  if (frame.isSteep) std::swap_ranges(first, first + nbRows, second);
  for (std::size_t i = 0; i < nbRows; ++i) {
    const omReal64 leading = (first[i] + cut) - cut;
    second[i] = (second[i] - frame.shear * leading) - frame.shear * (first[i] - leading);
  }
}

}  // namespace ormix::detail
