#include <ORMIXGeometry/Entity/3d/Line/Line3d.h>
#include <ORMIXGeometry/Entity/3d/UnitDirection.h>
#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXUtil/NumericLimits.h>
#include <ORMIXGeometry/Entity/3d/Entity3d.ipp>

#include <cmath>
#include <ostream>

namespace ormix::geom {

using ormix::detail::dot;
using ormix::detail::operator+;
using ormix::detail::operator-;
using ormix::detail::operator*;
using detail::toData;
using detail::toSpatial;

namespace {

/// The part across a unit vector. Twice, as the first time leaves a part along it of the size of the rounding of `v`.
SpatialPoint across(const SpatialPoint& v, const SpatialPoint& unit) {
  const SpatialPoint once = v - unit * dot(v, unit);
  return once - unit * dot(once, unit);
}

}  // namespace

void Line3d::setCoords(const Point3dData<omReal64>& point, const Point3dData<omReal64>& direction) {
  _direction = detail::unitDirection(direction);
  const SpatialPoint p = toSpatial(point), unit = toSpatial(_direction);
  // What is one already stays to the bit, so that a line is made again from what it tells.
  constexpr omReal64 rounding = 8 * NumericLimits<omReal64>::s_eps;
  const bool isNearest = std::abs(dot(p, unit)) <= rounding * std::hypot(p.x, p.y, p.z);
  _point = isNearest ? point : toData(across(p, unit));
}

Line3d Line3d::through(const Point3dData<omReal64>& first, const Point3dData<omReal64>& second) {
  return {first, toData(toSpatial(second) - toSpatial(first))};
}

Point3dData<omReal64> Line3d::nearestPoint(const Point3dData<omReal64>& point) const {
  const SpatialPoint from = toSpatial(_point), unit = toSpatial(_direction);
  return toData(from + unit * dot(toSpatial(point) - from, unit));
}

omReal64 Line3d::distance(const Point3dData<omReal64>& point) const {
  const SpatialPoint away = across(toSpatial(point) - toSpatial(_point), toSpatial(_direction));
  return std::hypot(away.x, away.y, away.z);
}

BoolResult Line3d::validate(const Line3d& self) {
  if (!detail::isUnitDirection(self._direction)) return failure("_direction is not a unit vector");
  const SpatialPoint point = toSpatial(self._point);
  constexpr omReal64 tolerance = 1e-9;
  const bool isBeside =
      std::abs(dot(point, toSpatial(self._direction))) > tolerance * std::hypot(point.x, point.y, point.z);
  return isBeside ? failure("_point is not the point nearest to the origin") : BoolResult();
}

std::ostream& operator<<(std::ostream& stream, const Line3d& line) {
  return stream << "[point=" << line.getNearestPointFromOrigin() << ", direction=" << line.getDirection() << ']';
}

bool compare(const Line3d& a, const Line3d& b, omReal64 tolerance, omReal64 angleTolerance) {
  return compare(a.getNearestPointFromOrigin(), b.getNearestPointFromOrigin(), tolerance) &&
         detail::areDirectionsNear(a.getDirection(), b.getDirection(), angleTolerance);
}

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_LEVELS(, Line3d, BaseGeometryEntity3d)
