#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>

namespace ormix::geom {

/// The cube centred at `center` whose faces are halfLength away from it,
/// turned by Rz(chi)·Ry(beta)·Rx(alpha) (radians) about the origin of coordinates, the centre with it (intended): the
/// real centre is the turned one. The roles of alpha and chi are the reverse of the ellipsoid's (intended). The size is
/// not checked: a negative one is stored and swaps the names of the corners.
template <class T>
class ORMIX_GEOMETRY_API Cube3d : public Entity3d<Cube3d<T>, BaseTypedGeometryEntity3d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Cube3d";
  static constexpr eEntity3dType s_entity3dType = eE3DT_Cube;

  /// Size 0 at the origin.
  Cube3d() = default;
  Cube3d(const Point3dData<T>& center, T halfLength, omReal64 alpha, omReal64 beta, omReal64 chi)
      : _centerPt(center), _halfLength(halfLength), _alpha(alpha), _beta(beta), _chi(chi) {}
  Cube3d(T cx, T cy, T cz, T halfLength, omReal64 alpha, omReal64 beta, omReal64 chi)
      : Cube3d(Point3dData<T>(cx, cy, cz), halfLength, alpha, beta, chi) {}

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

  /// As stored, not turned.
  const Point3dData<T>& center() const { return _centerPt; }
  T centerX() const { return _centerPt.getX(); }
  T centerY() const { return _centerPt.getY(); }
  T centerZ() const { return _centerPt.getZ(); }
  T getHalfLength() const { return _halfLength; }
  omReal64 getAlpha() const { return _alpha; }
  omReal64 getBeta() const { return _beta; }
  omReal64 getChi() const { return _chi; }

  /// The edge, twice the half length in the coordinate type; integers wrap around.
  T getLength() const;

  /// \name Corners.
  /// The centre plus (±halfLength, ±halfLength, ±halfLength), turned about the origin. Front is the side of positive
  /// local x, right that of positive y, top that of negative z.
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

  /// The corner on the given sides, each -1 or 1, of the local axes.
  Point3dData<omReal64> corner(omReal64 sideX, omReal64 sideY, omReal64 sideZ) const;

  Point3dData<T> _centerPt;
  T _halfLength{};
  omReal64 _alpha = 0;
  omReal64 _beta = 0;
  omReal64 _chi = 0;
};

/// "[center=[0, 0, 0], l=4, chi=0.75, beta=0.5, alpha=0.25]", the full length; the angles stand in this order
/// (intended).
template <class T>
std::ostream& operator<<(std::ostream& stream, const Cube3d<T>& cube);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(extern, Cube3d)
