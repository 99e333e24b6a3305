#pragma once

#include <ORMIXMath/Transform/2d/PointRun2dPortable.h>
#if defined(__x86_64__)
#include <ORMIXMath/Transform/2d/PointRun2dAvx2.h>
#include <ORMIXMath/Transform/2d/PointRun2dAvx512.h>
#endif

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>

/// \file
/// What proves without computing images that all images of a run are finite.

namespace ormix::detail {

/// A bound on the magnitudes that have this word, infinite when they are not finite.
template <class T>
omReal64 magnitudeOf(omUInt32 word) {
  if constexpr (std::is_integral_v<T>) {
    return static_cast<omReal64>(word);
  } else {
    using Bits = std::conditional_t<sizeof(T) == 4, omUInt32, omUInt64>;
    const Bits bits = sizeof(T) == 4 ? Bits{word} : static_cast<Bits>((omUInt64{word} << 32) | 0xFFFFFFFFu);
    T magnitude;
    std::memcpy(&magnitude, &bits, sizeof bits);
    const bool isFinite = magnitude <= std::numeric_limits<T>::max();
    return isFinite ? static_cast<omReal64>(magnitude) : std::numeric_limits<omReal64>::infinity();
  }
}

/// No value is larger in magnitude, nor NaN when it is finite. At most a millionth too large.
template <class T>
omReal64 magnitudeBound(const T* values, std::size_t nbValues) {
  omUInt32 largest = 0;
  std::size_t nbLeft = nbValues;
#if defined(__x86_64__)
  if (__builtin_cpu_supports("avx512f"))
    nbLeft = PointRun2dAvx512::raise(values, nbValues, largest);
  else if (__builtin_cpu_supports("avx2"))
    nbLeft = PointRun2dAvx2::raise(values, nbValues, largest);
#endif
  return magnitudeOf<T>(std::max(largest, PointRun2dPortable::largestWord(values + nbValues - nbLeft, nbLeft)));
}

/// Index of the first value that is not finite, `nbValues` when all are.
template <class T>
std::size_t firstNotFinite(const T* values, std::size_t nbValues) {
  if (std::isfinite(magnitudeBound(values, nbValues))) return nbValues;
  const T* const found = std::find_if(values, values + nbValues, [](T value) { return !std::isfinite(value); });
  return static_cast<std::size_t>(found - values);
}

/// A magnitude that no value of an integral type exceeds.
template <class T>
inline constexpr omReal64 s_typeMagnitude = 1 + static_cast<omReal64>(std::numeric_limits<T>::max());

/// Bounds below this prove that images are finite in T; half the range leaves room for rounding in the bound itself.
template <class T>
inline constexpr omReal64 s_finiteProof =
    0.5 * static_cast<omReal64>(std::numeric_limits<std::conditional_t<std::is_integral_v<T>, omReal64, T>>::max());

}  // namespace ormix::detail
