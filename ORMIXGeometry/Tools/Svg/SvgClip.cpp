#include <ORMIXGeometry/Tools/Svg/SvgClip.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace ormix::geom::detail {

namespace {

/// Appends the real roots of a·t² + b·t + c. The root of smaller magnitude is computed from the product of both, which
/// avoids cancellation.
void appendRoots(omReal64 a, omReal64 b, omReal64 c, std::vector<omReal64>& roots) {
  const omReal64 discriminant = b * b - 4 * a * c;
  if (!(discriminant >= 0)) return;
  const omReal64 q = -0.5 * (b + std::copysign(std::sqrt(discriminant), b));
  for (const omReal64 root : {q / a, c / q})
    if (std::isfinite(root)) roots.push_back(root);
}

/// The point with these coordinates along the axis and along its left normal, from the vertex.
SvgPoint pointAt(const SvgParabola& parabola, omReal64 along, omReal64 across) {
  return {parabola.vertex.getX() + along * parabola.axis.getX() - across * parabola.axis.getY(),
          parabola.vertex.getY() + along * parabola.axis.getY() + across * parabola.axis.getX()};
}

bool isInside(const SvgPoint& point, const SvgView& view) {
  return point.getX() >= view.xMin && point.getX() <= view.xMax && point.getY() >= view.yMin &&
         point.getY() <= view.yMax;
}

}  // namespace

std::optional<std::pair<SvgPoint, SvgPoint>> clipToView(const SvgLine& line, const SvgView& view) {
  omReal64 first = -std::numeric_limits<omReal64>::infinity();
  omReal64 last = -first;
  // Intersect the intervals of t in which the line is between two opposite sides of the view.
  const auto keepBetween = [&first, &last](omReal64 position, omReal64 slope, omReal64 low, omReal64 high) {
    if (slope == 0) return position >= low && position <= high;
    const auto [enter, leave] = std::minmax({(low - position) / slope, (high - position) / slope});
    first = std::max(first, enter);
    last = std::min(last, leave);
    return first <= last;
  };
  if (!keepBetween(line.point.getX(), line.direction.getX(), view.xMin, view.xMax) ||
      !keepBetween(line.point.getY(), line.direction.getY(), view.yMin, view.yMax))
    return std::nullopt;
  const auto at = [&line](omReal64 t) {
    return SvgPoint(line.point.getX() + t * line.direction.getX(), line.point.getY() + t * line.direction.getY());
  };
  return std::make_pair(at(first), at(last));
}

std::vector<SvgBezier> clipToView(const SvgParabola& parabola, const SvgView& view) {
  const omReal64 curvature = 0.25 / parabola.focalLength;
  const SvgPoint& vertex = parabola.vertex;
  const SvgPoint& axis = parabola.axis;
  std::vector<omReal64> crossings;
  for (const omReal64 x : {view.xMin, view.xMax})
    appendRoots(curvature * axis.getX(), -axis.getY(), vertex.getX() - x, crossings);
  for (const omReal64 y : {view.yMin, view.yMax})
    appendRoots(curvature * axis.getY(), axis.getX(), vertex.getY() - y, crossings);
  std::sort(crossings.begin(), crossings.end());

  std::vector<SvgBezier> arcs;
  for (std::size_t index = 1; index < crossings.size(); ++index) {
    const omReal64 t0 = crossings[index - 1], t1 = crossings[index], middle = t0 + (t1 - t0) / 2;
    if (t0 == t1 || !isInside(pointAt(parabola, curvature * middle * middle, middle), view)) continue;
    arcs.push_back({pointAt(parabola, curvature * t0 * t0, t0), pointAt(parabola, curvature * t0 * t1, middle),
                    pointAt(parabola, curvature * t1 * t1, t1)});
  }
  return arcs;
}

}  // namespace ormix::geom::detail
