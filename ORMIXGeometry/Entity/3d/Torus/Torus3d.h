#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>

namespace ormix::geom {

/// The solid torus around a circle: all points whose distance from it is at most the minor radius, that of the tube.
/// The circle has the major radius, and is across the axis, a unit vector, through the centre.
///
/// A tube that is wider than the circle meets itself: the solid then has no hole, and its surface is the outer part of
/// the tube's; major radius 0 makes it a ball. Minor radius 0 makes it a circle. Everything is computed in omReal64,
/// and the signs of the radii, which are stored as given, are ignored.
template <class T>
class ORMIX_GEOMETRY_API Torus3d : public Entity3d<Torus3d<T>, BaseTypedGeometryEntity3d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Torus3d";  ///< registered name
  static constexpr eEntity3dType s_entity3dType = eE3DT_Torus;        ///< family

  /// Radii 0 at the origin, around the z axis.
  Torus3d() = default;
  /// Centre and radii as given, in the unit of the coordinates; of the axis the direction.
  /// \throw ORMIXGeometryException, logged first, for an axis that is the zero vector or not finite
  /// @{
  Torus3d(const Point3dData<T>& center, const Point3dData<omReal64>& axis, T majorRadius, T minorRadius) {
    setCoords(center, axis, majorRadius, minorRadius);
  }
  void setCoords(const Point3dData<T>& center, const Point3dData<omReal64>& axis, T majorRadius, T minorRadius) {
    setAxis(axis);
    _centerPt = center;
    _majorRadius = majorRadius;
    _minorRadius = minorRadius;
  }
  void setAxis(const Point3dData<omReal64>& axis);
  /// @}
  /// One of the other values.
  /// @{
  void setCenter(const Point3dData<T>& center) { _centerPt = center; }
  void setMajorRadius(T radius) { _majorRadius = radius; }
  void setMinorRadius(T radius) { _minorRadius = radius; }
  /// @}

  /// The values as stored; the axis has length 1.
  /// @{
  const Point3dData<T>& center() const { return _centerPt; }
  T centerX() const { return _centerPt.getX(); }
  T centerY() const { return _centerPt.getY(); }
  T centerZ() const { return _centerPt.getZ(); }
  const Point3dData<omReal64>& getAxis() const { return _axis; }
  T getMajorRadius() const { return _majorRadius; }
  T getMinorRadius() const { return _minorRadius; }
  /// @}

  /// 4π²·R·r; where r > R the outer surface, see area() of RoundSolid.
  omReal64 area() const;
  /// 2π²·R·r²; where r > R see volume() of RoundSolid.
  omReal64 volume() const;

  /// The distance from the surface: negative inside, 0 on it.
  omReal64 signedDistance(const Point3dData<omReal64>& point) const;
  /// Its absolute value.
  omReal64 distance(const Point3dData<omReal64>& point) const;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_centerPt", self._centerPt) && item("_axis", self._axis) && item("_majorRadius", self._majorRadius) &&
           item("_minorRadius", self._minorRadius);
  }
  static BoolResult validate(const Torus3d& self);

  Point3dData<T> _centerPt;
  Point3dData<omReal64> _axis{0, 0, 1};
  T _majorRadius{};
  T _minorRadius{};
};

/// "[center=[1, 2, 3], axis=[0, 0.6, 0.8], R=5, r=2]"
template <class T>
std::ostream& operator<<(std::ostream& stream, const Torus3d<T>& torus);

/// Whether the centres are at most `tolerance` apart (see compare() of points), the radii differ by no more, and the
/// axes by at most `angleTolerance`, in radians. An axis and its opposite count as different.
template <class T>
bool compare(const Torus3d<T>& a, const Torus3d<T>& b, std::common_type_t<T> tolerance, omReal64 angleTolerance);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(extern, Torus3d)
