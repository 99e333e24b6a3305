#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <iosfwd>
#include <type_traits>
#include <vector>

namespace ormix::geom {

/// A pair of coordinates: the type of every stored vertex, corner and centre. Trivially copyable and without padding,
/// so that contiguous points are contiguous coordinates, see coordinates().
template <class T>
class Point2dData {
 public:
  using CoordinateType = T;  ///< type of the coordinates

  /// The origin.
  constexpr Point2dData() = default;
  /// The point (x, y).
  constexpr Point2dData(T x, T y) : _x(x), _y(y) {}

  constexpr T getX() const { return _x; }  ///< first coordinate
  constexpr T getY() const { return _y; }  ///< second coordinate
  /// Sets the coordinates named.
  /// @{
  constexpr void setX(T x) { _x = x; }
  constexpr void setY(T y) { _y = y; }
  constexpr void setCoords(T x, T y) {
    _x = x;
    _y = y;
  }
  /// @}

  /// Exact; a NaN coordinate equals nothing.
  friend constexpr bool operator==(const Point2dData& a, const Point2dData& b) { return a._x == b._x && a._y == b._y; }
  friend constexpr bool operator!=(const Point2dData& a, const Point2dData& b) { return !(a == b); }

 private:
  T _x{};
  T _y{};
};

/// Prints "[x, y]", each coordinate in the stream's formatting.
template <class T>
std::ostream& operator<<(std::ostream& stream, const Point2dData<T>& point);

/// Distance from the origin. For integers the squares and their sum are computed in 32-bit arithmetic that wraps around
/// (intended), so that for omInt32 a sum of 2^31 or more gives NaN. For reals it overflows or underflows only where the
/// result itself does.
template <class T>
omReal64 normL2(const Point2dData<T>& point);

/// Distance of the points: the norm of b - a as by normL2(), the difference being in the coordinate type. For omReal32
/// it is rounded to that type, for integers it wraps around (both intended), so that the distance of unsigned points is
/// the same in both orders.
template <class T>
omReal64 distance(const Point2dData<T>& a, const Point2dData<T>& b);

/// Whether the distance() of the points is at most the tolerance; false when either is NaN.
template <class T>
bool compare(const Point2dData<T>& a, const Point2dData<T>& b, std::common_type_t<T> tolerance);

/// Dot product of the position vectors of the points, computed in omReal64.
template <class T>
omReal64 scalarProduct(const Point2dData<T>& a, const Point2dData<T>& b);

/// Converts each coordinate, see castScalar(): reals are truncated toward zero for integers; for omUInt32 they are
/// converted to 64-bit integers first, whose low 32 bits are kept, so that negative coordinates wrap around.
template <class TOut, class TIn>
Point2dData<TOut> cast(const Point2dData<TIn>& point);

/// The coordinates of contiguous points, x0, y0, x1, y1, …, as a view: valid as long as the points are not reallocated.
/// @{
template <class T>
const T* coordinates(const std::vector<Point2dData<T>>& points) {
  static_assert(sizeof(Point2dData<T>) == 2 * sizeof(T) && std::is_trivially_copyable_v<Point2dData<T>>);
  return reinterpret_cast<const T*>(points.data());
}
template <class T>
T* coordinates(std::vector<Point2dData<T>>& points) {
  return const_cast<T*>(coordinates(static_cast<const std::vector<Point2dData<T>>&>(points)));
}
/// @}

}  // namespace ormix::geom
