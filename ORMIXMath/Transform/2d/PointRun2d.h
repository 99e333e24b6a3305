#pragma once

#include <ORMIXMath/Transform/2d/AffineTransform2d.h>
#include <ORMIXMath/Transform/2d/Homography2d.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <type_traits>

namespace ormix {

namespace detail {

/// The largest magnitude of a run of numbers; infinity when one is not a number.
template <class T>
omReal64 largestMagnitude(const T* values, std::size_t count) {
  if constexpr (std::is_integral_v<T>) {
    // No need to look: the type bounds them.
    return std::max(-static_cast<omReal64>(std::numeric_limits<T>::min()),
                    static_cast<omReal64>(std::numeric_limits<T>::max()));
  } else {
    T largest = 0;
    bool ordered = true;
    for (std::size_t index = 0; index < count; ++index) {
      const T magnitude = std::abs(values[index]);
      largest = magnitude > largest ? magnitude : largest;
      ordered &= magnitude <= std::numeric_limits<T>::max();
    }
    return ordered ? static_cast<omReal64>(largest) : std::numeric_limits<omReal64>::infinity();
  }
}

/// Whether no image of points of at most this magnitude can leave the finite range of `T`; false is no proof.
template <class T>
bool imagesStayFinite(const AffineCoefficients2d& map, omReal64 magnitude) {
  const omReal64 x = (std::abs(map.xx) + std::abs(map.xy)) * magnitude + std::abs(map.tx);
  const omReal64 y = (std::abs(map.yx) + std::abs(map.yy)) * magnitude + std::abs(map.ty);
  using Limited = std::conditional_t<std::is_integral_v<T>, omReal64, T>;
  // Half the range leaves room for the rounding of the bound itself.
  return std::max(x, y) < 0.5 * static_cast<omReal64>(std::numeric_limits<Limited>::max());
}

template <class Map, class T>
std::size_t findUndefinedImage(const Map& map, const T* xy, std::size_t nbPoints) {
  for (std::size_t index = 0; index < nbPoints; ++index) {
    T x{};
    T y{};
    if (!map.apply(xy[2 * index], xy[2 * index + 1], x, y)) return index;
  }
  return nbPoints;
}

}  // namespace detail

/// Index of the first of a run of points (x and y in turn) that has no image under the map, `nbPoints` when all have
/// one.
template <class Self, std::size_t NbParams, class T>
std::size_t firstUndefinedImage(const AffineTransform2d<Self, NbParams>& map, const T* xy, std::size_t nbPoints) {
  const omReal64 magnitude = detail::largestMagnitude(xy, 2 * nbPoints);
  if (detail::imagesStayFinite<T>(map.getCoefficients(), magnitude)) return nbPoints;
  return detail::findUndefinedImage(map, xy, nbPoints);
}
template <class T>
std::size_t firstUndefinedImage(const Homography2d& map, const T* xy, std::size_t nbPoints) {
  return detail::findUndefinedImage(map, xy, nbPoints);
}

/// Maps a run of points in place; each must have an image. The same bits as point by point.
template <class Self, std::size_t NbParams, class T>
void applyToRun(const AffineTransform2d<Self, NbParams>& map, T* xy, std::size_t nbPoints) {
  const AffineCoefficients2d c = map.getCoefficients();
  for (std::size_t index = 0; index < nbPoints; ++index) {
    const auto x = static_cast<omReal64>(xy[2 * index]);
    const auto y = static_cast<omReal64>(xy[2 * index + 1]);
    xy[2 * index] = round<T, omReal64>(c.xx * x + c.xy * y + c.tx);
    xy[2 * index + 1] = round<T, omReal64>(c.yx * x + c.yy * y + c.ty);
  }
}
template <class T>
void applyToRun(const Homography2d& map, T* xy, std::size_t nbPoints) {
  for (std::size_t index = 0; index < nbPoints; ++index)
    map.apply(xy[2 * index], xy[2 * index + 1], xy[2 * index], xy[2 * index + 1]);
}

}  // namespace ormix
