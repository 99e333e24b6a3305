#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>

ORMIX_GEOMETRY_ENTITY3D_LEVELS(extern, Vector3d, BaseGeometryEntity3d)

namespace ormix::geom {

/// A free vector of space in spherical form: the length rho, the polar angle theta from the z axis and the azimuth phi
/// in the x-y plane from x toward y, in radians. Its components are
/// rho·(sin theta cos phi, sin theta sin phi, cos theta).
///
/// rho is kept as given, a negative one included; the angles are brought into [-pi, pi) by `setCoords`, which every way
/// of making a vector goes through except reading and multiplying by a scalar.
class ORMIX_GEOMETRY_API Vector3d : public Entity3d<Vector3d, BaseGeometryEntity3d> {
 public:
  static constexpr const char* s_className = "ormix::geom::Vector3d";
  static constexpr eEntity3dType s_entity3dType = eE3DT_Vector;
  static constexpr eCoordinateSystem3dType s_coordinateSystem3dType = eCS3DT_Spherical;

  /// The zero vector.
  Vector3d() = default;
  Vector3d(omReal64 rho, omReal64 theta, omReal64 phi) { setCoords(rho, theta, phi); }

  /// Both angles are brought into [0, 2 pi) first; from theta = pi on, pi is then taken off both, which keeps x and y
  /// but reverses z (intended); at last each is brought into [-pi, pi). Angles that are not finite become NaN.
  void setCoords(omReal64 rho, omReal64 theta, omReal64 phi);
  /// The vector from the origin to the point, whose theta is 0 for the zero vector. Straight down the z axis theta
  /// would be pi, so that such a vector comes out pointing up (intended).
  template <class T>
  void setCoords(const Point3dData<T>& point);
  template <class T>
  void setCoords(const Point3d<T>& point) {
    setCoords(point.getCoords());
  }
  /// The vector that leads from one point to the other, the difference taken in omReal64; unlike `Vector2d`, whose
  /// points are the other way round (intended).
  template <class T>
  void setCoords(const Point3dData<T>& from, const Point3dData<T>& to);
  template <class T>
  void setCoords(const Point3d<T>& from, const Point3d<T>& to) {
    setCoords(from.getCoords(), to.getCoords());
  }

  omReal64 getRho() const { return _rho; }
  omReal64 getTheta() const { return _theta; }
  omReal64 getPhi() const { return _phi; }
  omReal64 getCosTheta() const { return _cosTheta; }
  omReal64 getSinTheta() const { return _sinTheta; }
  omReal64 getCosPhi() const { return _cosPhi; }
  omReal64 getSinPhi() const { return _sinPhi; }
  omReal64 getX() const { return _rho * _sinTheta * _cosPhi; }
  omReal64 getY() const { return _rho * _sinTheta * _sinPhi; }
  omReal64 getZ() const { return _rho * _cosTheta; }

  /// Sums and differences go through Cartesian components and back.
  Vector3d& operator+=(const Vector3d& other);
  Vector3d& operator-=(const Vector3d& other);
  /// Scales the length alone: a negative scalar makes it negative.
  Vector3d& operator*=(omReal64 scalar);
  Vector3d& operator/=(omReal64 scalar);

  friend Vector3d operator+(Vector3d a, const Vector3d& b) { return a += b; }
  friend Vector3d operator-(Vector3d a, const Vector3d& b) { return a -= b; }
  friend Vector3d operator*(Vector3d a, omReal64 scalar) { return a *= scalar; }
  friend Vector3d operator*(omReal64 scalar, Vector3d a) { return a *= scalar; }
  friend Vector3d operator/(Vector3d a, omReal64 scalar) { return a /= scalar; }

  /// Exact, of length and angles: two zero vectors with different angles differ.
  friend bool operator==(const Vector3d& a, const Vector3d& b) {
    return a._rho == b._rho && a._theta == b._theta && a._phi == b._phi;
  }
  friend bool operator!=(const Vector3d& a, const Vector3d& b) { return !(a == b); }

  BoolResult read(BaseIArchive& archive) override;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_rho", self._rho) && item("_theta", self._theta) && item("_phi", self._phi);
  }
  void setAngles(omReal64 theta, omReal64 phi);

  omReal64 _rho = 0;
  omReal64 _theta = 0;
  omReal64 _phi = 0;
  // Follow the angles; not archived.
  omReal64 _cosTheta = 1;
  omReal64 _sinTheta = 0;
  omReal64 _cosPhi = 1;
  omReal64 _sinPhi = 0;
};

/// "[x, y, z]", the Cartesian components.
ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream& stream, const Vector3d& vector);

/// The Cartesian components, each to the nearest value of the coordinate type.
template <class T>
Point3dData<T> convert(const Vector3d& vector) {
  return {round<T, omReal64>(vector.getX()), round<T, omReal64>(vector.getY()), round<T, omReal64>(vector.getZ())};
}

/// \name The vector from the origin to a point, see Vector3d::setCoords().
/// @{
template <class T>
void convert(const Point3dData<T>& point, Vector3d& vector) {
  vector.setCoords(point);
}
template <class T>
Vector3d convert(const Point3dData<T>& point) {
  Vector3d vector;
  vector.setCoords(point);
  return vector;
}
template <class T>
void convert(const Point3d<T>& point, Vector3d& vector) {
  vector.setCoords(point);
}
template <class T>
Vector3d convert(const Point3d<T>& point) {
  return convert(point.getCoords());
}
/// @}

/// The dot product of the components.
ORMIX_GEOMETRY_API omReal64 scalarProduct(const Vector3d& a, const Vector3d& b);
/// The cross product of the components, brought back to spherical form.
ORMIX_GEOMETRY_API Vector3d crossProduct(const Vector3d& a, const Vector3d& b);

/// Whether the length of b - a is strictly less than the tolerance: unlike points, two equal vectors do not compare
/// equal at tolerance 0 (intended).
ORMIX_GEOMETRY_API bool compare(const Vector3d& a, const Vector3d& b, omReal64 tolerance);

}  // namespace ormix::geom
