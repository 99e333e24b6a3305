#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>

namespace ormix::geom {

/// A planar point as an entity; converts implicitly to its coordinates.
///
/// Arithmetic works component by component, with another point, a scalar or a vector. Integer coordinates wrap around
/// on overflow; an integer quotient truncates toward zero, and a division by zero saturates (0 / 0 is 0). A vector's
/// components are rounded to the coordinate type first and the result again, so that an integer point moved by a vector
/// lands on an integer position.
template <class T>
class ORMIX_GEOMETRY_API Point2d : public Entity2d<Point2d<T>, BaseTypedGeometryEntity2d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Point2d";
  static constexpr eEntity2dType s_entity2dType = eE2DT_Point;

  Point2d() = default;
  Point2d(T x, T y) : _ptData(x, y) {}
  Point2d(const Point2dData<T>& point) : _ptData(point) {}  // NOLINT(google-explicit-constructor): the same thing

  operator const Point2dData<T>&() const { return _ptData; }  // NOLINT(google-explicit-constructor): the same thing
  const Point2dData<T>& getCoords() const { return _ptData; }
  T getX() const { return _ptData.getX(); }
  T getY() const { return _ptData.getY(); }
  void setX(T x) { _ptData.setX(x); }
  void setY(T y) { _ptData.setY(y); }
  void setCoords(T x, T y) { _ptData.setCoords(x, y); }
  void setCoords(const Point2dData<T>& point) { _ptData = point; }

  omReal64 normL2() const;

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

  // Friends, so that the conversions of a point's coordinates apply on either side.
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

  // Against plain coordinates on either side too, without an ambiguous conversion.
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

template <class T>
std::ostream& operator<<(std::ostream& stream, const Point2d<T>& point) {
  return stream << point.getCoords();
}

/// \name As of the points' coordinates.
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
