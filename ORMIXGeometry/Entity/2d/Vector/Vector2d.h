#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>

ORMIX_GEOMETRY_ENTITY2D_LEVELS(extern, Vector2d, BaseGeometryEntity2d)

namespace ormix::geom {

/// A free planar vector in polar form: rho·(cos theta, sin theta), theta in radians. What is given as rho and theta is
/// kept as given, a negative length and angles beyond a turn included; what is rebuilt from Cartesian components, by
/// arithmetic or from points, has rho >= 0 and theta in (-pi, pi], and theta 0 for the zero vector.
class ORMIX_GEOMETRY_API Vector2d : public Entity2d<Vector2d, BaseGeometryEntity2d> {
 public:
  static constexpr const char* s_className = "ormix::geom::Vector2d";
  static constexpr eEntity2dType s_entity2dType = eE2DT_Vector;
  static constexpr eCoordinateSystem2dType s_coordinateSystem2dType = eCS2DT_Polar;

  /// The zero vector.
  Vector2d() = default;
  Vector2d(omReal64 rho, omReal64 theta);

  void setCoords(omReal64 rho, omReal64 theta);
  /// The vector from the origin to the point.
  template <class T>
  void setCoords(const Point2dData<T>& point);
  template <class T>
  void setCoords(const Point2d<T>& point) {
    setCoords(point.getCoords());
  }
  /// The first point minus the second: the vector from `second` to `first`, the difference taken in omReal64.
  template <class T>
  void setCoords(const Point2dData<T>& first, const Point2dData<T>& second);
  template <class T>
  void setCoords(const Point2d<T>& first, const Point2d<T>& second) {
    setCoords(first.getCoords(), second.getCoords());
  }
  void setRho(omReal64 rho) { _rho = rho; }
  void setTheta(omReal64 theta);

  omReal64 getRho() const { return _rho; }
  omReal64 getTheta() const { return _theta; }
  omReal64 getX() const { return _rho * _cosTheta; }
  omReal64 getY() const { return _rho * _sinTheta; }
  omReal64 getCosTheta() const { return _cosTheta; }
  omReal64 getSinTheta() const { return _sinTheta; }

  /// Sums and differences go through Cartesian components and back.
  Vector2d& operator+=(const Vector2d& other);
  Vector2d& operator-=(const Vector2d& other);
  /// Scales the length; a negative result turns the vector round instead.
  Vector2d& operator*=(omReal64 scalar);
  Vector2d& operator/=(omReal64 scalar);

  friend Vector2d operator+(Vector2d a, const Vector2d& b) { return a += b; }
  friend Vector2d operator-(Vector2d a, const Vector2d& b) { return a -= b; }
  friend Vector2d operator*(Vector2d a, omReal64 scalar) { return a *= scalar; }
  friend Vector2d operator*(omReal64 scalar, Vector2d a) { return a *= scalar; }
  friend Vector2d operator/(Vector2d a, omReal64 scalar) { return a /= scalar; }

  BoolResult read(BaseIArchive& archive) override;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_rho", self._rho) && item("_theta", self._theta);
  }
  void setCartesian(omReal64 x, omReal64 y);
  void setNormalized(omReal64 rho);

  omReal64 _rho = 0;
  omReal64 _theta = 0;
  // Follow _theta; not archived.
  omReal64 _cosTheta = 1;
  omReal64 _sinTheta = 0;
};

/// "[x, y]", the Cartesian components.
ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream& stream, const Vector2d& vector);

/// Whether the length of u - v is strictly less than the tolerance: unlike points, two equal vectors do not compare
/// equal at tolerance 0 (intended).
ORMIX_GEOMETRY_API bool compare(const Vector2d& u, const Vector2d& v, omReal64 tolerance);

}  // namespace ormix::geom
