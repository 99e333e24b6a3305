#include <ORMIXGeometry/Entity/2d/Arc/CircularArcOf.h>
#include <ORMIXGeometry/Measure/MeasureParts.h>
#include <ORMIXGeometry/Transform/2d/CentroidTransform2d.h>
#include <ORMIXGeometry/Transform/2d/EnvelopeTransform2d.h>
#include <ORMIXGeometry/Transform/2d/PlanarParts.h>
#include <ORMIXGeometry/Transform/EnvelopeOf.h>
#include <ORMIXGeometry/Transform/WeightedMean.h>
#include <ORMIXMath/Moments/PointMoments.h>
#include <ORMIXMath/Shape/Ring.h>
#include <ORMIXGeometry/Transform/DerivedTransform.ipp>

#include <cmath>
#include <functional>

ORMIX_GEOMETRY_DERIVED_TRANSFORM2D_LEVELS(, CentroidTransform2d)

namespace ormix::geom {

namespace {

using Mean = detail::WeightedMean<2>;
using Centroid = Point2d<omReal64>;

bool setTo(Centroid& centroid, omReal64 x, omReal64 y) {
  centroid.setCoords(x, y);
  return std::isfinite(x) && std::isfinite(y);
}
bool setTo(Centroid& centroid, const Mean& mean) {
  detail::Offset<2> at{};
  return mean.mean(at) && setTo(centroid, at[0], at[1]);
}

/// Moments of the region within a ring, whichever way round it is stored.
template <class T>
PlanarMoments regionOf(const Polygon2d<T>& ring) {
  const PlanarMoments moments = ringMoments(coordinates(ring.getPointColl()), ring.getPointColl().size());
  return moments.about[0] < 0 ? -moments : moments;
}

/// The rings that count, as runs.
template <class T, class Visit>
void visitRings(const Polygon2d<T>& ring, eHoleMsrPolicy, Visit visit) {
  detail::visitRuns(ring, visit);
}
template <class T, class Visit>
void visitRings(const PolygonWithHoles2d<T>& polygon, eHoleMsrPolicy policy, Visit visit) {
  detail::visitRuns(polygon.getExteriorPolygon(), visit);
  if (policy == eHMP_ProcessHoles && polygon.hasHoles()) {
    visitNodes(polygon, [&](const PolygonWithHoles2d<T>& node) {
      if (&node != &polygon) detail::visitRuns(node.getExteriorPolygon(), visit);
      return true;
    });
  }
}
template <class Visit>
void visitRings(const Shape2d& shape, eHoleMsrPolicy policy, Visit visit) {
  for (const auto& polygon : shape.getPolygonWithHolesColl())
    if (polygon) visitRings(*polygon, policy, visit);
}

/// Of the area of rings, where it is none of their edges, where these have no length of the vertices.
template <class Entity>
bool centroidOfRings(const Entity& entity, eHoleMsrPolicy policy, Centroid& centroid) {
  const auto region = [](const auto& ring) { return regionOf(ring); };
  PlanarMoments moments;
  if (!detail::measureParts(entity, policy, moments, region, std::minus<>())) return false;
  detail::GrowingBox<CoordinateOf<Entity>, 2> box;
  omReal64 length = 0;
  visitRings(entity, policy, [&](const auto* xy, std::size_t nbPoints) {
    box.includeRun(xy, nbPoints);
    // Twice, for the edge from the last vertex to the first.
    length += 2 * pathLength(xy, nbPoints);
  });
  if (!box.hasAnswer() || !isFinite(moments)) return false;
  if (std::abs(moments.about[0]) > detail::s_flatness * length * box.extent()) {
    moments = centredMoments(moments);
    const bool isCentred = moments.about[1] == 0 && moments.about[2] == 0;
    if (isCentred && box.contains({moments.originX, moments.originY}))
      return setTo(centroid, moments.originX, moments.originY);
  }
  Mean edges;
  Mean vertices;
  visitRings(entity, policy, [&](const auto* xy, std::size_t nbPoints) {
    detail::addEdges<2>(xy, nbPoints, edges);
    detail::addPoints<2>(xy, nbPoints, vertices);
  });
  return setTo(centroid, edges.weight() != 0 ? edges : vertices);
}

template <class T>
bool centroidOf(const Point2d<T>& point, eHoleMsrPolicy, Centroid& centroid) {
  return setTo(centroid, omReal64(point.getX()), omReal64(point.getY()));
}
template <class T>
bool centroidOf(const Segment2d<T>& segment, eHoleMsrPolicy, Centroid& centroid) {
  return setTo(centroid, segment.getMiddleX(), segment.getMiddleY());
}
template <class T>
bool centroidOf(const BoundingBox2d<T>& box, eHoleMsrPolicy, Centroid& centroid) {
  return setTo(centroid, omReal64(box.getXMin()) / 2 + omReal64(box.getXMax()) / 2,
               omReal64(box.getYMin()) / 2 + omReal64(box.getYMax()) / 2);
}
template <class T>
bool centroidOf(const PointCloud2d<T>& cloud, eHoleMsrPolicy, Centroid& centroid) {
  Mean mean;
  detail::addPoints<2>(coordinates(cloud.getCollection()), cloud.getCollection().size(), mean);
  return setTo(centroid, mean);
}
template <class T>
bool centroidOf(const Polygon2d<T>& polygon, eHoleMsrPolicy policy, Centroid& centroid) {
  return centroidOfRings(polygon, policy, centroid);
}
template <class T>
bool centroidOf(const PolygonWithHoles2d<T>& polygon, eHoleMsrPolicy policy, Centroid& centroid) {
  return centroidOfRings(polygon, policy, centroid);
}
bool centroidOf(const Shape2d& shape, eHoleMsrPolicy policy, Centroid& centroid) {
  if (!shape.getPolygonWithHolesColl().empty()) return centroidOfRings(shape, policy, centroid);
  Mean pixels;
  detail::visitPixelRuns(shape, [&pixels](omReal64 x0, omReal64 x1, omReal64 y) {
    const omReal64 middle[] = {x0 / 2 + x1 / 2, y + 0.5};
    pixels.add(x1 - x0, pixels.offsetOf(middle));
  });
  return setTo(centroid, pixels);
}
// Of the curve.
template <class T>
bool centroidOf(const Arc2d<T>& entity, eHoleMsrPolicy, Centroid& centroid) {
  const CircularArc arc = detail::circularArcOf(entity);
  const omReal64 half = std::abs(arc.sweep) / 2;
  const omReal64 share = half > 0 ? std::sin(half) / half : 1;
  const PlanarPoint center =
      isFull(arc) ? arc.center
                  : pointAt({arc.center, arc.radius * share, arc.start, arc.sweep}, arc.start + arc.sweep / 2);
  return std::isfinite(arc.radius) && setTo(centroid, center.x, center.y);
}
/// Circles, ellipses, squares and rectangles, whose sizes have to be numbers too, as for an envelope.
template <class Entity>
bool centroidOf(const Entity& entity, eHoleMsrPolicy, Centroid& centroid) {
  EnvelopeTransform2d::Result<Entity> box;
  return EnvelopeTransform2d().derive(entity, box) &&
         setTo(centroid, omReal64(entity.centerX()), omReal64(entity.centerY()));
}

}  // namespace

template <class Entity>
bool CentroidTransform2d::derive(const Entity& entity, Result<Entity>& result) const {
  return centroidOf(entity, getHoleMsrPolicy(), result);
}

namespace {
[[gnu::used]] constexpr auto s_instances = detail::derivationsOfAll<CentroidTransform2d>(PlanarEntityList());
}  // namespace

}  // namespace ormix::geom
