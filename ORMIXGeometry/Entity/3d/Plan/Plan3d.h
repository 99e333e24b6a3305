#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>
#include <ORMIXGeometry/Entity/3d/Vector/Vector3d.h>

ORMIX_GEOMETRY_ENTITY3D_LEVELS(extern, Plan3d, BaseGeometryEntity3d)

namespace ormix::geom {

/// The infinite plane { p : n·p = rho } whose unit normal n is Vector3d(1, theta, phi), in radians.
///
/// Angles are stored in [-pi, pi). rho is the signed distance of the plane from the origin along n: (rho, n) and
/// (−rho, −n) are the same set of points with opposite normals. Since the normal is a `Vector3d`, the z component of
/// one with a negative theta has the opposite sign, and no normal is (0, 0, −1) (intended).
class ORMIX_GEOMETRY_API Plan3d : public Entity3d<Plan3d, BaseGeometryEntity3d> {
 public:
  static constexpr const char* s_className = "ormix::geom::Plan3d";                      ///< registered name
  static constexpr eEntity3dType s_entity3dType = eE3DT_Plan;                            ///< family
  static constexpr eCoordinateSystem3dType s_coordinateSystem3dType = eCS3DT_Spherical;  ///< of its numbers

  /// The x-y plane with the normal (0, 0, 1).
  Plan3d() = default;
  /// As setCoords(rho, theta, phi).
  Plan3d(omReal64 rho, omReal64 theta, omReal64 phi) { setCoords(rho, theta, phi); }

  /// Stores rho as given and each angle reduced to [-pi, pi), in radians; an angle that is not finite becomes NaN.
  void setCoords(omReal64 rho, omReal64 theta, omReal64 phi);
  /// The plane through three points, with rho >= 0, see planFromPoints(). Where the normal would then be (0, 0, −1), it
  /// is (0, 0, 1) and rho is negative. Points that coincide or are collinear give rho, theta and phi 0, the x-y plane.
  template <class T>
  void setCoords(const Point3dData<T>& p0, const Point3dData<T>& p1, const Point3dData<T>& p2) {
    setThrough(cast<omReal64>(p0), cast<omReal64>(p1), cast<omReal64>(p2));
  }
  /// The same for `Point3d`. A template of the class of points, so that coordinates in braces are a `Point3dData`.
  template <template <class> class Point, class T>
  void setCoords(const Point<T>& p0, const Point<T>& p1, const Point<T>& p2) {
    setCoords(p0.getCoords(), p1.getCoords(), p2.getCoords());
  }
  /// The plane through the point with the given normal, of which only the angles are used, not the length. A zero
  /// vector with angles 0 gives the plane parallel to the x-y plane.
  template <class T>
  void setCoords(const Point3dData<T>& point, const Vector3d& normal) {
    setThrough(cast<omReal64>(point), normal);
  }
  /// The same for `Point3d`.
  template <template <class> class Point, class T>
  void setCoords(const Point<T>& point, const Vector3d& normal) {
    setCoords(point.getCoords(), normal);
  }

  /// The parameters as stored, angles in [-pi, pi), and their cosines and sines, which are kept and cost nothing.
  /// @{
  omReal64 getRho() const { return _rho; }
  omReal64 getTheta() const { return _theta; }
  omReal64 getPhi() const { return _phi; }
  omReal64 getCosTheta() const { return _cosTheta; }
  omReal64 getSinTheta() const { return _sinTheta; }
  omReal64 getCosPhi() const { return _cosPhi; }
  omReal64 getSinPhi() const { return _sinPhi; }
  /// @}

  /// The unit normal n, Vector3d(1, theta, phi).
  Vector3d getNormal() const { return {1, _theta, _phi}; }
  /// The point rho·n of the plane, the nearest to the origin.
  Point3dData<omReal64> getNearestPointFromOrigin() const;

  /// (x − rho·nx)·nx + (y − rho·ny)·ny + (y − rho·nz)·nz. The third term has y in place of z (intended): the value is
  /// the distance to the plane, positive on the side of the normal, only where y = z or nz = 0.
  /// @{
  template <class T>
  omReal64 signedDistance(const Point3dData<T>& point) const {
    return signedDistanceOf(cast<omReal64>(point));
  }
  template <class T>
  omReal64 signedDistance(const Point3d<T>& point) const {
    return signedDistance(point.getCoords());
  }
  /// @}

  /// Translates the plane by the vector or its opposite: rho changes by the vector's component along the normal.
  /// @{
  Plan3d& operator+=(const Vector3d& offset);
  Plan3d& operator-=(const Vector3d& offset);
  /// @}
  friend Plan3d operator+(Plan3d plan, const Vector3d& offset) { return plan += offset; }
  friend Plan3d operator-(Plan3d plan, const Vector3d& offset) { return plan -= offset; }

  /// Reads the fields, which are stored as they are, and computes the cosines and sines of the angles.
  BoolResult read(BaseIArchive& archive) override;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_rho", self._rho) && item("_theta", self._theta) && item("_phi", self._phi);
  }
  void setAngles(omReal64 theta, omReal64 phi);
  void setThrough(const Point3dData<omReal64>& p0, const Point3dData<omReal64>& p1, const Point3dData<omReal64>& p2);
  void setThrough(const Point3dData<omReal64>& point, const Vector3d& normal);
  omReal64 signedDistanceOf(const Point3dData<omReal64>& point) const;
  Point3dData<omReal64> unitNormal() const;

  omReal64 _rho = 0;
  omReal64 _theta = 0;
  omReal64 _phi = 0;
  // Computed from the angles; not archived.
  omReal64 _cosTheta = 1;
  omReal64 _sinTheta = 0;
  omReal64 _cosPhi = 1;
  omReal64 _sinPhi = 0;
};

/// "[rho=1, theta=0.5, phi=0.25]"
ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream& stream, const Plan3d& plan);

/// Whether rho, theta and phi each differ by at most the tolerance, which is the same for the distance and the angles
/// (intended). Angles are compared as numbers: −pi and a value just below pi are far apart.
ORMIX_GEOMETRY_API bool compare(const Plan3d& a, const Plan3d& b, omReal64 tolerance);

}  // namespace ormix::geom
