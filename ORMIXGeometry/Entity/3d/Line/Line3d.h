#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>

ORMIX_GEOMETRY_ENTITY3D_LEVELS(extern, Line3d, BaseGeometryEntity3d)

namespace ormix::geom {

/// The infinite line { point + t·direction } of space, kept as its point nearest to the origin and a unit vector. The
/// opposite direction is the same set of points.
class ORMIX_GEOMETRY_API Line3d : public Entity3d<Line3d, BaseGeometryEntity3d> {
 public:
  static constexpr const char* s_className = "ormix::geom::Line3d";  ///< registered name
  static constexpr eEntity3dType s_entity3dType = eE3DT_Line;        ///< family

  /// The z axis.
  Line3d() = default;
  /// The line through a point, of which its own nearest to the origin is kept, in a direction.
  /// \throw ORMIXGeometryException, logged first, for a direction that is the zero vector or not finite
  /// @{
  Line3d(const Point3dData<omReal64>& point, const Point3dData<omReal64>& direction) { setCoords(point, direction); }
  void setCoords(const Point3dData<omReal64>& point, const Point3dData<omReal64>& direction);
  /// @}
  /// The line through two points, in the direction from the first to the second.
  /// \throw ORMIXGeometryException, logged first, where they are equal or their difference is not finite
  static Line3d through(const Point3dData<omReal64>& first, const Point3dData<omReal64>& second);

  /// The point nearest to the origin; not finite where the one that was given is not.
  const Point3dData<omReal64>& getNearestPointFromOrigin() const { return _point; }
  /// The unit vector.
  const Point3dData<omReal64>& getDirection() const { return _direction; }

  /// The point of the line that is nearest to a point.
  Point3dData<omReal64> nearestPoint(const Point3dData<omReal64>& point) const;
  /// The distance of a point from the line.
  omReal64 distance(const Point3dData<omReal64>& point) const;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_point", self._point) && item("_direction", self._direction);
  }
  static BoolResult validate(const Line3d& self);

  Point3dData<omReal64> _point;
  Point3dData<omReal64> _direction{0, 0, 1};
};

/// "[point=[1, 2, 0], direction=[0, 0, 1]]"
ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream& stream, const Line3d& line);

/// Whether the points nearest to the origin are at most `tolerance` apart, see compare() of points, and the directions
/// at most `angleTolerance`, in radians. A line and the same with the opposite direction count as different.
ORMIX_GEOMETRY_API bool compare(const Line3d& a, const Line3d& b, omReal64 tolerance, omReal64 angleTolerance);

}  // namespace ormix::geom
