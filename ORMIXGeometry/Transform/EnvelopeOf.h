#pragma once

#include <ORMIXGeometry/Transform/RunExtent.h>
#include <ORMIXMath/Scalar/DirectedRounding.h>
#include <ORMIXMath/Shape/PrefetchBehind.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <type_traits>

/// \file
/// The sides of a box around points and round shapes, in D dimensions; not installed.

namespace ormix::geom::detail {

/// The distance along an axis from a centre to the outermost point, as computed.
struct HalfExtent {
  omReal64 value;
  bool isExact;  ///< of reals, whether nothing was rounded
};

/// What the sine and cosine, two products and their sum can lose, relative to the half extent.
inline constexpr omReal64 s_turnError = 0x1p-50;

/// A box that grows around what it shall contain.
template <class T, std::size_t D>
struct GrowingBox {
  std::array<T, D> low{};
  std::array<T, D> high{};
  bool isEmpty = true;
  bool isFinite = true;  ///< false once a number was not; the box is then unspecified

  void include(std::size_t axis, T from, T to) {
    low[axis] = std::min(low[axis], from);
    high[axis] = std::max(high[axis], to);
  }

  /// `nbPoints` points of D interleaved coordinates each. Which of zeros of both signs becomes a side is unspecified.
  void includeAnyZero(const T* coords, std::size_t nbPoints) {
    ormix::detail::prefetchBehind(coords, D * nbPoints);
    if (isEmpty) {
      std::copy(coords, coords + D, low.begin());
      std::copy(coords, coords + D, high.begin());
      isEmpty = false;
    }
    isFinite = growToRun<D>(coords, nbPoints, low.data(), high.data()) && isFinite;
  }

  /// The same. Where a side is zero and there are zeros of both signs, it is the side before or the first point if that
  /// is zero, else the first of the points whose index modulo 8 is the least (intended: once eight were compared side
  /// by side, and results keep their bits).
  void includeRun(const T* coords, std::size_t nbPoints) {
    if (nbPoints == 0) return;
    std::array<T, D> lowBefore = low, highBefore = high;
    if (isEmpty) {
      std::copy(coords, coords + D, lowBefore.begin());
      highBefore = lowBefore;
    }
    includeAnyZero(coords, nbPoints);
    if constexpr (std::is_floating_point_v<T>) {
      for (std::size_t axis = 0; axis < D; ++axis) {
        if (low[axis] == 0) low[axis] = lowBefore[axis] == 0 ? lowBefore[axis] : zeroOf(coords + axis, nbPoints);
        if (high[axis] == 0) high[axis] = highBefore[axis] == 0 ? highBefore[axis] : zeroOf(coords + axis, nbPoints);
      }
    }
  }
  static T zeroOf(const T* coords, std::size_t nbPoints) {
    for (std::size_t first = 0; first < 8; ++first)
      for (std::size_t point = first; point < nbPoints; point += 8)
        if (coords[D * point] == 0) return coords[D * point];
    return T(0);
  }

  /// What reaches `halfExtents` from a centre, exactly or up to `s_turnError`.
  template <class TIn>
  void setAround(const std::array<TIn, D>& center, const std::array<HalfExtent, D>& halfExtents) {
    for (std::size_t axis = 0; axis < D; ++axis) {
      const omReal64 from = omReal64(center[axis]);
      const omReal64 half = halfExtents[axis].value;
      isFinite = isFinite && std::isfinite(from) && std::isfinite(half);
      if (!isFinite) return;
      setSides(
          axis, ormix::detail::sumDown(from, -half), ormix::detail::sumUp(from, half),
          halfExtents[axis].isExact ? 0 : (std::is_floating_point_v<T> ? half : half + std::abs(from)) * s_turnError);
    }
    isEmpty = false;
  }

  /// What is in a box of reals, whose sides may be wrong by `error`.
  void setRounded(const GrowingBox<omReal64, D>& box, omReal64 error = 0) {
    isEmpty = box.isEmpty;
    isFinite = box.isFinite && std::isfinite(error);
    if (!hasAnswer()) return;
    for (std::size_t axis = 0; axis < D; ++axis) setSides(axis, box.low[axis], box.high[axis], error);
  }

  /// Sides that may be wrong by `error`: further out in reals. In integers further in, as a side that may be a whole
  /// number is one, and a quarter turn does not move it by a unit.
  void setSides(std::size_t axis, omReal64 from, omReal64 to, omReal64 error) {
    const omReal64 outwards = std::is_floating_point_v<T> ? error : -error;
    low[axis] = ormix::detail::roundDown<T>(ormix::detail::sumDown(from, -outwards));
    high[axis] = ormix::detail::roundUp<T>(ormix::detail::sumUp(to, outwards));
  }

  bool hasAnswer() const { return !isEmpty && isFinite; }

  /// Whether a place is inside or on a side.
  bool contains(const std::array<omReal64, D>& place) const {
    bool isInside = !isEmpty;
    for (std::size_t axis = 0; axis < D; ++axis)
      isInside = isInside && place[axis] >= omReal64(low[axis]) && place[axis] <= omReal64(high[axis]);
    return isInside;
  }
  /// The longest side.
  omReal64 extent() const {
    omReal64 longest = 0;
    for (std::size_t axis = 0; axis < D; ++axis)
      longest = std::max(longest, omReal64(high[axis]) - omReal64(low[axis]));
    return longest;
  }
};

/// The half extent along an axis of a body whose local axis i has the direction cosine `cosines[i]` with it: of an
/// ellipsoid with these radii, or of a box with these half sizes.
/// @{
template <std::size_t D>
HalfExtent ellipsoidHalfExtent(const std::array<omReal64, D>& cosines, const std::array<omReal64, D>& radii) {
  HalfExtent extent{0, true};
  for (std::size_t i = 0; i < D; ++i) {
    const omReal64 part = std::abs(cosines[i] * radii[i]);
    extent.isExact = extent.isExact && (part == 0 || std::abs(cosines[i]) == 1);
    extent.value = std::hypot(extent.value, part);
  }
  return extent;
}
template <std::size_t D>
HalfExtent boxHalfExtent(const std::array<omReal64, D>& cosines, const std::array<omReal64, D>& halfSizes) {
  HalfExtent extent{0, true};
  for (std::size_t i = 0; i < D; ++i) {
    const omReal64 part = std::abs(cosines[i] * halfSizes[i]);
    extent.isExact = extent.isExact && (part == 0 || std::abs(cosines[i]) == 1);
    extent.value += part;
  }
  return extent;
}
/// @}

}  // namespace ormix::geom::detail
