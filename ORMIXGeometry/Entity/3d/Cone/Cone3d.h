#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>

namespace ormix::geom {

/// The solid cone, or frustum of one, between two discs across the line through their centres p0 and p1. Radius 0 is an
/// apex, equal radii make a cylinder. Equal centres make it the larger disc, parallel to the x-y plane. Everything is
/// computed in omReal64, and the signs of the radii, which are stored as given, are ignored.
template <class T>
class ORMIX_GEOMETRY_API Cone3d : public Entity3d<Cone3d<T>, BaseTypedGeometryEntity3d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Cone3d";  ///< registered name
  static constexpr eEntity3dType s_entity3dType = eE3DT_Cone;        ///< family

  /// Radii 0, both centres at the origin.
  Cone3d() = default;
  /// Centres of the discs and their radii as given, in the unit of the coordinates.
  /// @{
  Cone3d(const Point3dData<T>& pt0, const Point3dData<T>& pt1, T radius0, T radius1)
      : _pt0(pt0), _pt1(pt1), _radius0(radius0), _radius1(radius1) {}
  void setCoords(const Point3dData<T>& pt0, const Point3dData<T>& pt1, T radius0, T radius1) {
    _pt0 = pt0;
    _pt1 = pt1;
    _radius0 = radius0;
    _radius1 = radius1;
  }
  /// @}

  /// One of the values, as stored.
  /// @{
  void setPoint0(const Point3dData<T>& point) { _pt0 = point; }
  void setPoint1(const Point3dData<T>& point) { _pt1 = point; }
  void setRadius0(T radius) { _radius0 = radius; }
  void setRadius1(T radius) { _radius1 = radius; }
  const Point3dData<T>& getPoint0() const { return _pt0; }
  const Point3dData<T>& getPoint1() const { return _pt1; }
  T getRadius0() const { return _radius0; }
  T getRadius1() const { return _radius1; }
  /// @}

  /// The distance of the centres.
  omReal64 getHeight() const;
  /// The unit vector from p0 to p1; (0, 0, 1) where they are equal.
  Point3dData<omReal64> getAxis() const;
  /// The angle between the axis and the side, in radians in [0, π/2].
  omReal64 getHalfAngle() const;

  /// π·(r0² + r1² + (r0 + r1)·s) with the length s of the side; both discs included.
  omReal64 area() const;
  /// π·h·(r0² + r0·r1 + r1²) / 3
  omReal64 volume() const;

  /// The distance from the surface, discs included: negative inside, 0 on it.
  omReal64 signedDistance(const Point3dData<omReal64>& point) const;
  /// Its absolute value.
  omReal64 distance(const Point3dData<omReal64>& point) const;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_pt0", self._pt0) && item("_pt1", self._pt1) && item("_radius0", self._radius0) &&
           item("_radius1", self._radius1);
  }

  Point3dData<T> _pt0;
  Point3dData<T> _pt1;
  T _radius0{};
  T _radius1{};
};

/// "[p0=[1, 2, 3], p1=[7, 5, 6], radius0=4, radius1=2]"
template <class T>
std::ostream& operator<<(std::ostream& stream, const Cone3d<T>& cone);

/// Whether the centres of each end are at most the tolerance apart, see compare() of points, and its radii differ by no
/// more. A cone and the same with its ends exchanged count as different.
template <class T>
bool compare(const Cone3d<T>& a, const Cone3d<T>& b, std::common_type_t<T> tolerance);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(extern, Cone3d)
