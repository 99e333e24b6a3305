#include <ORMIXMath/Contact/BoundaryRings.h>
#include <ORMIXMath/Distance/PlanarFrame.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace ormix::detail {

namespace {

// Coordinates have been rounded once, and twice more where a program has moved them.
constexpr omReal64 s_roundings = 4 * std::numeric_limits<omReal64>::epsilon();

/// Twice the signed area, from differences to the first vertex.
omReal64 doubleArea(const PlanarPoint* points, std::size_t nb) {
  omReal64 sum = 0;
  for (std::size_t i = 1; i + 1 < nb; ++i)
    sum += (points[i].x - points[0].x) * (points[i + 1].y - points[0].y) -
           (points[i + 1].x - points[0].x) * (points[i].y - points[0].y);
  return sum;
}

}  // namespace

void BoundaryRings::closeRing(Ring ring) {
  while (_points.size() > ring.begin + 1 && _points.back().x == _points[ring.begin].x &&
         _points.back().y == _points[ring.begin].y)
    _points.pop_back();
  ring.end = _points.size();
  // One vertex stays until prepare() has looked whether it is finite.
  if (ring.end > ring.begin) _rings.push_back(ring);
}

bool BoundaryRings::prepare() {
  omReal64 largest = 0;
  for (const PlanarPoint& point : _points) {
    // Their difference from themselves is NaN where they are not finite.
    const omReal64 size = std::max(std::abs(point.x), std::abs(point.y));
    if (!(point.x - point.x == 0 && point.y - point.y == 0)) return false;
    largest = std::max(largest, size);
  }
  _scale = safeScale({largest});
  _largest = largest * _scale;
  if (_scale != 1)
    for (PlanarPoint& point : _points) point = {point.x * _scale, point.y * _scale};
  _rings.erase(std::remove_if(_rings.begin(), _rings.end(), [](const Ring& ring) { return ring.end < ring.begin + 2; }),
               _rings.end());
  for (const Ring& ring : _rings) {
    PlanarPoint* const first = _points.data() + ring.begin;
    const omReal64 area = doubleArea(first, ring.end - ring.begin);
    if (ring.isHole ? area > 0 : area < 0) std::reverse(first, _points.data() + ring.end);
  }
  return true;
}

omReal64 BoundaryRings::scaledGap(omReal64 gap) const {
  if (gap == 0) return 0;
  return std::min(gap * _scale, 4 * _largest) + s_roundings * _largest;
}

BoundaryEdge makeEdge(const PlanarPoint& start, const PlanarPoint& end) {
  const PlanarPoint along{end.x - start.x, end.y - start.y};
  const omReal64 length = std::sqrt(along.x * along.x + along.y * along.y);
  return {start, end, {along.x / length, along.y / length}, length};
}

BoundaryEdges BoundaryRings::edges(std::size_t firstRing, std::size_t lastRing) const {
  // The square of a length below this is not a normal number; such an edge is as good as none.
  constexpr omReal64 shortest = 0x1p-500;
  BoundaryEdges result;
  if (firstRing < lastRing) result.edges.reserve(_rings[lastRing - 1].end - _rings[firstRing].begin);
  for (std::size_t r = firstRing; r < lastRing; ++r) {
    const Ring& ring = _rings[r];
    PlanarPoint start = _points[ring.end - 1];
    for (std::size_t i = ring.begin; i < ring.end; ++i) {
      const BoundaryEdge edge = makeEdge(start, _points[i]);
      start = _points[i];
      if (edge.length > shortest) result.edges.push_back(edge);
    }
    result.ringEnds.push_back(result.edges.size());
  }
  return result;
}

}  // namespace ormix::detail
