#include <ORMIXMath/Distance/Orientation.h>
#include <ORMIXMath/Distance/Orientation3d.h>
#include <ORMIXMath/Location/RayCrossing.h>

#include <algorithm>

namespace ormix::detail {

namespace {

bool isBetween(omReal64 value, omReal64 a, omReal64 b, omReal64 c) {
  return std::min({a, b, c}) <= value && value <= std::max({a, b, c});
}

/// The side of the line from a to b on which the moved p lies, seen along x; 0 where a and b are the same there. On the
/// line the derivative of the determinant by y decides, and where that is 0 the one by z.
int sideOfEdge(const SpatialPoint& p, const SpatialPoint& a, const SpatialPoint& b) {
  if (const int side = orientation({a.y, a.z}, {b.y, b.z}, {p.y, p.z}); side != 0) return side;
  if (a.z != b.z) return a.z > b.z ? 1 : -1;
  if (a.y != b.y) return b.y > a.y ? 1 : -1;
  return 0;
}

}  // namespace

eRayCrossing rayCrossing(const SpatialPoint& p, const SpatialPoint& a, const SpatialPoint& b, const SpatialPoint& c) {
  if (!isBetween(p.y, a.y, b.y, c.y) || !isBetween(p.z, a.z, b.z, c.z)) return eRC_Misses;
  if (std::max({a.x, b.x, c.x}) < p.x) return eRC_Misses;
  const bool mayTouch = std::min({a.x, b.x, c.x}) <= p.x;
  const int plane = mayTouch ? orientation3d(a, b, c, p) : 0;
  if (mayTouch && plane == 0) return eRC_Touches;
  const int side = sideOfEdge(p, a, b);
  if (side == 0 || sideOfEdge(p, b, c) != side || sideOfEdge(p, c, a) != side) return eRC_Misses;
  if (!mayTouch) return eRC_Crosses;
  // Counter-clockwise as seen from where x is greater: the ray begins behind, which is below, or is past it.
  return plane == side ? eRC_Misses : eRC_Crosses;
}

}  // namespace ormix::detail
