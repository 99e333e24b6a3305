#include <ORMIXMath/Distance/NearestOnSegments.h>
#include <ORMIXMath/Distance/SegmentsDistance.h>
#include <ORMIXMath/Distance/SpatialSegmentsDistance.h>

namespace ormix {

namespace {

template <class Point, class Segment>
NearestPair<Point> ofPoint(const Point& a, const Segment& b) {
  NearestPair<Point> pair{0, a, a};
  pair.distance = pointSegmentDistance(a, b, pair.onB);
  return pair;
}

template <class Point, class Segment>
NearestPair<Point> ofSegments(const Segment& a, const Segment& b) {
  NearestPair<Point> pair{0, a.p0, b.p0};
  pair.distance = segmentsDistance(a, b, pair.onA, pair.onB);
  return pair;
}

}  // namespace

PlanarNearestPair nearestOnSegments(const PlanarPoint& a, const PlanarSegment& b) { return ofPoint(a, b); }
SpatialNearestPair nearestOnSegments(const SpatialPoint& a, const SpatialSegment& b) { return ofPoint(a, b); }
PlanarNearestPair nearestOnSegments(const PlanarSegment& a, const PlanarSegment& b) {
  return ofSegments<PlanarPoint>(a, b);
}
SpatialNearestPair nearestOnSegments(const SpatialSegment& a, const SpatialSegment& b) {
  return ofSegments<SpatialPoint>(a, b);
}

}  // namespace ormix
