#pragma once

#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXMath/Scalar/Round.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <iosfwd>
#include <type_traits>
#include <vector>

namespace ormix::geom {

/// Three coordinates: the storage of every vertex, corner and centre. Trivially copyable and without padding, so that
/// consecutive points are consecutive numbers x, y, z.
///
/// Arithmetic works component by component, with another point, a scalar or a vector. Integer coordinates wrap around
/// on overflow; an integer quotient truncates toward zero, and an integer division by zero saturates (0 / 0 is 0). The
/// components of a vector are rounded first, for integers to the nearest one, and the result again to the coordinate
/// type, so that an integer point moved by a vector has integer coordinates.
template <class T>
class ORMIX_GEOMETRY_API Point3dData {
 public:
  using CoordinateType = T;  ///< omInt32, omUInt32, omReal32 or omReal64

  /// The origin.
  constexpr Point3dData() = default;
  /// The coordinates as given; NaN and infinity are allowed.
  constexpr Point3dData(T x, T y, T z) : _x(x), _y(y), _z(z) {}

  /// Reads or replaces one coordinate or all. `getCoords` returns the point itself, as that of Point3d returns its
  /// coordinates: generic code may call it on both.
  /// @{
  constexpr T getX() const { return _x; }
  constexpr T getY() const { return _y; }
  constexpr T getZ() const { return _z; }
  constexpr void setX(T x) { _x = x; }
  constexpr void setY(T y) { _y = y; }
  constexpr void setZ(T z) { _z = z; }
  constexpr void setCoords(T x, T y, T z) {
    _x = x;
    _y = y;
    _z = z;
  }
  constexpr void setCoords(const Point3dData& point) { *this = point; }
  constexpr const Point3dData& getCoords() const { return *this; }
  /// @}

  /// The distance from the origin, see the free function.
  omReal64 normL2() const;

  /// Arithmetic component by component, see the class.
  /// @{
  Point3dData& operator+=(const Point3dData& other);
  Point3dData& operator-=(const Point3dData& other);
  Point3dData& operator*=(const Point3dData& other);
  Point3dData& operator/=(const Point3dData& other);
  Point3dData& operator+=(T scalar);
  Point3dData& operator-=(T scalar);
  Point3dData& operator*=(T scalar);
  Point3dData& operator/=(T scalar);
  Point3dData& operator+=(const Vector3d& vector);
  Point3dData& operator-=(const Vector3d& vector);
  Point3dData& operator*=(const Vector3d& vector);
  Point3dData& operator/=(const Vector3d& vector);
  /// @}

  friend Point3dData operator+(Point3dData a, const Point3dData& b) { return a += b; }
  friend Point3dData operator-(Point3dData a, const Point3dData& b) { return a -= b; }
  friend Point3dData operator*(Point3dData a, const Point3dData& b) { return a *= b; }
  friend Point3dData operator/(Point3dData a, const Point3dData& b) { return a /= b; }
  friend Point3dData operator+(Point3dData a, T scalar) { return a += scalar; }
  friend Point3dData operator-(Point3dData a, T scalar) { return a -= scalar; }
  friend Point3dData operator*(Point3dData a, T scalar) { return a *= scalar; }
  friend Point3dData operator/(Point3dData a, T scalar) { return a /= scalar; }
  friend Point3dData operator*(T scalar, Point3dData a) { return a *= scalar; }
  friend Point3dData operator+(Point3dData a, const Vector3d& vector) { return a += vector; }
  friend Point3dData operator-(Point3dData a, const Vector3d& vector) { return a -= vector; }
  friend Point3dData operator*(Point3dData a, const Vector3d& vector) { return a *= vector; }
  friend Point3dData operator/(Point3dData a, const Vector3d& vector) { return a /= vector; }

  /// Exact; a NaN coordinate equals nothing.
  friend constexpr bool operator==(const Point3dData& a, const Point3dData& b) {
    return a._x == b._x && a._y == b._y && a._z == b._z;
  }
  friend constexpr bool operator!=(const Point3dData& a, const Point3dData& b) { return !(a == b); }

  /// Lexicographic order by z, then y, then x; false when a NaN decides the comparison.
  /// @{
  friend constexpr bool operator<(const Point3dData& a, const Point3dData& b) {
    return a._z < b._z || (a._z == b._z && (a._y < b._y || (a._y == b._y && a._x < b._x)));
  }
  friend constexpr bool operator<=(const Point3dData& a, const Point3dData& b) {
    return a._z < b._z || (a._z == b._z && (a._y < b._y || (a._y == b._y && a._x <= b._x)));
  }
  friend constexpr bool operator>(const Point3dData& a, const Point3dData& b) { return b < a; }
  friend constexpr bool operator>=(const Point3dData& a, const Point3dData& b) { return b <= a; }
  /// @}

 private:
  T _x{};
  T _y{};
  T _z{};
};

/// "[x, y, z]", each coordinate formatted as the stream is set.
template <class T>
std::ostream& operator<<(std::ostream& stream, const Point3dData<T>& point);

/// The distance from the origin. For integers the squares and their sum are computed in 32-bit arithmetic that wraps
/// around (intended): a signed sum that wraps to a negative number gives NaN. For reals intermediate results neither
/// overflow nor underflow.
template <class T>
omReal64 normL2(const Point3dData<T>& point);

template <class T>
omReal64 Point3dData<T>::normL2() const {
  return geom::normL2(*this);
}

/// Distance of the points: the norm of b - a, the difference being in the coordinate type. For omReal32 it is rounded
/// to that type, for 32-bit integers it wraps around (both intended); since squares modulo 2^32 do not depend on the
/// sign, the distance of unsigned points is the same in both orders.
template <class T>
omReal64 distance(const Point3dData<T>& a, const Point3dData<T>& b);

/// Whether the distance of the points is at most the tolerance.
template <class T>
bool compare(const Point3dData<T>& a, const Point3dData<T>& b, std::common_type_t<T> tolerance);

/// The cross product a × b of the position vectors, in the coordinate type; integers wrap around.
template <class T>
Point3dData<T> crossProduct(const Point3dData<T>& a, const Point3dData<T>& b);

/// Converts each coordinate. Reals are truncated toward zero; for omUInt32 they are converted to 64-bit integers first,
/// of which the low 32 bits are kept, so that negative coordinates wrap around.
template <class TOut, class TIn>
Point3dData<TOut> cast(const Point3dData<TIn>& point);

// Keeps round() of scalars visible beside that of points.
using ormix::round;
/// Rounds each coordinate to the nearest integer, halves away from zero; values beyond the range become its nearest
/// end, NaN becomes 0.
template <class TOut, class TIn>
Point3dData<TOut> round(const Point3dData<TIn>& point) {
  static_assert(std::is_integral_v<TOut> && std::is_same_v<TIn, omReal64>);
  return {ormix::round<TOut, TIn>(point.getX()), ormix::round<TOut, TIn>(point.getY()),
          ormix::round<TOut, TIn>(point.getZ())};
}

/// The coordinates of the points as one array x0, y0, z0, x1, ..., valid until the vector reallocates. There is nothing
/// to dereference when there are no points.
/// @{
template <class T>
const T* coordinates(const std::vector<Point3dData<T>>& points) {
  static_assert(sizeof(Point3dData<T>) == 3 * sizeof(T) && std::is_trivially_copyable_v<Point3dData<T>>);
  return reinterpret_cast<const T*>(points.data());
}
template <class T>
T* coordinates(std::vector<Point3dData<T>>& points) {
  return const_cast<T*>(coordinates(static_cast<const std::vector<Point3dData<T>>&>(points)));
}
/// @}

}  // namespace ormix::geom
