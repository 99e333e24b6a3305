#pragma once

#include <ORMIXMath/Transform/CoordinateVectors.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <initializer_list>

/// \file
/// What proves without computing images that all images of a run are finite: the largest magnitude of its coordinates
/// and a bound on what a map makes of that.

namespace ormix::detail {

/// An integer that grows with the magnitude of a coordinate of type T.
template <class T>
using MagnitudeWord = std::conditional_t<std::is_same_v<T, omReal64>, omInt64,
                                         std::conditional_t<std::is_same_v<T, omUInt32>, omUInt32, omInt32>>;

/// That of a coordinate with these bits, or of each lane of a vector: of a real the bits without the sign, of a
/// negative integer its magnitude less one.
template <class T, class Bits>
[[gnu::always_inline]] inline Bits magnitudeWordOf(const Bits& bits) {
  if constexpr (std::is_floating_point_v<T>)
    return bits & std::numeric_limits<MagnitudeWord<T>>::max();
  else if constexpr (std::is_signed_v<T>)
    return bits ^ (bits >> 31);
  else
    return bits;
}

/// The largest of all.
template <class T>
MagnitudeWord<T> largestMagnitude(const T* values, std::size_t nbValues) {
  MagnitudeWord<T> result = 0;
  for (std::size_t index = 0; index < nbValues; ++index) {
    MagnitudeWord<T> bits;
    std::memcpy(&bits, values + index, sizeof bits);
    result = std::max(result, magnitudeWordOf<T>(bits));
  }
  return result;
}

/// The same in vectors of so many bytes. The four quarters are read side by side, as processors fetch several streams
/// faster than one, and each from its last values to its first, which leaves in the caches what is mapped first.
template <std::size_t NbBytes, class T>
[[gnu::always_inline]] inline MagnitudeWord<T> largestMagnitudeInVectors(const T* values, std::size_t nbValues) {
  using Word = MagnitudeWord<T>;
  constexpr std::size_t nbLanes = NbBytes / sizeof(T);
  using Words = Vector<Word, nbLanes>;
  Words largest[4] = {};
  const std::size_t quarter = nbValues / (4 * nbLanes) * nbLanes;
  for (std::size_t at = quarter; at > 0;) {
    at -= nbLanes;
    for (std::size_t q = 0; q < 4; ++q) {
      const Words bits = *reinterpret_cast<const StoredVector<Word, nbLanes>*>(values + q * quarter + at);
      const Words words = magnitudeWordOf<T>(bits);
      largest[q] = words > largest[q] ? words : largest[q];
    }
  }
  Word result = largestMagnitude(values + 4 * quarter, nbValues - 4 * quarter);
  for (const Words& words : largest)
    for (std::size_t lane = 0; lane < nbLanes; ++lane) result = words[lane] > result ? words[lane] : result;
  return result;
}

/// No coordinate with at most this word is larger in magnitude; infinite when one of them may not be finite.
template <class T>
omReal64 magnitudeBound(MagnitudeWord<T> word) {
  if constexpr (std::is_integral_v<T>) {
    return static_cast<omReal64>(word) + 1;
  } else {
    T magnitude;
    std::memcpy(&magnitude, &word, sizeof magnitude);
    return std::isfinite(magnitude) ? static_cast<omReal64>(magnitude) : std::numeric_limits<omReal64>::infinity();
  }
}

/// Bounds below this prove that images are finite in T; half the range leaves room for rounding in the bound itself.
template <class T>
inline constexpr omReal64 s_finiteProof =
    0.5 * static_cast<omReal64>(std::numeric_limits<std::conditional_t<std::is_integral_v<T>, omReal64, T>>::max());

/// Whether no quotient of a homography can leave the finite range of T: its numerators are bounded in magnitude, its
/// denominator is within `spread` of `constant`. False is no proof.
template <class T>
bool quotientsStayFinite(std::initializer_list<omReal64> numerators, omReal64 spread, omReal64 constant) {
  // The denominator keeps away from zero by much more than its rounding.
  const omReal64 leastDenominator = std::abs(constant) - spread;
  if (!(leastDenominator > 1e-6 * std::abs(constant)) || !std::isnormal(leastDenominator)) return false;
  return std::all_of(numerators.begin(), numerators.end(), [leastDenominator](omReal64 numerator) {
    return numerator < s_finiteProof<omReal64> && numerator / (0.5 * leastDenominator) < s_finiteProof<T>;
  });
}

}  // namespace ormix::detail
