#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>
#include <ORMIXMath/Algebra/AlgebraTypes.h>

#include <boost/numeric/ublas/matrix.hpp>

namespace ormix::geom {

/// The ellipsoid whose semi-axes a, b and c (`majorRadius`, `mediumRadius`, `minorRadius`) lie along the columns of the
/// rotation Rz(alpha)·Ry(beta)·Rx(chi), angles in radians: first chi about the x axis, then beta about y, then alpha
/// about z, all about its centre. Radii are stored as given: their order and signs are not checked. What zero and
/// negative radii mean is said in ORMIXMath/Shape/Ellipsoid.h. Derived values are computed in omReal64.
template <class T>
class ORMIX_GEOMETRY_API Ellipsoid3d : public Entity3d<Ellipsoid3d<T>, BaseTypedGeometryEntity3d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Ellipsoid3d";  ///< registered name
  static constexpr eEntity3dType s_entity3dType = eE3DT_Ellipsoid;        ///< family

  /// All radii 0 at the origin, all angles 0.
  Ellipsoid3d() = default;
  /// Centre and radii in the unit of the coordinates, angles in radians; all stored as given.
  /// @{
  Ellipsoid3d(const Point3dData<T>& center, T majorRadius, T mediumRadius, T minorRadius, omReal64 alpha, omReal64 beta,
              omReal64 chi) {
    setCoords(center, majorRadius, mediumRadius, minorRadius, alpha, beta, chi);
  }
  Ellipsoid3d(T cx, T cy, T cz, T majorRadius, T mediumRadius, T minorRadius, omReal64 alpha, omReal64 beta,
              omReal64 chi) {
    setCoords({cx, cy, cz}, majorRadius, mediumRadius, minorRadius, alpha, beta, chi);
  }
  /// @}

  /// Replaces everything, as the constructors, or the values of the name. Angles change the rotation matrix.
  /// @{
  void setCoords(const Point3dData<T>& center, T majorRadius, T mediumRadius, T minorRadius, omReal64 alpha,
                 omReal64 beta, omReal64 chi);
  void setCoords(T cx, T cy, T cz, T majorRadius, T mediumRadius, T minorRadius, omReal64 alpha, omReal64 beta,
                 omReal64 chi) {
    setCoords({cx, cy, cz}, majorRadius, mediumRadius, minorRadius, alpha, beta, chi);
  }
  void setCenter(const Point3dData<T>& center) { _centerPt = center; }
  void setCenter(T x, T y, T z) { _centerPt.setCoords(x, y, z); }
  void setMajorRadius(T radius) { _majorRadius = radius; }
  void setMediumRadius(T radius) { _mediumRadius = radius; }
  void setMinorRadius(T radius) { _minorRadius = radius; }
  void setOrientation(omReal64 alpha, omReal64 beta, omReal64 chi);
  /// @}

  /// The values as stored; angles in radians.
  /// @{
  const Point3dData<T>& center() const { return _centerPt; }
  T centerX() const { return _centerPt.getX(); }
  T centerY() const { return _centerPt.getY(); }
  T centerZ() const { return _centerPt.getZ(); }
  T getMajorRadius() const { return _majorRadius; }
  T getMediumRadius() const { return _mediumRadius; }
  T getMinorRadius() const { return _minorRadius; }
  omReal64 getAlpha() const { return _alpha; }
  omReal64 getBeta() const { return _beta; }
  omReal64 getChi() const { return _chi; }
  /// @}
  /// The rotation Rz(alpha)·Ry(beta)·Rx(chi): its columns are the directions of the semi-axes a, b and c.
  const Matrix3x3& getMatRot() const { return _matRot; }

  /// The surface area, see ellipsoidArea().
  omReal64 area() const;
  /// 4/3·π·a·b·c, negative when the product of the radii is.
  omReal64 volume() const;
  /// The eccentricity of the section through the largest and the smallest radius, in [0, 1]: 0 for a sphere, 1 for a
  /// flat ellipsoid.
  omReal64 excentricity() const;

  /// The distance from the centre to the surface in the direction (theta, phi) relative to the ellipsoid's own axes:
  /// theta is the angle from the axis of c, phi the azimuth from the axis of a toward that of b, in radians.
  omReal64 radius(omReal64 theta, omReal64 phi) const;
  /// The surface point in the direction (theta, phi) of `radius`.
  Point3dData<omReal64> boundaryPoint(omReal64 theta, omReal64 phi) const;

  /// Reads the fields and computes the rotation matrix from the angles.
  BoolResult read(BaseIArchive& archive) override;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_centerPt", self._centerPt) && item("_majorRadius", self._majorRadius) &&
           item("_mediumRadius", self._mediumRadius) && item("_minorRadius", self._minorRadius) &&
           item("_alpha", self._alpha) && item("_beta", self._beta) && item("_chi", self._chi);
  }

  Point3dData<T> _centerPt;
  T _majorRadius{};
  T _mediumRadius{};
  T _minorRadius{};
  omReal64 _alpha = 0;
  omReal64 _beta = 0;
  omReal64 _chi = 0;
  // Computed from the angles; not archived.
  Matrix3x3 _matRot = boost::numeric::ublas::identity_matrix<omReal64>(3);
};

/// "[center=[0, 0, 0], a=3, b=2, c=1, chi=0.75, beta=0.5, alpha=0.25]"; the angles are in this order (intended).
template <class T>
std::ostream& operator<<(std::ostream& stream, const Ellipsoid3d<T>& ellipsoid);

/// Whether the centres are at most `tolerance` apart (see compare() of points), each radius differs by at most as much,
/// and each angle by at most `angleTolerance`. Parameters are compared one by one: angles that differ by a full turn,
/// or permuted axes with permuted radii, count as different.
template <class T>
bool compare(const Ellipsoid3d<T>& a, const Ellipsoid3d<T>& b, std::common_type_t<T> tolerance,
             omReal64 angleTolerance);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(extern, Ellipsoid3d)
