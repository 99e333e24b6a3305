#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>

namespace ormix::geom {

/// The axis-parallel cube around `center` whose faces are at the distance halfLength from it, rotated by
/// Rz(chi)·Ry(beta)·Rx(alpha), angles in radians. The rotation is about the origin of coordinates and not about the
/// centre (intended), so that the centre of the rotated cube is the rotated `center`. alpha and chi have the reverse
/// roles of those of `Ellipsoid3d` (intended). The size is not checked: a negative one is stored and exchanges the
/// names of opposite corners.
template <class T>
class ORMIX_GEOMETRY_API Cube3d : public Entity3d<Cube3d<T>, BaseTypedGeometryEntity3d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Cube3d";  ///< registered name
  static constexpr eEntity3dType s_entity3dType = eE3DT_Cube;        ///< family

  /// Size 0 at the origin, all angles 0.
  Cube3d() = default;
  /// Centre before the rotation, half the edge length in the unit of the coordinates, angles in radians; all stored as
  /// given.
  /// @{
  Cube3d(const Point3dData<T>& center, T halfLength, omReal64 alpha, omReal64 beta, omReal64 chi)
      : _centerPt(center), _halfLength(halfLength), _alpha(alpha), _beta(beta), _chi(chi) {}
  Cube3d(T cx, T cy, T cz, T halfLength, omReal64 alpha, omReal64 beta, omReal64 chi)
      : Cube3d(Point3dData<T>(cx, cy, cz), halfLength, alpha, beta, chi) {}
  /// @}

  /// Replaces everything, as the constructors, or the one value of the name.
  /// @{
  void setCoords(const Point3dData<T>& center, T halfLength, omReal64 alpha, omReal64 beta, omReal64 chi) {
    *this = Cube3d(center, halfLength, alpha, beta, chi);
  }
  void setCoords(T cx, T cy, T cz, T halfLength, omReal64 alpha, omReal64 beta, omReal64 chi) {
    *this = Cube3d(cx, cy, cz, halfLength, alpha, beta, chi);
  }
  void setCenter(const Point3dData<T>& center) { _centerPt = center; }
  void setCenter(T x, T y, T z) { _centerPt.setCoords(x, y, z); }
  void setHalfLength(T halfLength) { _halfLength = halfLength; }
  void setAlpha(omReal64 alpha) { _alpha = alpha; }
  void setBeta(omReal64 beta) { _beta = beta; }
  void setChi(omReal64 chi) { _chi = chi; }
  /// @}

  /// The values as stored: the centre before the rotation, half the edge length, the angles in radians.
  /// @{
  const Point3dData<T>& center() const { return _centerPt; }
  T centerX() const { return _centerPt.getX(); }
  T centerY() const { return _centerPt.getY(); }
  T centerZ() const { return _centerPt.getZ(); }
  T getHalfLength() const { return _halfLength; }
  omReal64 getAlpha() const { return _alpha; }
  omReal64 getBeta() const { return _beta; }
  omReal64 getChi() const { return _chi; }
  /// @}

  /// The edge length: twice the half length, in the coordinate type; integers wrap around.
  T getLength() const;

  /// A corner of the rotated cube: `center` plus (±halfLength, ±halfLength, ±halfLength), rotated about the origin of
  /// coordinates. Before the rotation, front is the positive x side, right the positive y side, top the negative z
  /// side.
  /// @{
  Point3dData<omReal64> topLeftFrontCorner() const { return corner(1, -1, -1); }
  Point3dData<omReal64> topRightFrontCorner() const { return corner(1, 1, -1); }
  Point3dData<omReal64> bottomLeftFrontCorner() const { return corner(1, -1, 1); }
  Point3dData<omReal64> bottomRightFrontCorner() const { return corner(1, 1, 1); }
  Point3dData<omReal64> topLeftBackCorner() const { return corner(-1, -1, -1); }
  Point3dData<omReal64> topRightBackCorner() const { return corner(-1, 1, -1); }
  Point3dData<omReal64> bottomLeftBackCorner() const { return corner(-1, -1, 1); }
  Point3dData<omReal64> bottomRightBackCorner() const { return corner(-1, 1, 1); }
  /// @}

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_centerPt", self._centerPt) && item("_halfLength", self._halfLength) && item("_alpha", self._alpha) &&
           item("_beta", self._beta) && item("_chi", self._chi);
  }

  /// The rotated corner on the given sides of the centre, each -1 or 1.
  Point3dData<omReal64> corner(omReal64 sideX, omReal64 sideY, omReal64 sideZ) const;

  Point3dData<T> _centerPt;
  T _halfLength{};
  omReal64 _alpha = 0;
  omReal64 _beta = 0;
  omReal64 _chi = 0;
};

/// "[center=[0, 0, 0], l=4, chi=0.75, beta=0.5, alpha=0.25]", with the full edge length; the angles are in this
/// order (intended).
template <class T>
std::ostream& operator<<(std::ostream& stream, const Cube3d<T>& cube);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(extern, Cube3d)
