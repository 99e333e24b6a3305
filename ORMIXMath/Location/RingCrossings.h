#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>

namespace ormix {

/// Where a point is to rings: with respect to several rings together it is on a boundary if it is on one of them, and
/// inside by the even-odd rule if it is inside an odd number of them.
struct RingCrossings {
  bool isOnBoundary = false;
  bool isOdd =
      false;  ///< whether a ray from the point crosses the rings an odd number of times; of no use on a boundary

  RingCrossings& operator+=(const RingCrossings& other) {
    isOnBoundary = isOnBoundary || other.isOnBoundary;
    isOdd = isOdd != other.isOdd;
    return *this;
  }
};

/// Where the point (x, y) is to a ring of `nbPoints` vertices x0, y0, x1, y1, ..., whose last vertex need not repeat
/// the first. Exact for every type of coordinate, as orientation() is: no rounded number decides. A point that is not
/// finite is outside. One or two vertices, and any edges that coincide, are a boundary without inside; a ring that
/// crosses itself has its inside by the even-odd rule. Linear: edges above and below the point are passed over by
/// vector comparisons.
template <class T>
ORMIX_MATH_API RingCrossings ringCrossings(const T* xy, std::size_t nbPoints, omReal64 x, omReal64 y);

// clang-format off
extern template RingCrossings ringCrossings(const omInt32*, std::size_t, omReal64, omReal64);
extern template RingCrossings ringCrossings(const omUInt32*, std::size_t, omReal64, omReal64);
extern template RingCrossings ringCrossings(const omReal32*, std::size_t, omReal64, omReal64);
extern template RingCrossings ringCrossings(const omReal64*, std::size_t, omReal64, omReal64);
// clang-format on

}  // namespace ormix
