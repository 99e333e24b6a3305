#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/CircularArc.h>

#include <cmath>

namespace ormix {

bool isFull(const CircularArc& arc) { return std::abs(arc.sweep) >= s_twoPi; }

PlanarPoint pointAt(const CircularArc& arc, omReal64 angle) {
  return {arc.center.x + arc.radius * std::cos(angle), arc.center.y + arc.radius * std::sin(angle)};
}

bool hasDirection(const CircularArc& arc, const PlanarPoint& direction) {
  if (isFull(arc)) return true;
  // The angle from the start, in the direction of the sweep.
  const omReal64 turn = std::remainder(std::atan2(direction.y, direction.x) - arc.start, s_twoPi);
  const omReal64 ahead = arc.sweep < 0 ? -turn : turn;
  return (ahead < 0 ? ahead + s_twoPi : ahead) <= std::abs(arc.sweep);
}

PlanarPoint nearestOn(const CircularArc& arc, const PlanarPoint& point) {
  const PlanarPoint away{point.x - arc.center.x, point.y - arc.center.y};
  const omReal64 length = std::hypot(away.x, away.y);
  const PlanarPoint start = pointAt(arc, arc.start);
  if (length == 0) return start;
  if (hasDirection(arc, away))
    return {arc.center.x + away.x / length * arc.radius, arc.center.y + away.y / length * arc.radius};
  const PlanarPoint end = pointAt(arc, arc.start + arc.sweep);
  const bool isStart = std::hypot(point.x - start.x, point.y - start.y) <= std::hypot(point.x - end.x, point.y - end.y);
  return isStart ? start : end;
}

}  // namespace ormix
