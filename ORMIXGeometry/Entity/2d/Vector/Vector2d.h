#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>

ORMIX_GEOMETRY_ENTITY2D_LEVELS(extern, Vector2d, BaseGeometryEntity2d)

namespace ormix::geom {

/// A free planar vector in polar form: rho·(cos theta, sin theta), theta in radians. A rho and theta set by the caller
/// are stored unchanged, also a negative rho or an angle outside (-pi, pi]. A vector computed from points or by
/// arithmetic has rho >= 0 and theta in (-pi, pi]; sums and vectors from points have theta 0 where they are zero.
class ORMIX_GEOMETRY_API Vector2d : public Entity2d<Vector2d, BaseGeometryEntity2d> {
 public:
  static constexpr const char* s_className = "ormix::geom::Vector2d";  ///< registered name
  static constexpr eEntity2dType s_entity2dType = eE2DT_Vector;        ///< returned by getEntity2dType()
  /// Returned by getCoordinateSystem2dType().
  static constexpr eCoordinateSystem2dType s_coordinateSystem2dType = eCS2DT_Polar;

  /// The zero vector.
  Vector2d() = default;
  /// Stores rho and theta (radians) unchanged.
  Vector2d(omReal64 rho, omReal64 theta);

  /// Stores rho and theta (radians) unchanged.
  void setCoords(omReal64 rho, omReal64 theta);
  /// The vector from the origin to the point.
  /// @{
  template <class T>
  void setCoords(const Point2dData<T>& point);
  template <class T>
  void setCoords(const Point2d<T>& point) {
    setCoords(point.getCoords());
  }
  /// @}
  /// The first point minus the second: the vector from `second` to `first`, computed in omReal64.
  /// @{
  template <class T>
  void setCoords(const Point2dData<T>& first, const Point2dData<T>& second);
  template <class T>
  void setCoords(const Point2d<T>& first, const Point2d<T>& second) {
    setCoords(first.getCoords(), second.getCoords());
  }
  /// @}
  /// Stores one of both values unchanged and keeps the other; theta is in radians.
  /// @{
  void setRho(omReal64 rho) { _rho = rho; }
  void setTheta(omReal64 theta);
  /// @}

  /// The stored polar values, theta in radians, and the Cartesian components computed from them.
  /// @{
  omReal64 getRho() const { return _rho; }
  omReal64 getTheta() const { return _theta; }
  omReal64 getX() const { return _rho * _cosTheta; }
  omReal64 getY() const { return _rho * _sinTheta; }
  omReal64 getCosTheta() const { return _cosTheta; }
  omReal64 getSinTheta() const { return _sinTheta; }
  /// @}

  /// Sum and difference, computed from the Cartesian components.
  /// @{
  Vector2d& operator+=(const Vector2d& other);
  Vector2d& operator-=(const Vector2d& other);
  /// @}
  /// Multiplies or divides rho. Where the result is negative, its sign is dropped and pi is added to theta; theta is
  /// normalised to (-pi, pi]. A division by 0 gives an infinite or NaN rho.
  /// @{
  Vector2d& operator*=(omReal64 scalar);
  Vector2d& operator/=(omReal64 scalar);
  /// @}

  friend Vector2d operator+(Vector2d a, const Vector2d& b) { return a += b; }
  friend Vector2d operator-(Vector2d a, const Vector2d& b) { return a -= b; }
  friend Vector2d operator*(Vector2d a, omReal64 scalar) { return a *= scalar; }
  friend Vector2d operator*(omReal64 scalar, Vector2d a) { return a *= scalar; }
  friend Vector2d operator/(Vector2d a, omReal64 scalar) { return a /= scalar; }

  /// Reads the fields as every entity does, then computes the cosine and sine of theta.
  BoolResult read(BaseIArchive& archive) override;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_rho", self._rho) && item("_theta", self._theta);
  }
  /// Sets rho >= 0 and theta in (-pi, pi] from Cartesian components; theta is 0 for (0, 0).
  void setCartesian(omReal64 x, omReal64 y);
  /// Sets rho and normalises: a negative rho becomes positive and the vector points the other way.
  void setNormalized(omReal64 rho);

  omReal64 _rho = 0;
  omReal64 _theta = 0;
  // Cosine and sine of _theta; not archived.
  omReal64 _cosTheta = 1;
  omReal64 _sinTheta = 0;
};

/// Prints "[x, y]", the Cartesian components.
ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream& stream, const Vector2d& vector);

/// Whether the length of u - v is strictly less than the tolerance. Unlike for points, the result is false for equal
/// vectors and tolerance 0 (intended).
ORMIX_GEOMETRY_API bool compare(const Vector2d& u, const Vector2d& v, omReal64 tolerance);

}  // namespace ormix::geom
