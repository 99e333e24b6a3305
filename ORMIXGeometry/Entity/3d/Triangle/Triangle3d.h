#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>
#include <ORMIXGeometry/Entity/3d/Vector/Vector3d.h>

namespace ormix::geom {

/// The triangle of three vertices, which are counter-clockwise as seen from the side to which its normal points. A
/// degenerate triangle, with collinear or equal vertices, has the zero vector as its normal and the area 0. Computed in
/// omReal64, so that integers do not wrap around; only the perimeter uses the distance() of points.
template <class T>
class ORMIX_GEOMETRY_API Triangle3d : public Entity3d<Triangle3d<T>, BaseTypedGeometryEntity3d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Triangle3d";  ///< registered name
  static constexpr eEntity3dType s_entity3dType = eE3DT_Triangle;        ///< family

  /// All vertices at the origin.
  Triangle3d() = default;
  /// The vertices as given.
  Triangle3d(const Point3dData<T>& pt0, const Point3dData<T>& pt1, const Point3dData<T>& pt2)
      : _pt0(pt0), _pt1(pt1), _pt2(pt2) {}

  /// Replaces all vertices or one.
  /// @{
  void setCoords(const Point3dData<T>& pt0, const Point3dData<T>& pt1, const Point3dData<T>& pt2) {
    _pt0 = pt0;
    _pt1 = pt1;
    _pt2 = pt2;
  }
  void setPoint0(const Point3dData<T>& point) { _pt0 = point; }
  void setPoint1(const Point3dData<T>& point) { _pt1 = point; }
  void setPoint2(const Point3dData<T>& point) { _pt2 = point; }
  /// @}

  /// A vertex as stored.
  /// @{
  const Point3dData<T>& getPoint0() const { return _pt0; }
  const Point3dData<T>& getPoint1() const { return _pt1; }
  const Point3dData<T>& getPoint2() const { return _pt2; }
  /// @}

  /// The normal (pt1 − pt0) × (pt2 − pt0), whose length is twice the area, and that normal scaled to length 1, which is
  /// the zero vector for a degenerate triangle. As a `Vector3d`, a normal in the direction −z has a negative rho, since
  /// no angles of a `Vector3d` give that direction.
  /// @{
  Vector3d getNormal() const;
  void getNormal(omReal64& nx, omReal64& ny, omReal64& nz) const;
  Vector3d getUnitNormal() const;
  void getUnitNormal(omReal64& nx, omReal64& ny, omReal64& nz) const;
  /// @}

  /// The mean of the vertices, not rounded to the coordinate type.
  Point3dData<omReal64> getBarycenter() const;
  /// The sum of the lengths of the edges, each the distance() of two vertices: integer differences and squares wrap
  /// around (intended).
  omReal64 perimeter() const;
  /// Half the length of the normal.
  omReal64 area() const;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_pt0", self._pt0) && item("_pt1", self._pt1) && item("_pt2", self._pt2);
  }

  Point3dData<T> _pt0;
  Point3dData<T> _pt1;
  Point3dData<T> _pt2;
};

/// "[pt0=[0, 0, 0], pt1=[1, 0, 0], pt2=[0, 1, 0]]"
template <class T>
std::ostream& operator<<(std::ostream& stream, const Triangle3d<T>& triangle);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(extern, Triangle3d)
