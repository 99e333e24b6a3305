#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>

namespace ormix::geom {

/// The axis-parallel cuboid around `center` that extends halfLength, halfWidth and halfHeight to either side of it
/// along x, y and z, rotated by Rz(chi)·Ry(beta)·Rx(alpha), angles in radians. The rotation is about the origin of
/// coordinates and not about the centre (intended), so that the centre of the rotated cuboid is the rotated `center`.
/// alpha and chi have the reverse roles of those of `Ellipsoid3d` (intended). The sizes are not checked: negative ones
/// are stored and exchange the names of opposite corners.
template <class T>
class ORMIX_GEOMETRY_API Cuboid3d : public Entity3d<Cuboid3d<T>, BaseTypedGeometryEntity3d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Cuboid3d";  ///< registered name
  static constexpr eEntity3dType s_entity3dType = eE3DT_Cuboid;        ///< family

  /// Size 0 at the origin, all angles 0.
  Cuboid3d() = default;
  /// Centre before the rotation, half sizes along x, y and z in the unit of the coordinates, angles in radians; all
  /// stored as given.
  /// @{
  Cuboid3d(const Point3dData<T>& center, T halfLength, T halfWidth, T halfHeight, omReal64 alpha, omReal64 beta,
           omReal64 chi)
      : _centerPt(center),
        _halfLength(halfLength),
        _halfWidth(halfWidth),
        _halfHeight(halfHeight),
        _alpha(alpha),
        _beta(beta),
        _chi(chi) {}
  Cuboid3d(T cx, T cy, T cz, T halfLength, T halfWidth, T halfHeight, omReal64 alpha, omReal64 beta, omReal64 chi)
      : Cuboid3d(Point3dData<T>(cx, cy, cz), halfLength, halfWidth, halfHeight, alpha, beta, chi) {}
  /// @}

  /// Replaces everything, as the constructors, or the one value of the name.
  /// @{
  void setCoords(const Point3dData<T>& center, T halfLength, T halfWidth, T halfHeight, omReal64 alpha, omReal64 beta,
                 omReal64 chi) {
    *this = Cuboid3d(center, halfLength, halfWidth, halfHeight, alpha, beta, chi);
  }
  void setCoords(T cx, T cy, T cz, T halfLength, T halfWidth, T halfHeight, omReal64 alpha, omReal64 beta,
                 omReal64 chi) {
    *this = Cuboid3d(cx, cy, cz, halfLength, halfWidth, halfHeight, alpha, beta, chi);
  }
  void setCenter(const Point3dData<T>& center) { _centerPt = center; }
  void setCenter(T x, T y, T z) { _centerPt.setCoords(x, y, z); }
  void setHalfLength(T halfLength) { _halfLength = halfLength; }
  void setHalfWidth(T halfWidth) { _halfWidth = halfWidth; }
  void setHalfHeight(T halfHeight) { _halfHeight = halfHeight; }
  void setAlpha(omReal64 alpha) { _alpha = alpha; }
  void setBeta(omReal64 beta) { _beta = beta; }
  void setChi(omReal64 chi) { _chi = chi; }
  /// @}

  /// The values as stored: the centre before the rotation, the half sizes, the angles in radians.
  /// @{
  const Point3dData<T>& center() const { return _centerPt; }
  T centerX() const { return _centerPt.getX(); }
  T centerY() const { return _centerPt.getY(); }
  T centerZ() const { return _centerPt.getZ(); }
  T getHalfLength() const { return _halfLength; }
  T getHalfWidth() const { return _halfWidth; }
  T getHalfHeight() const { return _halfHeight; }
  omReal64 getAlpha() const { return _alpha; }
  omReal64 getBeta() const { return _beta; }
  omReal64 getChi() const { return _chi; }
  /// @}

  /// A full size: twice the half one, in the coordinate type; integers wrap around.
  /// @{
  T getLength() const;
  T getWidth() const;
  T getHeight() const;
  /// @}

  /// A corner of the rotated cuboid: `center` plus (±halfLength, ±halfWidth, ±halfHeight), rotated about the origin of
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
    return item("_centerPt", self._centerPt) && item("_halfLength", self._halfLength) &&
           item("_halfWidth", self._halfWidth) && item("_halfHeight", self._halfHeight) &&
           item("_alpha", self._alpha) && item("_beta", self._beta) && item("_chi", self._chi);
  }

  /// The rotated corner on the given sides of the centre, each -1 or 1.
  Point3dData<omReal64> corner(omReal64 sideX, omReal64 sideY, omReal64 sideZ) const;

  Point3dData<T> _centerPt;
  T _halfLength{};
  T _halfWidth{};
  T _halfHeight{};
  omReal64 _alpha = 0;
  omReal64 _beta = 0;
  omReal64 _chi = 0;
};

/// "[center=[0, 0, 0], l=6, w=4, h=2, chi=0.75, beta=0.5, alpha=0.25]", with the full sizes; the angles are in this
/// order (intended).
template <class T>
std::ostream& operator<<(std::ostream& stream, const Cuboid3d<T>& cuboid);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(extern, Cuboid3d)
