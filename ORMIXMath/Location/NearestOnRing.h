#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Export.h>

#include <cstddef>

namespace ormix {

/// A point of a ring, or of a set of points.
struct NearestOnRing {
  PlanarPoint point;      ///< NaN when there is none
  omReal64 distance;      ///< infinite when there is none
  std::size_t index = 0;  ///< of the vertex at which its edge begins, or of the point
};

/// The point nearest to (x, y) on the edges of a ring of `nbPoints` vertices, of which the last one need not repeat the
/// first; as pointSegmentDistance() answers for the nearest edge. Of edges whose distances are equal up to rounding
/// any may be taken. None when there are no vertices or a coordinate is not finite. Linear, several edges at a time;
/// edges and distances beyond 2^500, and distances below 2^-450, are compared one by one.
template <class T>
ORMIX_MATH_API NearestOnRing nearestOnRing(const T* xy, std::size_t nbPoints, omReal64 x, omReal64 y);

/// The nearest of points that are not connected, likewise.
template <class T>
ORMIX_MATH_API NearestOnRing nearestOfPoints(const T* xy, std::size_t nbPoints, omReal64 x, omReal64 y);

/// \name Instances in the library
/// @{
// clang-format off
/// One of the functions above for one type of coordinate.
extern template NearestOnRing nearestOnRing(const omInt32*, std::size_t, omReal64, omReal64);
extern template NearestOnRing nearestOnRing(const omUInt32*, std::size_t, omReal64, omReal64);
extern template NearestOnRing nearestOnRing(const omReal32*, std::size_t, omReal64, omReal64);
extern template NearestOnRing nearestOnRing(const omReal64*, std::size_t, omReal64, omReal64);
extern template NearestOnRing nearestOfPoints(const omInt32*, std::size_t, omReal64, omReal64);
extern template NearestOnRing nearestOfPoints(const omUInt32*, std::size_t, omReal64, omReal64);
extern template NearestOnRing nearestOfPoints(const omReal32*, std::size_t, omReal64, omReal64);
extern template NearestOnRing nearestOfPoints(const omReal64*, std::size_t, omReal64, omReal64);
// clang-format on
/// @}

}  // namespace ormix
