#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>

namespace ormix::geom {

/// A planar point as an entity; converts implicitly to and from its coordinates, Point2dData.
///
/// Arithmetic with another point, a scalar or a vector works component by component. Integer coordinates wrap around on
/// overflow; an integer quotient truncates toward zero, and a division by zero saturates (0 / 0 is 0). The Cartesian
/// components of a vector are rounded first, for integers to the nearest one, and the result again to the coordinate
/// type, so that an integer point is moved by the same integers wherever it is.
template <class T>
class ORMIX_GEOMETRY_API Point2d : public Entity2d<Point2d<T>, BaseTypedGeometryEntity2d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Point2d";  ///< registered name
  static constexpr eEntity2dType s_entity2dType = eE2DT_Point;        ///< returned by getEntity2dType()

  /// The origin.
  Point2d() = default;
  /// The point with the given coordinates.
  /// @{
  Point2d(T x, T y) : _ptData(x, y) {}
  Point2d(const Point2dData<T>& point) : _ptData(point) {}  // NOLINT(google-explicit-constructor): same value
  /// @}

  /// The stored coordinates.
  /// @{
  operator const Point2dData<T>&() const { return _ptData; }  // NOLINT(google-explicit-constructor): same value
  const Point2dData<T>& getCoords() const { return _ptData; }
  T getX() const { return _ptData.getX(); }
  T getY() const { return _ptData.getY(); }
  /// @}
  /// Sets the coordinates named.
  /// @{
  void setX(T x) { _ptData.setX(x); }
  void setY(T y) { _ptData.setY(y); }
  void setCoords(T x, T y) { _ptData.setCoords(x, y); }
  void setCoords(const Point2dData<T>& point) { _ptData = point; }
  /// @}

  /// Distance from the origin, see normL2() of Point2dData: 32-bit integers wrap around (intended).
  omReal64 normL2() const;

  /// Component by component; a scalar applies to both components. The class comment describes overflow, rounding and
  /// division by zero.
  /// @{
  Point2d& operator+=(const Point2d& other);
  Point2d& operator-=(const Point2d& other);
  Point2d& operator*=(const Point2d& other);
  Point2d& operator/=(const Point2d& other);
  Point2d& operator+=(T scalar);
  Point2d& operator-=(T scalar);
  Point2d& operator*=(T scalar);
  Point2d& operator/=(T scalar);
  Point2d& operator+=(const Vector2d& vector);
  Point2d& operator-=(const Vector2d& vector);
  Point2d& operator*=(const Vector2d& vector);
  Point2d& operator/=(const Vector2d& vector);

  // Friends, so that either operand may be a Point2dData, which is converted.
  friend Point2d operator+(Point2d a, const Point2d& b) { return a += b; }
  friend Point2d operator-(Point2d a, const Point2d& b) { return a -= b; }
  friend Point2d operator*(Point2d a, const Point2d& b) { return a *= b; }
  friend Point2d operator/(Point2d a, const Point2d& b) { return a /= b; }
  friend Point2d operator+(Point2d a, T scalar) { return a += scalar; }
  friend Point2d operator-(Point2d a, T scalar) { return a -= scalar; }
  friend Point2d operator*(Point2d a, T scalar) { return a *= scalar; }
  friend Point2d operator/(Point2d a, T scalar) { return a /= scalar; }
  friend Point2d operator*(T scalar, Point2d a) { return a *= scalar; }
  friend Point2d operator+(Point2d a, const Vector2d& vector) { return a += vector; }
  friend Point2d operator-(Point2d a, const Vector2d& vector) { return a -= vector; }
  friend Point2d operator*(Point2d a, const Vector2d& vector) { return a *= vector; }
  friend Point2d operator/(Point2d a, const Vector2d& vector) { return a /= vector; }
  /// @}

  // Also with Point2dData on either side; without these overloads the conversion would be ambiguous.
  friend bool operator==(const Point2d& a, const Point2d& b) { return a._ptData == b._ptData; }
  friend bool operator!=(const Point2d& a, const Point2d& b) { return a._ptData != b._ptData; }
  friend bool operator==(const Point2d& a, const Point2dData<T>& b) { return a._ptData == b; }
  friend bool operator!=(const Point2d& a, const Point2dData<T>& b) { return a._ptData != b; }
  friend bool operator==(const Point2dData<T>& a, const Point2d& b) { return a == b._ptData; }
  friend bool operator!=(const Point2dData<T>& a, const Point2d& b) { return a != b._ptData; }

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_ptData", self._ptData);
  }

  Point2dData<T> _ptData;
};

/// Prints "[x, y]", as the point's coordinates.
template <class T>
std::ostream& operator<<(std::ostream& stream, const Point2d<T>& point) {
  return stream << point.getCoords();
}

/// As the function of the same name for Point2dData.
/// @{
template <class T>
omReal64 normL2(const Point2d<T>& point) {
  return normL2(point.getCoords());
}
template <class T>
omReal64 distance(const Point2d<T>& a, const Point2d<T>& b) {
  return distance(a.getCoords(), b.getCoords());
}
template <class T>
bool compare(const Point2d<T>& a, const Point2d<T>& b, std::common_type_t<T> tolerance) {
  return compare(a.getCoords(), b.getCoords(), tolerance);
}
template <class T>
omReal64 scalarProduct(const Point2d<T>& a, const Point2d<T>& b) {
  return scalarProduct(a.getCoords(), b.getCoords());
}
template <class TOut, class TIn>
Point2d<TOut> cast(const Point2d<TIn>& point) {
  return cast<TOut>(point.getCoords());
}
/// @}

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(extern, Point2d)
