#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>

ORMIX_GEOMETRY_ENTITY3D_LEVELS(extern, Vector3d, BaseGeometryEntity3d)

namespace ormix::geom {

/// A free vector of space in spherical coordinates: the length rho, the polar angle theta from the z axis and the
/// azimuth phi in the x-y plane from x toward y, in radians. Its components are
/// rho·(sin theta cos phi, sin theta sin phi, cos theta).
///
/// rho is stored as given and may be negative. `setCoords` reduces the angles to [-pi, pi); all constructors and
/// operations use it, except reading from an archive and multiplication by a scalar, which keep the angles.
class ORMIX_GEOMETRY_API Vector3d : public Entity3d<Vector3d, BaseGeometryEntity3d> {
 public:
  static constexpr const char* s_className = "ormix::geom::Vector3d";                    ///< registered name
  static constexpr eEntity3dType s_entity3dType = eE3DT_Vector;                          ///< family
  static constexpr eCoordinateSystem3dType s_coordinateSystem3dType = eCS3DT_Spherical;  ///< of its numbers

  /// The zero vector.
  Vector3d() = default;
  /// As setCoords(rho, theta, phi).
  Vector3d(omReal64 rho, omReal64 theta, omReal64 phi) { setCoords(rho, theta, phi); }

  /// Stores rho as given. Both angles, in radians, are reduced to [0, 2 pi) first. If theta is then at least pi, pi is
  /// subtracted from both, which keeps x and y but changes the sign of z (intended). Last, each is reduced to
  /// [-pi, pi). Angles that are not finite become NaN.
  void setCoords(omReal64 rho, omReal64 theta, omReal64 phi);
  /// The vector from the origin to the point; theta is 0 for the zero vector. For a point on the negative z axis theta
  /// is pi before the reduction above, so that the vector points to +z (intended).
  /// @{
  template <class T>
  void setCoords(const Point3dData<T>& point);
  template <class T>
  void setCoords(const Point3d<T>& point) {
    setCoords(point.getCoords());
  }
  /// @}
  /// The vector to − from, the difference computed in omReal64. `Vector2d` takes its points in the reverse order
  /// (intended).
  /// @{
  template <class T>
  void setCoords(const Point3dData<T>& from, const Point3dData<T>& to);
  template <class T>
  void setCoords(const Point3d<T>& from, const Point3d<T>& to) {
    setCoords(from.getCoords(), to.getCoords());
  }
  /// @}

  /// The parameters as stored, angles in radians, and their cosines and sines, which are kept and cost nothing.
  /// @{
  omReal64 getRho() const { return _rho; }
  omReal64 getTheta() const { return _theta; }
  omReal64 getPhi() const { return _phi; }
  omReal64 getCosTheta() const { return _cosTheta; }
  omReal64 getSinTheta() const { return _sinTheta; }
  omReal64 getCosPhi() const { return _cosPhi; }
  omReal64 getSinPhi() const { return _sinPhi; }
  /// @}
  /// A Cartesian component, computed from rho and the stored cosines and sines.
  /// @{
  omReal64 getX() const { return _rho * _sinTheta * _cosPhi; }
  omReal64 getY() const { return _rho * _sinTheta * _sinPhi; }
  omReal64 getZ() const { return _rho * _cosTheta; }
  /// @}

  /// Sum and difference, computed by Cartesian components and converted back by `setCoords`.
  /// @{
  Vector3d& operator+=(const Vector3d& other);
  Vector3d& operator-=(const Vector3d& other);
  /// @}
  /// Multiplies or divides rho and leaves the angles: a negative scalar changes the sign of rho.
  /// @{
  Vector3d& operator*=(omReal64 scalar);
  Vector3d& operator/=(omReal64 scalar);
  /// @}

  friend Vector3d operator+(Vector3d a, const Vector3d& b) { return a += b; }
  friend Vector3d operator-(Vector3d a, const Vector3d& b) { return a -= b; }
  friend Vector3d operator*(Vector3d a, omReal64 scalar) { return a *= scalar; }
  friend Vector3d operator*(omReal64 scalar, Vector3d a) { return a *= scalar; }
  friend Vector3d operator/(Vector3d a, omReal64 scalar) { return a /= scalar; }

  /// Exact comparison of rho and both angles: zero vectors with different angles are not equal.
  friend bool operator==(const Vector3d& a, const Vector3d& b) {
    return a._rho == b._rho && a._theta == b._theta && a._phi == b._phi;
  }
  friend bool operator!=(const Vector3d& a, const Vector3d& b) { return !(a == b); }

  /// Reads the fields, which are stored as they are, and computes the cosines and sines of the angles.
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
  // Computed from the angles; not archived.
  omReal64 _cosTheta = 1;
  omReal64 _sinTheta = 0;
  omReal64 _cosPhi = 1;
  omReal64 _sinPhi = 0;
};

/// "[x, y, z]", the Cartesian components.
ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream& stream, const Vector3d& vector);

/// The Cartesian components, each rounded to the nearest value of the coordinate type.
template <class T>
Point3dData<T> convert(const Vector3d& vector) {
  return {round<T, omReal64>(vector.getX()), round<T, omReal64>(vector.getY()), round<T, omReal64>(vector.getZ())};
}

/// The vector from the origin to a point, see Vector3d::setCoords().
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
/// The cross product a × b of the components, converted back to spherical coordinates.
ORMIX_GEOMETRY_API Vector3d crossProduct(const Vector3d& a, const Vector3d& b);

/// Whether the length of b - a is strictly less than the tolerance: other than for points, false for equal vectors and
/// the tolerance 0 (intended).
ORMIX_GEOMETRY_API bool compare(const Vector3d& a, const Vector3d& b, omReal64 tolerance);

}  // namespace ormix::geom
