#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>

namespace ormix::geom {

/// A spatial point as an entity. It converts implicitly to and from its coordinates, `Point3dData`, and has the same
/// arithmetic and comparisons.
template <class T>
class ORMIX_GEOMETRY_API Point3d : public Entity3d<Point3d<T>, BaseTypedGeometryEntity3d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Point3d";  ///< registered name
  static constexpr eEntity3dType s_entity3dType = eE3DT_Point;        ///< family

  /// The origin.
  Point3d() = default;
  /// The point with these coordinates, stored as given.
  /// @{
  Point3d(T x, T y, T z) : _ptData(x, y, z) {}
  Point3d(const Point3dData<T>& point) : _ptData(point) {}  // NOLINT(google-explicit-constructor): the same thing
  /// @}

  /// The coordinates. A reference is valid as long as the point.
  /// @{
  operator const Point3dData<T>&() const { return _ptData; }  // NOLINT(google-explicit-constructor): the same thing
  const Point3dData<T>& getCoords() const { return _ptData; }
  T getX() const { return _ptData.getX(); }
  T getY() const { return _ptData.getY(); }
  T getZ() const { return _ptData.getZ(); }
  /// @}
  /// Replaces one coordinate or all.
  /// @{
  void setX(T x) { _ptData.setX(x); }
  void setY(T y) { _ptData.setY(y); }
  void setZ(T z) { _ptData.setZ(z); }
  void setCoords(T x, T y, T z) { _ptData.setCoords(x, y, z); }
  void setCoords(const Point3dData<T>& point) { _ptData = point; }
  /// @}

  /// The distance from the origin, see normL2() of Point3dData.
  omReal64 normL2() const { return _ptData.normL2(); }

  /// Arithmetic component by component, with the rounding and overflow of Point3dData.
  /// @{
  Point3d& operator+=(const Point3dData<T>& other) {
    _ptData += other;
    return *this;
  }
  Point3d& operator-=(const Point3dData<T>& other) {
    _ptData -= other;
    return *this;
  }
  Point3d& operator*=(const Point3dData<T>& other) {
    _ptData *= other;
    return *this;
  }
  Point3d& operator/=(const Point3dData<T>& other) {
    _ptData /= other;
    return *this;
  }
  Point3d& operator+=(T scalar) {
    _ptData += scalar;
    return *this;
  }
  Point3d& operator-=(T scalar) {
    _ptData -= scalar;
    return *this;
  }
  Point3d& operator*=(T scalar) {
    _ptData *= scalar;
    return *this;
  }
  Point3d& operator/=(T scalar) {
    _ptData /= scalar;
    return *this;
  }
  Point3d& operator+=(const Vector3d& vector) {
    _ptData += vector;
    return *this;
  }
  Point3d& operator-=(const Vector3d& vector) {
    _ptData -= vector;
    return *this;
  }
  Point3d& operator*=(const Vector3d& vector) {
    _ptData *= vector;
    return *this;
  }
  Point3d& operator/=(const Vector3d& vector) {
    _ptData /= vector;
    return *this;
  }
  /// @}

  // Friends, so that the right operand may be converted to coordinates. Only that one is converted, which keeps calls
  // unambiguous between these operators and those of Point3dData.
  friend Point3d operator+(Point3d a, const Point3dData<T>& b) { return a += b; }
  friend Point3d operator-(Point3d a, const Point3dData<T>& b) { return a -= b; }
  friend Point3d operator*(Point3d a, const Point3dData<T>& b) { return a *= b; }
  friend Point3d operator/(Point3d a, const Point3dData<T>& b) { return a /= b; }
  friend Point3d operator+(Point3d a, T scalar) { return a += scalar; }
  friend Point3d operator-(Point3d a, T scalar) { return a -= scalar; }
  friend Point3d operator*(Point3d a, T scalar) { return a *= scalar; }
  friend Point3d operator/(Point3d a, T scalar) { return a /= scalar; }
  friend Point3d operator*(T scalar, Point3d a) { return a *= scalar; }
  friend Point3d operator+(Point3d a, const Vector3d& vector) { return a += vector; }
  friend Point3d operator-(Point3d a, const Vector3d& vector) { return a -= vector; }
  friend Point3d operator*(Point3d a, const Vector3d& vector) { return a *= vector; }
  friend Point3d operator/(Point3d a, const Vector3d& vector) { return a /= vector; }

  // Overloads for Point3dData on either side avoid ambiguous conversions.
  friend bool operator==(const Point3d& a, const Point3d& b) { return a._ptData == b._ptData; }
  friend bool operator!=(const Point3d& a, const Point3d& b) { return a._ptData != b._ptData; }
  friend bool operator==(const Point3d& a, const Point3dData<T>& b) { return a._ptData == b; }
  friend bool operator!=(const Point3d& a, const Point3dData<T>& b) { return a._ptData != b; }
  friend bool operator==(const Point3dData<T>& a, const Point3d& b) { return a == b._ptData; }
  friend bool operator!=(const Point3dData<T>& a, const Point3d& b) { return a != b._ptData; }

  // By z, then y, then x, as coordinates are ordered.
  friend bool operator<(const Point3d& a, const Point3dData<T>& b) { return a._ptData < b; }
  friend bool operator<=(const Point3d& a, const Point3dData<T>& b) { return a._ptData <= b; }
  friend bool operator>(const Point3d& a, const Point3dData<T>& b) { return a._ptData > b; }
  friend bool operator>=(const Point3d& a, const Point3dData<T>& b) { return a._ptData >= b; }

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_ptData", self._ptData);
  }

  Point3dData<T> _ptData;
};

/// "[x, y, z]", as Point3dData prints.
template <class T>
std::ostream& operator<<(std::ostream& stream, const Point3d<T>& point) {
  return stream << point.getCoords();
}

/// The function of the same name applied to the coordinates, see Point3dData.h.
/// @{
template <class T>
omReal64 normL2(const Point3d<T>& point) {
  return normL2(point.getCoords());
}
template <class T>
omReal64 distance(const Point3d<T>& a, const Point3d<T>& b) {
  return distance(a.getCoords(), b.getCoords());
}
template <class T>
bool compare(const Point3d<T>& a, const Point3d<T>& b, std::common_type_t<T> tolerance) {
  return compare(a.getCoords(), b.getCoords(), tolerance);
}
template <class T>
Point3d<T> crossProduct(const Point3d<T>& a, const Point3d<T>& b) {
  return crossProduct(a.getCoords(), b.getCoords());
}
template <class TOut, class TIn>
Point3d<TOut> cast(const Point3d<TIn>& point) {
  return cast<TOut>(point.getCoords());
}
template <class TOut, class TIn>
Point3d<TOut> round(const Point3d<TIn>& point) {
  return round<TOut>(point.getCoords());
}
/// @}

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(extern, Point3d)
