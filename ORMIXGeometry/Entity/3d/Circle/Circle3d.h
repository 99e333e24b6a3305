#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>

namespace ormix::geom {

/// The circle of space around a centre, in the plane across its unit normal: a curve, not the disc in it. Radius 0
/// makes it a point. Everything is computed in omReal64, and the sign of the radius, which is stored as given, is
/// ignored.
template <class T>
class ORMIX_GEOMETRY_API Circle3d : public Entity3d<Circle3d<T>, BaseTypedGeometryEntity3d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Circle3d";  ///< registered name
  static constexpr eEntity3dType s_entity3dType = eE3DT_Circle;        ///< family

  /// Radius 0 at the origin, across the z axis.
  Circle3d() = default;
  /// Centre and radius as given, in the unit of the coordinates; of the normal the direction.
  /// \throw ORMIXGeometryException, logged first, for a normal that is the zero vector or not finite
  /// @{
  Circle3d(const Point3dData<T>& center, const Point3dData<omReal64>& normal, T radius) {
    setCoords(center, normal, radius);
  }
  void setCoords(const Point3dData<T>& center, const Point3dData<omReal64>& normal, T radius) {
    setNormal(normal);
    _centerPt = center;
    _radius = radius;
  }
  void setNormal(const Point3dData<omReal64>& normal);
  /// @}
  /// One of the other values.
  /// @{
  void setCenter(const Point3dData<T>& center) { _centerPt = center; }
  void setRadius(T radius) { _radius = radius; }
  /// @}

  /// The values as stored; the normal has length 1.
  /// @{
  const Point3dData<T>& center() const { return _centerPt; }
  T centerX() const { return _centerPt.getX(); }
  T centerY() const { return _centerPt.getY(); }
  T centerZ() const { return _centerPt.getZ(); }
  const Point3dData<omReal64>& getNormal() const { return _normal; }
  T getRadius() const { return _radius; }
  /// @}

  /// 2π·|r|
  omReal64 length() const;
  /// The distance of a point from the curve.
  omReal64 distance(const Point3dData<omReal64>& point) const;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_centerPt", self._centerPt) && item("_normal", self._normal) && item("_radius", self._radius);
  }
  static BoolResult validate(const Circle3d& self);

  Point3dData<T> _centerPt;
  Point3dData<omReal64> _normal{0, 0, 1};
  T _radius{};
};

/// "[center=[1, 2, 3], normal=[0, 0.6, 0.8], radius=4]"
template <class T>
std::ostream& operator<<(std::ostream& stream, const Circle3d<T>& circle);

/// Whether the centres are at most `tolerance` apart (see compare() of points), the radii differ by no more, and the
/// normals by at most `angleTolerance`, in radians. A normal and its opposite count as different.
template <class T>
bool compare(const Circle3d<T>& a, const Circle3d<T>& b, std::common_type_t<T> tolerance, omReal64 angleTolerance);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(extern, Circle3d)
