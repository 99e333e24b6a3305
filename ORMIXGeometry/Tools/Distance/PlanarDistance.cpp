#include <ORMIXGeometry/Message/ToolsMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Distance/PlanarDistance.h>
#include <ORMIXGeometry/Tools/Distance/PlanarFigure.h>
#include <ORMIXMath/Distance/CircularArcDistance.h>
#include <ORMIXMath/Distance/ConvexArcDistance.h>
#include <ORMIXMath/Distance/SegmentSet.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <limits>
#include <string>
#include <utility>

namespace ormix::geom {

namespace {

using detail::PlanarFigure;
using ormix::detail::ConvexArc;
using ormix::detail::SegmentSet;

PlanarNearestPair exchanged(const PlanarNearestPair& pair) { return {pair.distance, pair.onB, pair.onA}; }

/// Of an arc and edges: vertices first, so that most edges are passed over.
PlanarNearestPair nearestOfArc(const ConvexArc& arc, const std::vector<PlanarSegment>& segments) {
  PlanarNearestPair best{std::numeric_limits<omReal64>::infinity(), {0, 0}, {0, 0}};
  const PlanarSegment* before = nullptr;
  for (const PlanarSegment& segment : segments) {
    if (!before || before->p1.x != segment.p0.x || before->p1.y != segment.p0.y) updateByVertex(arc, segment.p0, best);
    updateByVertex(arc, segment.p1, best);
    before = &segment;
  }
  for (const PlanarSegment& segment : segments) updateByEdge(arc, segment, best);
  return best;
}

/// Of an arc of a circle and what is made of segments, a circle, or another one.
PlanarNearestPair nearestOfCircularArc(const CircularArc& arc, const PlanarFigure& other) {
  if (other.circularArc) return nearestPair(arc, *other.circularArc);
  if (other.arc) return nearestPair(arc, CircularArc{other.arc->origin, other.arc->a, 0, s_twoPi});
  PlanarNearestPair best{std::numeric_limits<omReal64>::infinity(), {0, 0}, {0, 0}};
  for (const PlanarSegment& segment : other.segments) {
    const PlanarNearestPair pair = nearestPair(arc, segment);
    if (pair.distance < best.distance) best = pair;
    if (best.distance == 0) break;
  }
  return best;
}

/// Of the boundaries. An entity is either an arc or segments, and these are taken out of the figures.
PlanarNearestPair nearestOfBoundaries(PlanarFigure& a, PlanarFigure& b) {
  if (a.circularArc) return nearestOfCircularArc(*a.circularArc, b);
  if (b.circularArc) return exchanged(nearestOfCircularArc(*b.circularArc, a));
  if (a.arc && b.arc) return nearestOfArcs(*a.arc, *b.arc);
  if (a.arc) return nearestOfArc(*a.arc, b.segments);
  if (b.arc) return exchanged(nearestOfArc(*b.arc, a.segments));
  return nearestOfSegments(SegmentSet(std::move(a.segments), a.order), SegmentSet(std::move(b.segments), b.order));
}

/// A common point of a region and another figure whose boundaries do not meet: one of the figure's parts is inside.
bool findCommon(const PlanarFigure& region, const PlanarFigure& other, PlanarPoint& common) {
  if (region.ringEnds.empty() && !region.arc) return false;
  const std::vector<PlanarPoint> points = other.representatives();
  const std::size_t found = region.findInside(points);
  if (found == points.size()) return false;
  common = points[found];
  return true;
}

PlanarNearestPair nearestOfFigures(PlanarFigure& a, PlanarFigure& b, eInteriorPolicy policy) {
  PlanarPoint common;
  if (policy == eIP_Filled && (findCommon(a, b, common) || findCommon(b, a, common))) return {0, common, common};
  PlanarNearestPair pair = nearestOfBoundaries(a, b);
  // Where curves touch, their points differ by rounding.
  if (pair.distance == 0) pair.onB = pair.onA;
  return pair;
}

/// An arc of a circle and a curve that is none.
[[noreturn]] void refusePair(const PlanarFigure& a, const PlanarFigure& b) {
  const auto nameOf = [](const PlanarFigure& figure) {
    const std::string name(figure.className);
    return name.substr(name.rfind(':') + 1);
  };
  logAndThrow(formatMessage<eToolsMessage>(eToolsMessage::eTM_NoDistanceBetween, nameOf(a), nameOf(b)),
              __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

PlanarNearestPoints nearest(PlanarFigure a, PlanarFigure b, eInteriorPolicy policy) {
  if (a.isUnbounded && b.isUnbounded)
    detail::refuse(eToolsMessage::eTM_NotBounded, a.className, __PRETTY_FUNCTION__, __LINE__);
  const auto isSmooth = [](const PlanarFigure& figure) { return figure.arc && !figure.arc->isCircle(); };
  if ((a.circularArc && isSmooth(b)) || (b.circularArc && isSmooth(a))) refusePair(a, b);
  const omReal64 scale = scaleTogether(a, b);
  if (a.isUnbounded) bound(a, b);
  if (b.isUnbounded) bound(b, a);
  const PlanarNearestPair pair =
      isBefore(b, a) ? exchanged(nearestOfFigures(b, a, policy)) : nearestOfFigures(a, b, policy);
  return {pair.distance / scale, {pair.onA.x / scale, pair.onA.y / scale}, {pair.onB.x / scale, pair.onB.y / scale}};
}

}  // namespace

PlanarNearestPoints nearestPoints(const BaseGeometryEntity2d& a, const BaseGeometryEntity2d& b,
                                  eInteriorPolicy policy) {
  return nearest(detail::figureOf(a), detail::figureOf(b), policy);
}
PlanarNearestPoints nearestPoints(const ParabolaArc2d& a, const BaseGeometryEntity2d& b, eInteriorPolicy policy) {
  return nearest(detail::figureOf(a), detail::figureOf(b), policy);
}
PlanarNearestPoints nearestPoints(const BaseGeometryEntity2d& a, const ParabolaArc2d& b, eInteriorPolicy policy) {
  return nearest(detail::figureOf(a), detail::figureOf(b), policy);
}
PlanarNearestPoints nearestPoints(const ParabolaArc2d& a, const ParabolaArc2d& b) {
  return nearest(detail::figureOf(a), detail::figureOf(b), eIP_Boundary);
}

}  // namespace ormix::geom
