#pragma once

#include <ORMIXMath/Scalar/Round.h>

#include <cmath>

namespace ormix {

/// Whether a coordinate of an image is finite in the coordinate type; of integers, which saturate, before rounding.
template <class T>
inline bool isFiniteIn(omReal64 coordinate) {
  if constexpr (std::is_integral_v<T>)
    return std::isfinite(coordinate);
  else
    return std::isfinite(round<T, omReal64>(coordinate));
}

/// \name Bring an image in omReal64 to the coordinate type. False, the outputs untouched, when it is not finite there.
/// @{
template <class T>
inline bool storeImage(omReal64 x, omReal64 y, T& xOut, T& yOut) {
  if (!isFiniteIn<T>(x) || !isFiniteIn<T>(y)) return false;
  xOut = round<T, omReal64>(x);
  yOut = round<T, omReal64>(y);
  return true;
}
template <class T>
inline bool storeImage(omReal64 x, omReal64 y, omReal64 z, T& xOut, T& yOut, T& zOut) {
  if (!isFiniteIn<T>(z) || !storeImage(x, y, xOut, yOut)) return false;
  zOut = round<T, omReal64>(z);
  return true;
}
/// @}

}  // namespace ormix
