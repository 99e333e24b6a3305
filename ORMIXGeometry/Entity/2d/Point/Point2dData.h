#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <iosfwd>
#include <type_traits>
#include <vector>

namespace ormix::geom {

/// A pair of coordinates: the storage of every vertex, corner and centre. Trivially copyable, packed and without
/// padding, so that a run of them is a run of numbers.
template <class T>
class Point2dData {
 public:
  using CoordinateType = T;

  /// The origin.
  constexpr Point2dData() = default;
  constexpr Point2dData(T x, T y) : _x(x), _y(y) {}

  constexpr T getX() const { return _x; }
  constexpr T getY() const { return _y; }
  constexpr void setX(T x) { _x = x; }
  constexpr void setY(T y) { _y = y; }
  constexpr void setCoords(T x, T y) {
    _x = x;
    _y = y;
  }

  /// Exact; a NaN coordinate equals nothing.
  friend constexpr bool operator==(const Point2dData& a, const Point2dData& b) { return a._x == b._x && a._y == b._y; }
  friend constexpr bool operator!=(const Point2dData& a, const Point2dData& b) { return !(a == b); }

 private:
  T _x{};
  T _y{};
};

/// "[x, y]", each coordinate in the stream's formatting.
template <class T>
std::ostream& operator<<(std::ostream& stream, const Point2dData<T>& point);

/// Distance from the origin. For 32-bit integers the squares and their sum are taken in 32-bit arithmetic that wraps
/// around (intended), so that a signed sum of 2^31 or more gives NaN; for reals neither overflows nor underflows early.
template <class T>
omReal64 normL2(const Point2dData<T>& point);

/// The norm of b - a; for 32-bit integers the difference wraps around as well (intended), which keeps the distance of
/// unsigned points right in both orders.
template <class T>
omReal64 distance(const Point2dData<T>& a, const Point2dData<T>& b);

/// Whether the distance of the points is at most the tolerance.
template <class T>
bool compare(const Point2dData<T>& a, const Point2dData<T>& b, std::common_type_t<T> tolerance);

/// Dot product of the points seen as vectors, in omReal64.
template <class T>
omReal64 scalarProduct(const Point2dData<T>& a, const Point2dData<T>& b);

/// Conversion of each coordinate: reals to integers truncate toward zero, to omUInt32 by way of 64-bit integers of
/// which the low 32 bits are kept, so that negative coordinates wrap.
template <class TOut, class TIn>
Point2dData<TOut> cast(const Point2dData<TIn>& point);

/// The coordinates of a run of points, x and y in turn.
template <class T>
const T* coordinates(const std::vector<Point2dData<T>>& points) {
  static_assert(sizeof(Point2dData<T>) == 2 * sizeof(T) && std::is_trivially_copyable_v<Point2dData<T>>);
  return reinterpret_cast<const T*>(points.data());
}
template <class T>
T* coordinates(std::vector<Point2dData<T>>& points) {
  return const_cast<T*>(coordinates(static_cast<const std::vector<Point2dData<T>>&>(points)));
}

}  // namespace ormix::geom
