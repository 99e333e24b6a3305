#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>
#include <ORMIXGeometry/Entity/3d/Vector/Vector3d.h>

#include <type_traits>

namespace ormix::geom {

/// The closed segment { p0 + t (p1 − p0) : 0 <= t <= 1 }, a single point when both ends are equal. Only the length is
/// computed in the coordinate type, everything else in omReal64.
template <class T>
class ORMIX_GEOMETRY_API Segment3d : public Entity3d<Segment3d<T>, BaseTypedGeometryEntity3d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Segment3d";  ///< registered name
  static constexpr eEntity3dType s_entity3dType = eE3DT_Segment;        ///< family

  /// Both ends at the origin.
  Segment3d() = default;
  /// Both ends as given.
  /// @{
  Segment3d(const Point3dData<T>& pt0, const Point3dData<T>& pt1) : _pt0(pt0), _pt1(pt1) {}
  Segment3d(T x0, T y0, T z0, T x1, T y1, T z1) : _pt0(x0, y0, z0), _pt1(x1, y1, z1) {}
  /// @}
  /// As `setCoords(pt0, vector)`.
  template <class Vector, class = std::enable_if_t<std::is_same_v<Vector, Vector3d>>>
  Segment3d(const Point3dData<T>& pt0, const Vector& vector) {
    setCoords(pt0, vector);
  }

  /// Replaces both ends.
  /// @{
  void setCoords(const Point3dData<T>& pt0, const Point3dData<T>& pt1) {
    _pt0 = pt0;
    _pt1 = pt1;
  }
  void setCoords(T x0, T y0, T z0, T x1, T y1, T z1) {
    _pt0.setCoords(x0, y0, z0);
    _pt1.setCoords(x1, y1, z1);
  }
  /// @}
  /// The second end is the first one plus the vector, whose components are rounded first for integer coordinates, see
  /// Point3dData. A template, so that coordinates in braces are a point and not a vector.
  template <class Vector, class = std::enable_if_t<std::is_same_v<Vector, Vector3d>>>
  void setCoords(const Point3dData<T>& pt0, const Vector& vector) {
    setCoords(pt0, pt0 + vector);
  }
  /// One end: p0 or p1.
  /// @{
  void setPoint0(const Point3dData<T>& point) { _pt0 = point; }
  void setPoint1(const Point3dData<T>& point) { _pt1 = point; }
  const Point3dData<T>& getPoint0() const { return _pt0; }
  const Point3dData<T>& getPoint1() const { return _pt1; }
  /// @}

  /// The distance() of the ends: integer differences and squares wrap around (intended).
  omReal64 getLength() const;

  /// The midpoint in omReal64: neither rounded to the coordinate type nor subject to overflow, whatever the ends are.
  /// @{
  omReal64 getMiddleX() const { return omReal64(_pt0.getX()) / 2 + omReal64(_pt1.getX()) / 2; }
  omReal64 getMiddleY() const { return omReal64(_pt0.getY()) / 2 + omReal64(_pt1.getY()) / 2; }
  omReal64 getMiddleZ() const { return omReal64(_pt0.getZ()) / 2 + omReal64(_pt1.getZ()) / 2; }
  Point3dData<omReal64> getMiddlePoint() const { return {getMiddleX(), getMiddleY(), getMiddleZ()}; }
  /// @}

  /// The vector from p0 to p1, the zero vector for equal ends. A segment in the direction −z gives a vector in the
  /// direction +z, see Vector3d::setCoords() (intended).
  Vector3d getDirection() const;
  /// The unit vector of that direction; (0, 0, 1) for equal ends.
  Vector3d getUnitDirection() const;

  /// The distance to a point or a segment, see pointSegmentDistance() and segmentsDistance(): zero exactly when there
  /// is a common point, NaN when a coordinate is not finite. Computed in omReal64, so that integers do not wrap around.
  /// `nearest`, `nearestOnThis` and `nearestOnOther` are set to points of the segments at that distance.
  /// @{
  omReal64 distance(const Point3dData<T>& point) const;
  omReal64 distance(const Point3dData<T>& point, Point3dData<omReal64>& nearest) const;
  omReal64 distance(const Segment3d& other) const;
  omReal64 distance(const Segment3d& other, Point3dData<omReal64>& nearestOnThis,
                    Point3dData<omReal64>& nearestOnOther) const;
  /// @}

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_pt0", self._pt0) && item("_pt1", self._pt1);
  }

  Point3dData<T> _pt0;
  Point3dData<T> _pt1;
};

/// "[p0=[0, 0, 0], p1=[3, 4, 5]]"
template <class T>
std::ostream& operator<<(std::ostream& stream, const Segment3d<T>& segment);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(extern, Segment3d)
