#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Fitting/SpatialShapes.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Scalar/EuclideanNorm.h>

#include <algorithm>
#include <cmath>

namespace ormix {

namespace {

using detail::cross;
using detail::dot;
using detail::operator-;

/// A point in the half plane from an axis: its distance from the axis, and its height along it.
struct Meridian {
  omReal64 radius;
  omReal64 height;
};

Meridian meridian(const SpatialPoint& origin, const SpatialPoint& axis, const SpatialPoint& point) {
  const SpatialPoint offset = point - origin;
  const SpatialPoint across = cross(axis, offset);
  return {euclideanNorm(across.x, across.y, across.z), dot(offset, axis)};
}

}  // namespace

omReal64 distanceTo(const SpatialLine& line, const SpatialPoint& point) {
  return meridian(line.point, line.direction, point).radius;
}

omReal64 distanceTo(const SpatialCircle& circle, const SpatialPoint& point) {
  const Meridian place = meridian(circle.center, circle.normal, point);
  return euclideanNorm(place.radius - circle.radius, place.height);
}

omReal64 distanceTo(const PlanarArc& arc, const PlanarPoint& point) {
  const omReal64 x = point.x - arc.center.x;
  const omReal64 y = point.y - arc.center.y;
  omReal64 turn = std::atan2(y, x) - arc.startAngle;
  if (turn < 0) turn += 2 * s_pi;
  if (turn <= arc.sweep) return std::abs(euclideanNorm(x, y) - arc.radius);
  const auto toEnd = [&](omReal64 angle) {
    return euclideanNorm(x - arc.radius * std::cos(angle), y - arc.radius * std::sin(angle));
  };
  return std::min(toEnd(arc.startAngle), toEnd(arc.startAngle + arc.sweep));
}

omReal64 distanceTo(const SpatialSphere& sphere, const SpatialPoint& point) {
  const SpatialPoint offset = point - sphere.center;
  return euclideanNorm(offset.x, offset.y, offset.z) - sphere.radius;
}

omReal64 distanceTo(const SpatialCylinder& cylinder, const SpatialPoint& point) {
  return meridian(cylinder.point, cylinder.direction, point).radius - cylinder.radius;
}

omReal64 distanceTo(const SpatialCone& cone, const SpatialPoint& point) {
  const Meridian place = meridian(cone.apex, cone.direction, point);
  const omReal64 cosine = std::cos(cone.halfAngle);
  const omReal64 sine = std::sin(cone.halfAngle);
  const bool isBehindApex = place.height * cosine + place.radius * sine < 0;
  return isBehindApex ? euclideanNorm(place.radius, place.height) : place.radius * cosine - place.height * sine;
}

omReal64 distanceTo(const SpatialTorus& torus, const SpatialPoint& point) {
  const Meridian place = meridian(torus.center, torus.axis, point);
  return euclideanNorm(place.radius - torus.majorRadius, place.height) - torus.minorRadius;
}

}  // namespace ormix
