#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>

namespace ormix::geom {

/// The solid cylinder between two discs with the same radius, across the line through their centres p0 and p1. Equal
/// centres make it a disc, parallel to the x-y plane; radius 0 makes it a segment. Everything is computed in omReal64,
/// and the sign of the radius, which is stored as given, is ignored.
template <class T>
class ORMIX_GEOMETRY_API Cylinder3d : public Entity3d<Cylinder3d<T>, BaseTypedGeometryEntity3d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Cylinder3d";  ///< registered name
  static constexpr eEntity3dType s_entity3dType = eE3DT_Cylinder;        ///< family

  /// Radius 0, both centres at the origin.
  Cylinder3d() = default;
  /// Centres of the discs and radius as given, in the unit of the coordinates.
  /// @{
  Cylinder3d(const Point3dData<T>& pt0, const Point3dData<T>& pt1, T radius) : _pt0(pt0), _pt1(pt1), _radius(radius) {}
  void setCoords(const Point3dData<T>& pt0, const Point3dData<T>& pt1, T radius) {
    _pt0 = pt0;
    _pt1 = pt1;
    _radius = radius;
  }
  /// @}

  /// One of the values, as stored.
  /// @{
  void setPoint0(const Point3dData<T>& point) { _pt0 = point; }
  void setPoint1(const Point3dData<T>& point) { _pt1 = point; }
  void setRadius(T radius) { _radius = radius; }
  const Point3dData<T>& getPoint0() const { return _pt0; }
  const Point3dData<T>& getPoint1() const { return _pt1; }
  T getRadius() const { return _radius; }
  /// @}

  /// The distance of the centres.
  omReal64 getHeight() const;
  /// The unit vector from p0 to p1; (0, 0, 1) where they are equal.
  Point3dData<omReal64> getAxis() const;

  /// 2π·r·(r + h), both discs included.
  omReal64 area() const;
  /// π·r²·h
  omReal64 volume() const;

  /// The distance from the surface, discs included: negative inside, 0 on it.
  omReal64 signedDistance(const Point3dData<omReal64>& point) const;
  /// Its absolute value.
  omReal64 distance(const Point3dData<omReal64>& point) const;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_pt0", self._pt0) && item("_pt1", self._pt1) && item("_radius", self._radius);
  }

  Point3dData<T> _pt0;
  Point3dData<T> _pt1;
  T _radius{};
};

/// "[p0=[1, 2, 3], p1=[7, 5, 6], radius=4]"
template <class T>
std::ostream& operator<<(std::ostream& stream, const Cylinder3d<T>& cylinder);

/// Whether the centres of each end are at most the tolerance apart, see compare() of points, and the radii differ by no
/// more. A cylinder and the same with its ends exchanged count as different.
template <class T>
bool compare(const Cylinder3d<T>& a, const Cylinder3d<T>& b, std::common_type_t<T> tolerance);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(extern, Cylinder3d)
