#include <ORMIXMath/Shape/Parabola.h>
#include <ORMIXMath/Skeleton/AxisCurve.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace ormix {

namespace {

PlanarPoint between(const PlanarPoint& a, const PlanarPoint& b, omReal64 s) {
  // The same as b exactly for s = 1.
  return s < 0.5 ? PlanarPoint{a.x + s * (b.x - a.x), a.y + s * (b.y - a.y)}
                 : PlanarPoint{b.x - (1 - s) * (b.x - a.x), b.y - (1 - s) * (b.y - a.y)};
}

/// The unit vector along an edge of the boundary.
PlanarPoint directionOf(const AxisPart& edge) {
  const omReal64 x = edge.end.x - edge.start.x, y = edge.end.y - edge.start.y;
  const omReal64 length = std::hypot(x, y);
  return length > 0 ? PlanarPoint{x / length, y / length} : PlanarPoint{0, 0};
}

}  // namespace

AxisCurve::AxisCurve(const AxisVertex& start, const AxisVertex& end, const AxisPart& left, const AxisPart& right)
    : _ends{start, end}, _parts{left, right} {
  if (!isArc()) return;
  const AxisPart& edge = left.isVertex ? right : left;
  const PlanarPoint& focus = (left.isVertex ? left : right).start;
  const PlanarPoint direction = directionOf(edge);
  // The region is to the left of the edge, and so is the focus.
  const PlanarPoint axis{-direction.y, direction.x};
  const omReal64 height = (focus.x - edge.start.x) * axis.x + (focus.y - edge.start.y) * axis.y;
  const PlanarPoint chord{end.point.x - start.point.x, end.point.y - start.point.y};
  _along = chord.x * direction.x + chord.y * direction.y;
  _across = chord.x * axis.x + chord.y * axis.y;
  const omReal64 sag = _along * (_along / (2 * height));
  if (height > 0 && std::isfinite(sag)) _sag = {sag * axis.x, sag * axis.y};
}

PlanarPoint AxisCurve::point(omReal64 s) const {
  const PlanarPoint chord = between(_ends[0].point, _ends[1].point, s);
  const omReal64 weight = s * (1 - s);
  return {chord.x - weight * _sag.x, chord.y - weight * _sag.y};
}

omReal64 AxisCurve::radius(omReal64 s) const {
  const omReal64 r0 = _ends[0].radius, r1 = _ends[1].radius;
  const omReal64 linear = s < 0.5 ? r0 + s * (r1 - r0) : r1 - (1 - s) * (r1 - r0);
  if (!_parts[0].isVertex && !_parts[1].isVertex) return linear;
  const omReal64 weight = s * (1 - s);
  if (isArc()) return std::max(linear - weight * std::hypot(_sag.x, _sag.y), 0.0);
  // The distance from a vertex to the points of a segment.
  const omReal64 length = std::hypot(_ends[1].point.x - _ends[0].point.x, _ends[1].point.y - _ends[0].point.y);
  const omReal64 scale = std::max({r0, r1, length});
  if (!(scale > 0)) return 0;
  const auto squared = [scale](omReal64 value) { return (value / scale) * (value / scale); };
  return scale * std::sqrt(std::max((1 - s) * squared(r0) + s * squared(r1) - weight * squared(length), 0.0));
}

omReal64 AxisCurve::leastRadius() const {
  const omReal64 r0 = _ends[0].radius, r1 = _ends[1].radius;
  const omReal64 atEnds = std::min(r0, r1);
  // Where the derivative of the radius, or of its square, is 0.
  omReal64 slope = 0, curvature = 0;
  if (isArc()) {
    slope = r1 - r0;
    curvature = std::hypot(_sag.x, _sag.y);
  } else if (_parts[0].isVertex) {
    const omReal64 length = std::hypot(_ends[1].point.x - _ends[0].point.x, _ends[1].point.y - _ends[0].point.y);
    slope = (r1 - r0) * ((r1 + r0) / length);
    curvature = length;
  }
  const omReal64 s = 0.5 - slope / (2 * curvature);
  return s > 0 && s < 1 ? std::min(atEnds, radius(s)) : atEnds;
}

PlanarPoint AxisCurve::control() const {
  const PlanarPoint middle = between(_ends[0].point, _ends[1].point, 0.5);
  return {middle.x - _sag.x / 2, middle.y - _sag.y / 2};
}

omReal64 AxisCurve::length(omReal64 from, omReal64 to) const {
  const omReal64 sag = std::hypot(_sag.x, _sag.y);
  const omReal64 chord = std::hypot(_ends[1].point.x - _ends[0].point.x, _ends[1].point.y - _ends[0].point.y);
  // What the arc exceeds its chord by is less than 8/3 of the square of its height, a quarter of the sag.
  constexpr omReal64 s_negligible = 1e-9;
  if (!(sag > s_negligible * chord)) return chord * std::abs(to - from);
  // The slopes of the curve against the directrix at both parameters, in units of the distance of focus and directrix.
  const omReal64 distance = _along / 2 * (_along / sag);
  const auto abscissa = [&](omReal64 s) { return (_across - (1 - 2 * s) * sag) / _along * distance; };
  return parabolaArcLength(distance / 2, abscissa(from), abscissa(to));
}

omReal64 AxisCurve::speed(omReal64 s) const {
  const PlanarPoint &start = _ends[0].point, &end = _ends[1].point;
  return std::hypot(end.x - start.x - (1 - 2 * s) * _sag.x, end.y - start.y - (1 - 2 * s) * _sag.y);
}

omReal64 AxisCurve::parameterAt(omReal64 length) const {
  const omReal64 total = this->length();
  if (!(length > 0)) return 0;
  if (!(length < total)) return 1;
  // Newton's steps inside of an interval that is halved where they leave it.
  constexpr int s_maxNbSteps = 60;
  omReal64 low = 0, high = 1, s = length / total;
  for (int step = 0; step < s_maxNbSteps; ++step) {
    const omReal64 error = this->length(0, s) - length;
    (error > 0 ? high : low) = s;
    const omReal64 newton = s - error / speed(s);
    const omReal64 next = newton > low && newton < high ? newton : low + (high - low) / 2;
    if (std::abs(error) <= 4 * std::numeric_limits<omReal64>::epsilon() * total || next == s) break;
    s = next;
  }
  return s;
}

PlanarPoint AxisCurve::contact(int side, int end) const {
  const AxisPart& part = _parts[static_cast<std::size_t>(side)];
  if (part.isVertex) return part.start;
  const PlanarPoint& point = _ends[static_cast<std::size_t>(end)].point;
  if (_ends[static_cast<std::size_t>(end)].radius == 0) return point;
  const PlanarPoint direction = directionOf(part);
  const omReal64 length = std::hypot(part.end.x - part.start.x, part.end.y - part.start.y);
  const omReal64 along = (point.x - part.start.x) * direction.x + (point.y - part.start.y) * direction.y;
  if (along <= 0) return part.start;
  if (along >= length) return part.end;
  return {part.start.x + along * direction.x, part.start.y + along * direction.y};
}

}  // namespace ormix
