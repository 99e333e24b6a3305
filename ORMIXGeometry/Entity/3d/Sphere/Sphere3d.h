#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>

namespace ormix::geom {

/// The sphere { p : ‖p − center‖ = radius }. The radius is not checked: a negative one is stored, and the formulas
/// below use it with its sign.
template <class T>
class ORMIX_GEOMETRY_API Sphere3d : public Entity3d<Sphere3d<T>, BaseTypedGeometryEntity3d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Sphere3d";  ///< registered name
  static constexpr eEntity3dType s_entity3dType = eE3DT_Sphere;        ///< family

  /// Radius 0 at the origin.
  Sphere3d() = default;
  /// Centre and radius as given, in the unit of the coordinates.
  /// @{
  Sphere3d(const Point3dData<T>& center, T radius) : _centerPt(center), _radius(radius) {}
  Sphere3d(T cx, T cy, T cz, T radius) : _centerPt(cx, cy, cz), _radius(radius) {}
  /// @}

  /// Replaces centre and radius, or one of them.
  /// @{
  void setCoords(const Point3dData<T>& center, T radius) {
    _centerPt = center;
    _radius = radius;
  }
  void setCoords(T cx, T cy, T cz, T radius) { setCoords({cx, cy, cz}, radius); }
  void setCenter(const Point3dData<T>& center) { _centerPt = center; }
  void setCenter(T x, T y, T z) { _centerPt.setCoords(x, y, z); }
  void setRadius(T radius) { _radius = radius; }
  /// @}

  /// The values as stored.
  /// @{
  const Point3dData<T>& center() const { return _centerPt; }
  T centerX() const { return _centerPt.getX(); }
  T centerY() const { return _centerPt.getY(); }
  T centerZ() const { return _centerPt.getZ(); }
  T getRadius() const { return _radius; }
  /// @}

  /// 4π·r², computed in omReal64.
  omReal64 area() const;
  /// 4/3·π·r³, computed in omReal64; negative for a negative radius.
  omReal64 volume() const;

  /// ‖p − center‖ − radius: negative inside, zero on the sphere. The norm is the distance() of the points, which wraps
  /// around for integers (intended).
  omReal64 signedDistance(const Point3dData<T>& point) const;
  /// The distance from the point to the surface, not to the ball: the absolute value of the signed distance.
  omReal64 distance(const Point3dData<T>& point) const;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_centerPt", self._centerPt) && item("_radius", self._radius);
  }

  Point3dData<T> _centerPt;
  T _radius{};
};

/// "[center=[1, 2, 3], radius=4]"
template <class T>
std::ostream& operator<<(std::ostream& stream, const Sphere3d<T>& sphere);

/// Whether the centres are at most the tolerance apart, see compare() of points, and the radii differ by no more.
template <class T>
bool compare(const Sphere3d<T>& a, const Sphere3d<T>& b, std::common_type_t<T> tolerance);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(extern, Sphere3d)
