#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/RoundSolid.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace ormix {

namespace {

using detail::cross;
using detail::dot;
using detail::operator+;
using detail::operator-;
using detail::operator*;
using detail::operator/;

omReal64 norm(const SpatialPoint& p) { return std::hypot(p.x, p.y, p.z); }

/// The part of a vector across an axis, and its direction, which is at right angles to the axis; any such direction
/// where the part is what rounding leaves of none.
struct PartAcross {
  omReal64 length;
  SpatialPoint direction;
};
PartAcross partAcross(const SpatialPoint& v, omReal64 along, const SpatialPoint& axis) {
  SpatialPoint across = v - axis * along;
  // Once more, as the first time leaves a part along the axis that may not be small beside what is across.
  across = across - axis * dot(across, axis);
  const omReal64 length = norm(across);
  constexpr omReal64 rounding = 4 * std::numeric_limits<omReal64>::epsilon();
  if (length <= rounding * std::abs(along)) return {0, directionAcross(axis)};
  return {length, length > 0 ? across / length : directionAcross(axis)};
}

/// A point by its distance from the axis and its height, and the unit vector from the axis to it; any across the axis
/// for a point on that.
struct AxialPoint {
  omReal64 rho;
  omReal64 z;
  SpatialPoint outward;
};

AxialPoint toAxial(const RoundSolid& solid, const SpatialPoint& point) {
  const SpatialPoint v = point - solid.origin;
  const omReal64 z = dot(v, solid.axis);
  const PartAcross part = partAcross(v, z, solid.axis);
  return {part.length, z, part.direction};
}

SpatialPoint fromAxial(const RoundSolid& solid, const SpatialPoint& outward, const PlanarPoint& place) {
  return solid.origin + solid.axis * place.y + outward * place.x;
}

omReal64 distanceOf(const PlanarPoint& p, const PlanarPoint& q) { return std::hypot(p.x - q.x, p.y - q.y); }

/// Of the outline in the half-plane: the nearest point, its place along the outline, its distance, and whether p is
/// inside or on it.
struct NearestOnOutline {
  PlanarPoint place;
  omReal64 at;
  omReal64 distance;
  bool isInside;
};

/// A point of the outline: of a frustum from 0 to 3, a unit a side, of a torus at an angle about the tube's middle.
PlanarPoint outlineAt(const RoundSolid& solid, omReal64 at) {
  const omReal64 r0 = solid.radius0, r1 = solid.radius1;
  if (solid.kind == eRS_Torus) return {r0 + r1 * std::cos(at), r1 * std::sin(at)};
  if (at <= 1) return {r0 * at, 0};
  if (at >= 2) return {r1 * (3 - at), solid.height};
  return {r0 + (r1 - r0) * (at - 1), solid.height * (at - 1)};
}

/// The nearest point of a side of a frustum, from one corner of the outline to the next.
NearestOnOutline nearestOnSide(const PlanarPoint& from, const PlanarPoint& to, omReal64 first, const PlanarPoint& p) {
  const PlanarPoint along{to.x - from.x, to.y - from.y};
  const omReal64 length = std::hypot(along.x, along.y);
  NearestOnOutline nearest{from, first, 0, false};
  if (length > 0) {
    const PlanarPoint unit{along.x / length, along.y / length};
    const omReal64 at = std::clamp((p.x - from.x) * unit.x + (p.y - from.y) * unit.y, 0.0, length);
    nearest.place = at == length ? to : PlanarPoint{from.x + unit.x * at, from.y + unit.y * at};
    nearest.at = first + at / length;
  }
  nearest.distance = distanceOf(nearest.place, p);
  return nearest;
}

NearestOnOutline nearestOnFrustum(const RoundSolid& solid, const PlanarPoint& p) {
  const PlanarPoint rim0{solid.radius0, 0}, rim1{solid.radius1, solid.height};
  NearestOnOutline best = nearestOnSide(rim0, rim1, 1, p);
  for (const NearestOnOutline& onDisc :
       {nearestOnSide({0, 0}, rim0, 0, p), nearestOnSide(rim1, {0, solid.height}, 2, p)})
    if (onDisc.distance < best.distance) best = onDisc;
  const omReal64 share = solid.height > 0 ? p.y / solid.height : solid.radius1 > solid.radius0;
  best.isInside = p.y >= 0 && p.y <= solid.height && p.x <= solid.radius0 + (solid.radius1 - solid.radius0) * share;
  return best;
}

NearestOnOutline nearestOnTorus(const RoundSolid& solid, const PlanarPoint& p) {
  const omReal64 x = p.x - solid.radius0;
  const omReal64 length = std::hypot(x, p.y);
  const PlanarPoint unit = length > 0 ? PlanarPoint{x / length, p.y / length} : PlanarPoint{1, 0};
  const PlanarPoint place{solid.radius0 + solid.radius1 * unit.x, solid.radius1 * unit.y};
  if (place.x >= 0)
    return {place, std::atan2(unit.y, unit.x), std::abs(length - solid.radius1), length <= solid.radius1};
  // The circle of the tube is cut off at the axis; the distance along it grows towards both ends.
  const omReal64 z = std::sqrt((solid.radius1 - solid.radius0) * (solid.radius1 + solid.radius0));
  const PlanarPoint tip{0, std::copysign(z, p.y)};
  return {tip, std::atan2(tip.y, -solid.radius0), distanceOf(tip, p), true};
}

NearestOnOutline nearestOnOutline(const RoundSolid& solid, const AxialPoint& p) {
  return solid.kind == eRS_Frustum ? nearestOnFrustum(solid, {p.rho, p.z}) : nearestOnTorus(solid, {p.rho, p.z});
}

/// The place along the outline, on the other side of the axis, that is farthest from a point.
omReal64 farthestAt(const RoundSolid& solid, const AxialPoint& p) {
  if (solid.kind == eRS_Torus) return std::atan2(-p.z, p.rho + solid.radius0);
  const PlanarPoint from{-p.rho, p.z};
  return distanceOf(from, outlineAt(solid, 1)) >= distanceOf(from, outlineAt(solid, 2)) ? 1 : 2;
}

/// Half of the angle about the tube's middle that its surface has in the half-plane: π but where it meets the axis.
omReal64 halfAngle(const RoundSolid& torus) {
  return torus.radius1 > torus.radius0 ? std::acos(-torus.radius0 / torus.radius1) : s_pi;
}

/// The direction across the axis nearest to a direction, and the sine of its angle to the axis.
struct Across {
  SpatialPoint outward;
  omReal64 sine;
  omReal64 cosine;
};
Across acrossOf(const RoundSolid& solid, const SpatialPoint& direction) {
  const omReal64 cosine = dot(direction, solid.axis);
  const PartAcross part = partAcross(direction, cosine, solid.axis);
  return {part.direction, part.length, cosine};
}

/// A cosine from a quotient of which both may be 0.
omReal64 cosineOf(omReal64 numerator, omReal64 denominator) {
  return denominator > 0 ? std::clamp(numerator / denominator, -1.0, 1.0) : 0;
}

/// The point of a circle around the axis whose height over the plane is nearest to 0.
SpatialPoint onRim(const RoundSolid& solid, const Across& up, omReal64 z, omReal64 radius, omReal64 level) {
  const omReal64 cosine = cosineOf(-level, radius * up.sine);
  const SpatialPoint side = cross(solid.axis, up.outward);
  return fromAxial(solid, up.outward * cosine + side * std::sqrt(1 - cosine * cosine), {radius, z});
}

/// Along the rim of the lower disc, up the side that is highest, and along the rim of the upper one.
SpatialPoint frustumOnPlane(const RoundSolid& solid, const Across& up, omReal64 level0) {
  const omReal64 level1 = level0 + solid.height * up.cosine;
  const omReal64 reach0 = up.sine * solid.radius0, reach1 = up.sine * solid.radius1;
  if (std::abs(level0) <= reach0) return onRim(solid, up, 0, solid.radius0, level0);
  if (std::abs(level1) <= reach1) return onRim(solid, up, solid.height, solid.radius1, level1);
  // Between the rims, on the side where both are highest.
  const omReal64 top0 = level0 + reach0, top1 = level1 + reach1;
  const omReal64 share = top0 == top1 ? 0 : std::clamp(top0 / (top0 - top1), 0.0, 1.0);
  return fromAxial(solid, up.outward, {solid.radius0 + (solid.radius1 - solid.radius0) * share, solid.height * share});
}

/// On the circle of the tube around that point of its middle which is nearest to the plane.
SpatialPoint torusOnPlane(const RoundSolid& solid, const Across& up, const SpatialPoint& n, omReal64 level) {
  const omReal64 reach = solid.radius0 * up.sine;
  const omReal64 cosine = reach > 0 ? cosineOf(-level, reach) : 1;
  const SpatialPoint side = cross(solid.axis, up.outward);
  const SpatialPoint outward = up.outward * cosine + side * std::sqrt(1 - cosine * cosine);
  const omReal64 rest = level + reach * cosine;
  // The plane's normal in the half-plane of that circle.
  const omReal64 nx = dot(n, outward), nz = up.cosine;
  const omReal64 length = std::hypot(nx, nz);
  if (length == 0) return fromAxial(solid, outward, {solid.radius0 + solid.radius1, 0});
  const omReal64 down = cosineOf(-rest, solid.radius1 * length);
  const omReal64 across = std::sqrt(1 - down * down);
  // Of both points of the circle the outer one.
  const omReal64 sign = nz > 0 ? 1 : -1;
  const PlanarPoint unit{nx / length, nz / length};
  return fromAxial(solid, outward,
                   {solid.radius0 + solid.radius1 * (unit.x * down + sign * unit.y * across),
                    solid.radius1 * (unit.y * down - sign * unit.x * across)});
}

}  // namespace

SpatialPoint unitVector(const SpatialPoint& vector) {
  const omReal64 square = dot(vector, vector);
  if (std::abs(square - 1) <= 8 * std::numeric_limits<omReal64>::epsilon()) return vector;
  int exponent = 0;
  std::frexp(std::max({std::abs(vector.x), std::abs(vector.y), std::abs(vector.z)}), &exponent);
  const SpatialPoint v{std::ldexp(vector.x, -exponent), std::ldexp(vector.y, -exponent),
                       std::ldexp(vector.z, -exponent)};
  return v / std::sqrt(dot(v, v));
}

SpatialPoint directionAcross(const SpatialPoint& direction) {
  const SpatialPoint least = std::abs(direction.x) < 0.7 ? SpatialPoint{1, 0, 0} : SpatialPoint{0, 1, 0};
  return unitVector(cross(cross(direction, least), direction));
}

RoundSolid frustumBetween(const SpatialPoint& p0, const SpatialPoint& p1, omReal64 radius0, omReal64 radius1) {
  const SpatialPoint along = p1 - p0;
  const omReal64 height = norm(along);
  return {eRS_Frustum,      p0, height == 0 ? SpatialPoint{0, 0, 1} : unitVector(along), height, std::abs(radius0),
          std::abs(radius1)};
}

RoundSolid torusAround(const SpatialPoint& center, const SpatialPoint& axis, omReal64 majorRadius,
                       omReal64 minorRadius) {
  return {eRS_Torus, center, axis, 0, std::abs(majorRadius), std::abs(minorRadius)};
}

omReal64 area(const RoundSolid& solid) {
  const omReal64 r0 = solid.radius0, r1 = solid.radius1;
  if (solid.kind == eRS_Frustum) return s_pi * (r0 * r0 + r1 * r1 + (r0 + r1) * std::hypot(solid.height, r0 - r1));
  const omReal64 t = halfAngle(solid);
  return t == s_pi ? 4 * s_pi * s_pi * r0 * r1 : 4 * s_pi * r1 * (r0 * t + r1 * std::sin(t));
}

omReal64 volume(const RoundSolid& solid) {
  const omReal64 r0 = solid.radius0, r1 = solid.radius1;
  if (solid.kind == eRS_Frustum) return s_pi * solid.height * (r0 * r0 + r0 * r1 + r1 * r1) / 3;
  const omReal64 t = halfAngle(solid);
  if (t == s_pi) return 2 * s_pi * s_pi * r0 * r1 * r1;
  const omReal64 s = std::sin(t);
  return 2 * s_pi * r1 * r1 * (r0 * (t - s * std::cos(t)) + 2 * r1 * s * s * s / 3);
}

SpatialPoint centroid(const RoundSolid& solid) {
  if (solid.kind == eRS_Torus) return solid.origin;
  // By the ratio of the radii, so that no power overflows.
  const omReal64 largest = std::max(solid.radius0, solid.radius1);
  const omReal64 a = largest > 0 ? solid.radius0 / largest : 1, b = largest > 0 ? solid.radius1 / largest : 1;
  const omReal64 share = (a * a + 2 * a * b + 3 * b * b) / (4 * (a * a + a * b + b * b));
  return solid.origin + solid.axis * (solid.height * share);
}

omReal64 signedDistance(const RoundSolid& solid, const SpatialPoint& point) {
  const NearestOnOutline nearest = nearestOnOutline(solid, toAxial(solid, point));
  return nearest.isInside ? -nearest.distance : nearest.distance;
}

SpatialPoint nearestOn(const RoundSolid& solid, const SpatialPoint& point, bool isFilled) {
  const AxialPoint p = toAxial(solid, point);
  const NearestOnOutline nearest = nearestOnOutline(solid, p);
  return isFilled && nearest.isInside ? point : fromAxial(solid, p.outward, nearest.place);
}

SpatialPoint farthestOn(const RoundSolid& solid, const SpatialPoint& point) {
  const AxialPoint p = toAxial(solid, point);
  return fromAxial(solid, p.outward * -1, outlineAt(solid, farthestAt(solid, p)));
}

SpatialPoint pointAtDistance(const RoundSolid& solid, const SpatialPoint& point, omReal64 distance) {
  const AxialPoint p = toAxial(solid, point);
  const NearestOnOutline nearest = nearestOnOutline(solid, p);
  // Around the axis first, and then along the outline on the other side of it.
  const PlanarPoint opposite{-p.rho, p.z};
  if (distanceOf(opposite, nearest.place) >= distance) {
    const omReal64 across = (p.z - nearest.place.y) * (p.z - nearest.place.y), x = nearest.place.x;
    const omReal64 cosine = std::clamp(
        p.rho * x > 0 ? (p.rho * p.rho + x * x + across - distance * distance) / (2 * p.rho * x) : 1, -1.0, 1.0);
    const SpatialPoint side = cross(solid.axis, p.outward);
    return fromAxial(solid, p.outward * cosine + side * std::sqrt(1 - cosine * cosine), nearest.place);
  }
  omReal64 near = nearest.at, far = farthestAt(solid, p);
  constexpr int nbHalvings = 60;
  for (int i = 0; i < nbHalvings; ++i) {
    const omReal64 middle = near / 2 + far / 2;
    (distanceOf(opposite, outlineAt(solid, middle)) < distance ? near : far) = middle;
  }
  return fromAxial(solid, p.outward * -1, outlineAt(solid, near));
}

SpatialPoint supportPoint(const RoundSolid& solid, const SpatialPoint& direction) {
  const Across up = acrossOf(solid, direction);
  if (solid.kind == eRS_Torus)
    return fromAxial(solid, up.outward, {solid.radius0 + solid.radius1 * up.sine, solid.radius1 * up.cosine});
  const bool isFirst = up.sine * solid.radius0 >= up.cosine * solid.height + up.sine * solid.radius1;
  return fromAxial(solid, up.outward,
                   isFirst ? PlanarPoint{solid.radius0, 0} : PlanarPoint{solid.radius1, solid.height});
}

SpatialPoint pointOnPlane(const RoundSolid& solid, const SpatialPoint& n, omReal64 rho) {
  const Across up = acrossOf(solid, n);
  const omReal64 level = dot(n, solid.origin) - rho;
  return solid.kind == eRS_Frustum ? frustumOnPlane(solid, up, level) : torusOnPlane(solid, up, n, level);
}

void enclosingBall(const RoundSolid& solid, SpatialPoint& center, omReal64& radius) {
  center = solid.origin;
  if (solid.kind == eRS_Torus) {
    radius = solid.radius0 + solid.radius1;
    return;
  }
  const omReal64 r0 = solid.radius0, r1 = solid.radius1, h = solid.height;
  // Through both rims, but where the rim of the larger disc alone determines the ball.
  const omReal64 z = h > 0 ? std::clamp(h / 2 + (r1 - r0) * ((r1 + r0) / h) / 2, 0.0, h) : 0;
  center = solid.origin + solid.axis * z;
  radius = std::max(std::hypot(z, r0), std::hypot(h - z, r1));
}

}  // namespace ormix
