#include <ORMIXMath/Distance/NearestOnSegments.h>
#include <ORMIXMath/Distance/SegmentSet.h>
#include <ORMIXMath/Index/BoxPairs.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace ormix::detail {

namespace {

IndexBox<2> boxOf(const PlanarSegment& s) {
  return {{std::min(s.p0.x, s.p1.x), std::min(s.p0.y, s.p1.y)}, {std::max(s.p0.x, s.p1.x), std::max(s.p0.y, s.p1.y)}};
}

std::vector<IndexBox<2>> boxesOf(const std::vector<PlanarSegment>& segments) {
  std::vector<IndexBox<2>> boxes(segments.size());
  for (std::size_t i = 0; i < segments.size(); ++i) boxes[i] = boxOf(segments[i]);
  return boxes;
}

/// Square of the distance from a point to a segment, without regard of rounding.
omReal64 roughSquare(const PlanarPoint& p, const PlanarSegment& s, omReal64 dx, omReal64 dy, omReal64 inverse) {
  const omReal64 toX = p.x - s.p0.x;
  const omReal64 toY = p.y - s.p0.y;
  const omReal64 part = std::min(std::max((toX * dx + toY * dy) * inverse, 0.0), 1.0);
  const omReal64 x = toX - part * dx;
  const omReal64 y = toY - part * dy;
  return x * x + y * y;
}

/// Square of the least distance of an end from the other segment, likewise: that of segments which do not cross.
omReal64 roughSquare(const PlanarSegment& s, const PlanarSegment& r) {
  const omReal64 sx = s.p1.x - s.p0.x;
  const omReal64 sy = s.p1.y - s.p0.y;
  const omReal64 rx = r.p1.x - r.p0.x;
  const omReal64 ry = r.p1.y - r.p0.y;
  const omReal64 squareS = sx * sx + sy * sy;
  const omReal64 squareR = rx * rx + ry * ry;
  const omReal64 inverseS = squareS > 0 ? 1 / squareS : 0;
  const omReal64 inverseR = squareR > 0 ? 1 / squareR : 0;
  return std::min(std::min(roughSquare(s.p0, r, rx, ry, inverseR), roughSquare(s.p1, r, rx, ry, inverseR)),
                  std::min(roughSquare(r.p0, s, sx, sy, inverseS), roughSquare(r.p1, s, sx, sy, inverseS)));
}

}  // namespace

SegmentSet::SegmentSet(std::vector<PlanarSegment> segments, eBoxOrder order)
    : _segments(std::move(segments)), _tree(boxesOf(_segments), order) {
  for (const omReal64 coordinate :
       {_tree.envelope().low[0], _tree.envelope().low[1], _tree.envelope().high[0], _tree.envelope().high[1]})
    if (std::isfinite(coordinate)) _magnitude = std::max(_magnitude, std::abs(coordinate));
}

PlanarNearestPair nearestOfSegments(const SegmentSet& a, const SegmentSet& b) {
  constexpr omReal64 infinity = std::numeric_limits<omReal64>::infinity();
  // More than the errors of a rough distance: of rounded differences, and of the rest of a foot.
  const omReal64 error = 1e-15 * (a.magnitude() + b.magnitude());
  PlanarNearestPair best{infinity, {0, 0}, {0, 0}};
  nearestPair(a.tree(), b.tree(), infinity, [&](std::size_t i, std::size_t k) {
    const PlanarSegment& s = a[i];
    const PlanarSegment& r = b[k];
    const omReal64 limit = best.distance * (1 + 1e-12) + error;
    if (roughSquare(s, r) > limit * limit && !boxOf(s).meets(boxOf(r))) return infinity;
    const PlanarNearestPair pair = nearestOnSegments(s, r);
    if (!(pair.distance < best.distance)) return infinity;
    best = pair;
    // A square that vanishes would end the search.
    return pair.distance > 0 ? std::max(pair.distance * pair.distance, std::numeric_limits<omReal64>::min()) : 0;
  });
  return best;
}

}  // namespace ormix::detail
