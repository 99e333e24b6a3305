#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <cstddef>
#include <limits>

/// \file
/// Points and boxes of two or three coordinates for trees of boxes; not installed.

namespace ormix::detail {

/// The coordinates of a point.
template <std::size_t D>
using IndexPoint = std::array<omReal64, D>;

/// The same value for each coordinate.
template <std::size_t D>
constexpr IndexPoint<D> uniformPoint(omReal64 value) {
  IndexPoint<D> point{};
  for (std::size_t d = 0; d < D; ++d) point[d] = value;
  return point;
}

/// An upright box, sides included; empty as it is made, so that points and boxes can be added.
template <std::size_t D>
struct IndexBox {
  IndexPoint<D> low = uniformPoint<D>(std::numeric_limits<omReal64>::infinity());
  IndexPoint<D> high = uniformPoint<D>(-std::numeric_limits<omReal64>::infinity());

  bool empty() const {
    for (std::size_t d = 0; d < D; ++d)
      if (!(low[d] <= high[d])) return true;
    return false;
  }
  void add(const IndexPoint<D>& point) { add({point, point}); }
  void add(const IndexBox& box) {
    for (std::size_t d = 0; d < D; ++d) {
      low[d] = box.low[d] < low[d] ? box.low[d] : low[d];
      high[d] = high[d] < box.high[d] ? box.high[d] : high[d];
    }
  }
  bool meets(const IndexBox& box) const {
    for (std::size_t d = 0; d < D; ++d)
      if (!(low[d] <= box.high[d] && box.low[d] <= high[d])) return false;
    return true;
  }

  /// Square of the distance of the nearest points, exactly 0 where the boxes meet; infinite where it overflows.
  omReal64 squareTo(const IndexBox& box) const {
    omReal64 square = 0;
    for (std::size_t d = 0; d < D; ++d) {
      const omReal64 below = low[d] - box.high[d];
      const omReal64 above = box.low[d] - high[d];
      const omReal64 outside = below < above ? above : below;
      const omReal64 gap = outside < 0 ? 0 : outside;
      square += gap * gap;
    }
    return square;
  }
  /// The same of a point.
  omReal64 squareTo(const IndexPoint<D>& point) const { return squareTo(IndexBox{point, point}); }
};

/// The box that a point is.
template <std::size_t D>
IndexBox<D> toIndexBox(const IndexPoint<D>& point) {
  return {point, point};
}
template <std::size_t D>
const IndexBox<D>& toIndexBox(const IndexBox<D>& box) {
  return box;
}

}  // namespace ormix::detail
