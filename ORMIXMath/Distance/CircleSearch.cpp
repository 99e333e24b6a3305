#include <ORMIXMath/Distance/CircleSearch.h>

namespace ormix::detail {

bool ConvexBody::isAround(const SpatialPoint& p, const SpatialPoint& axis) const {
  if (_frustum) return areSameLines(p, axis, _frustum->origin, _frustum->axis, reach());
  const std::array<omReal64, 3>& radii = _ellipsoid->radii;
  for (std::size_t k = 0; k < 3; ++k)
    if (radii[(k + 1) % 3] == radii[(k + 2) % 3] &&
        areSameLines(p, axis, _ellipsoid->center, _ellipsoid->axes[k], reach()))
      return true;
  return false;
}

SpatialNearestPair circleToConvex(const TurnedCircle& circle, const ConvexBody& body, bool isFilled, bool& isInside) {
  constexpr omReal64 relativeTolerance = 1e-12;
  const omReal64 tolerance = relativeTolerance * (circle.radius + body.reach());
  // Around the axis of the body nothing changes.
  const bool isAround = body.isAround(circle.center, circle.axis);
  // Angles of points inside and outside of the body.
  std::array<omReal64, 2> seen{};
  std::array<bool, 2> isSeen{};
  const auto look = [&](omReal64 angle, omReal64 half) -> CellValue {
    const SpatialPoint p = circle.at(angle);
    const omReal64 distance = body.signedDistance(p);
    const std::size_t side = distance <= 0 ? 0 : 1;
    isSeen[side] = true;
    seen[side] = angle;
    if (isFilled ? side == 0 : (isSeen[0] && isSeen[1]) || distance == 0) return {0, 0};
    // The body is below the plane at its nearest point; from inside, the distance is concave, too.
    const omReal64 value = std::abs(distance);
    if (isAround) return {value, value};
    const SpatialPoint q = body.nearestOnSurface(p), normal = (p - q) * (1 / distance);
    omReal64 bound = dot(normal, circle.center - q) + circle.leastAlong(normal, angle, half);
    bound = std::max(bound, value - 2 * circle.radius * std::sin(half / 2));
    if (side == 0 && half > 0) {
      omReal64 least = value;
      for (const SpatialPoint& corner : circle.corners(angle, half))
        least = std::min(least, -body.signedDistance(corner));
      bound = std::max(bound, least);
    }
    return {value, bound};
  };
  const LeastOfTurn found = leastOfTurn(look, tolerance, 0);
  const SpatialPoint p = circle.at(found.angle);
  if (isSeen[0] && isSeen[1] && !isFilled) {
    isInside = true;
    const auto isIn = [&](omReal64 angle) { return body.signedDistance(circle.at(angle)) <= 0; };
    return pairAt(circle.at(halved(seen[0], seen[1], isIn)));
  }
  isInside = isSeen[0];
  if (isFilled && isInside) return pairAt(circle.at(seen[0]));
  return {found.value, p, found.value > 0 ? body.nearestOnSurface(p) : p};
}

SpatialPoint pushedOut(const ConvexBody& body, const SpatialPoint& p) {
  const SpatialPoint middle = body.middle(), ray = p - middle;
  const omReal64 length = lengthOf(ray);
  if (!(length > 0) || !(body.signedDistance(middle) < 0)) return p;
  const auto at = [&](omReal64 t) { return middle + ray * t; };
  return at(halved(0, 2 * body.reach() / length, [&](omReal64 t) { return body.signedDistance(at(t)) <= 0; }));
}

}  // namespace ormix::detail
