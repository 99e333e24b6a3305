#include <ORMIXGeometry/Entity/2d/Arc/CircularArcOf.h>
#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Entity/TypedEntity.h>
#include <ORMIXGeometry/Message/ToolsMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Distance/PlanarFigure.h>
#include <ORMIXGeometry/Tools/Location/RingsOf.h>
#include <ORMIXMath/Location/RingCrossings.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>

namespace ormix::geom::detail {

namespace {

using ormix::detail::ConvexArc;

void addPoint(PlanarFigure& figure, const PlanarPoint& point) {
  figure.partStarts.push_back(figure.segments.size());
  figure.segments.push_back({point, point});
}

/// Adds the edges of a ring, those without length left out.
template <class T>
void addRing(PlanarFigure& figure, const T* xy, std::size_t nbPoints) {
  const std::size_t first = figure.segments.size();
  if (first == 0) figure.segments.reserve(nbPoints);
  for (std::size_t i = 0; i < nbPoints; ++i) {
    const std::size_t next = i + 1 < nbPoints ? i + 1 : 0;
    const PlanarPoint p0 = toPlanarPoint(xy[2 * i], xy[2 * i + 1]);
    const PlanarPoint p1 = toPlanarPoint(xy[2 * next], xy[2 * next + 1]);
    if (p0.x != p1.x || p0.y != p1.y) figure.segments.push_back({p0, p1});
  }
  if (figure.segments.size() == first) return addPoint(figure, toPlanarPoint(xy[0], xy[1]));
  figure.partStarts.push_back(first);
  figure.ringCoordinates.insert(figure.ringCoordinates.end(), xy, xy + 2 * nbPoints);
  figure.ringEnds.push_back(figure.ringCoordinates.size());
}

template <class T>
void addEntity(PlanarFigure& figure, const Point2d<T>& point) {
  addPoint(figure, toPlanarPoint(point.getX(), point.getY()));
}
template <class T>
void addEntity(PlanarFigure& figure, const Segment2d<T>& segment) {
  figure.partStarts.push_back(0);
  figure.segments.push_back(toPlanarSegment(segment.getPoint0().getX(), segment.getPoint0().getY(),
                                            segment.getPoint1().getX(), segment.getPoint1().getY()));
}
template <class T>
void addEntity(PlanarFigure& figure, const PointCloud2d<T>& cloud) {
  figure.order = ormix::detail::eBO_Curve;
  figure.segments.reserve(cloud.getCollection().size());
  for (const Point2dData<T>& point : cloud.getCollection()) addPoint(figure, toPlanarPoint(point.getX(), point.getY()));
}

template <class T>
void addEntity(PlanarFigure& figure, const BoundingBox2d<T>& box) {
  const T xy[] = {box.getXMin(), box.getYMin(), box.getXMax(), box.getYMin(),
                  box.getXMax(), box.getYMax(), box.getXMin(), box.getYMax()};
  addRing(figure, xy, 4);
}
template <class Corners>
void addCorners(PlanarFigure& figure, const Corners& entity) {
  std::vector<omReal64> xy;
  for (const Point2dData<omReal64>& corner :
       {entity.topLeftCorner(), entity.topRightCorner(), entity.bottomRightCorner(), entity.bottomLeftCorner()}) {
    xy.push_back(corner.getX());
    xy.push_back(corner.getY());
  }
  addRing(figure, xy.data(), 4);
}
template <class T>
void addEntity(PlanarFigure& figure, const Square2d<T>& square) {
  addCorners(figure, square);
}
template <class T>
void addEntity(PlanarFigure& figure, const Rectangle2d<T>& rectangle) {
  addCorners(figure, rectangle);
}

template <class Region>
void addRegion(PlanarFigure& figure, const Region& region) {
  visitRings(region, [&figure](const auto* xy, std::size_t nbPoints) { addRing(figure, xy, nbPoints); });
}
template <class T>
void addEntity(PlanarFigure& figure, const Polygon2d<T>& polygon) {
  addRegion(figure, polygon);
}
template <class T>
void addEntity(PlanarFigure& figure, const PolygonWithHoles2d<T>& polygon) {
  addRegion(figure, polygon);
}
void addEntity(PlanarFigure& figure, const Shape2d& shape) { addRegion(figure, shape); }

/// An ellipse, or a segment or a point where a radius is 0.
void addEllipse(PlanarFigure& figure, const PlanarPoint& center, const PlanarPoint& axis, omReal64 a, omReal64 b) {
  if (a > 0 && b > 0) {
    figure.arc = ConvexArc{false, center, axis, a, b};
    return;
  }
  // One of the terms is 0. A NaN radius is neither, and stays.
  const PlanarPoint reach{a * axis.x - b * axis.y, a * axis.y + b * axis.x};
  figure.partStarts.push_back(0);
  figure.segments.push_back({{center.x - reach.x, center.y - reach.y}, {center.x + reach.x, center.y + reach.y}});
}
template <class T>
void addEntity(PlanarFigure& figure, const Circle2d<T>& circle) {
  const omReal64 radius = std::abs(omReal64(circle.getRadius()));
  addEllipse(figure, toPlanarPoint(circle.centerX(), circle.centerY()), {1, 0}, radius, radius);
}
template <class T>
void addEntity(PlanarFigure& figure, const Ellipse2d<T>& ellipse) {
  addEllipse(figure, toPlanarPoint(ellipse.centerX(), ellipse.centerY()),
             {ellipse.getCosTheta(), ellipse.getSinTheta()}, std::abs(omReal64(ellipse.getMajorRadius())),
             std::abs(omReal64(ellipse.getMinorRadius())));
}

template <class T>
void addEntity(PlanarFigure& figure, const Arc2d<T>& arc) {
  figure.circularArc = circularArcOf(arc);
}

/// The arc between two abscissas; in the frame, whose y axis points inward, the abscissa may change its sign.
void addParabola(PlanarFigure& figure, const Parabola2d& parabola, omReal64 from, omReal64 to) {
  if (parabola.isDegenerated()) refuse(eToolsMessage::eTM_NotBounded, figure.className, __PRETTY_FUNCTION__, __LINE__);
  if (!std::isfinite(from) || !std::isfinite(to))
    refuse(eToolsMessage::eTM_EntityNotFinite, figure.className, __PRETTY_FUNCTION__, __LINE__);
  const Line2d& directrix = parabola.getDirectrix();
  const bool isInwardNormal = directrix.signedDistance(parabola.getFocus()) > 0;
  // The direction of the directrix is its normal turned to the left, so that x, y is direction, −normal.
  const omReal64 side = isInwardNormal ? -1 : 1;
  const PlanarPoint axis{-side * directrix.getSinTheta(), side * directrix.getCosTheta()};
  const Point2dData<omReal64> vertex = parabola.getVertex();
  figure.arc = ConvexArc{true,
                         {vertex.getX(), vertex.getY()},
                         axis,
                         parabola.getFocalLength(),
                         0,
                         std::min(side * from, side * to),
                         std::max(side * from, side * to)};
}
void addEntity(PlanarFigure& figure, const Parabola2d& parabola) {
  addParabola(figure, parabola, 0, 0);
  figure.isUnbounded = true;
}

void addEntity(PlanarFigure& figure, const Line2d&) {
  refuse(eToolsMessage::eTM_NotBounded, figure.className, __PRETTY_FUNCTION__, __LINE__);
}
void addEntity(PlanarFigure& figure, const Vector2d&) {
  refuse(eToolsMessage::eTM_NotBounded, figure.className, __PRETTY_FUNCTION__, __LINE__);
}
void addEntity(PlanarFigure& figure, const SkeletonVertex2d& vertex) {
  addPoint(figure, toPlanarPoint(vertex.getPoint().getX(), vertex.getPoint().getY()));
}
void addEntity(PlanarFigure& figure, const Skeleton2d&) {
  refuse(eToolsMessage::eTM_NoDistance, figure.className, __PRETTY_FUNCTION__, __LINE__);
}

PlanarFigure checked(PlanarFigure figure) {
  if (figure.segments.empty() && !figure.arc && !figure.circularArc)
    refuse(eToolsMessage::eTM_NoPoints, figure.className, __PRETTY_FUNCTION__, __LINE__);
  const bool isTooSteep = figure.arc && figure.arc->isParabola &&
                          !std::isfinite(parabolaPoint(*figure.arc, std::max(-figure.arc->from, figure.arc->to)).y);
  if (!std::isfinite(figure.magnitude()) || isTooSteep)
    refuse(eToolsMessage::eTM_EntityNotFinite, figure.className, __PRETTY_FUNCTION__, __LINE__);
  return figure;
}

/// Calls `function` with each number of a figure that has a length as its unit.
template <class Figure, class Function>
void visitLengths(Figure& figure, Function&& function) {
  for (auto& segment : figure.segments) {
    function(segment.p0.x);
    function(segment.p0.y);
    function(segment.p1.x);
    function(segment.p1.y);
  }
  for (auto& coordinate : figure.ringCoordinates) function(coordinate);
  if (figure.circularArc) {
    function(figure.circularArc->center.x);
    function(figure.circularArc->center.y);
    function(figure.circularArc->radius);
  }
  if (!figure.arc) return;
  auto& arc = *figure.arc;
  function(arc.origin.x);
  function(arc.origin.y);
  function(arc.a);
  function(arc.b);
  function(arc.from);
  function(arc.to);
}

RingCrossings crossingsOf(const PlanarFigure& figure, const PlanarPoint& point) {
  RingCrossings crossings;
  std::size_t start = 0;
  for (const std::size_t end : figure.ringEnds) {
    crossings += ringCrossings(figure.ringCoordinates.data() + start, (end - start) / 2, point.x, point.y);
    start = end;
  }
  return crossings;
}

/// Compares two sequences of equal length; negative where the first comes first.
template <class Range, class Compare>
int compareRanges(const Range& a, const Range& b, Compare&& compare) {
  if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (const int order = compare(a[i], b[i]); order != 0) return order;
  return 0;
}
int compareNumbers(omReal64 a, omReal64 b) { return (a > b) - (a < b); }
int compareSegments(const PlanarSegment& a, const PlanarSegment& b) {
  const omReal64 ofA[] = {a.p0.x, a.p0.y, a.p1.x, a.p1.y};
  const omReal64 ofB[] = {b.p0.x, b.p0.y, b.p1.x, b.p1.y};
  for (int i = 0; i < 4; ++i)
    if (ofA[i] != ofB[i]) return compareNumbers(ofA[i], ofB[i]);
  return 0;
}
std::vector<omReal64> numbersOf(const std::optional<CircularArc>& arc) {
  if (!arc) return {};
  return {arc->center.x, arc->center.y, arc->radius, arc->start, arc->sweep};
}
std::vector<omReal64> numbersOf(const std::optional<ConvexArc>& arc) {
  if (!arc) return {};
  return {arc->isParabola ? 1.0 : 0.0,
          arc->origin.x,
          arc->origin.y,
          arc->a,
          arc->b,
          arc->from,
          arc->to,
          arc->axis.x,
          arc->axis.y};
}

}  // namespace

void refuse(eToolsMessage::eId message, const char* className, const char* function, int line) {
  const std::string_view name(className);
  logAndThrow(formatMessage<eToolsMessage>(message, std::string(name.substr(name.rfind(':') + 1))), function, __FILE__,
              line);
}

void PlanarFigure::scale(omReal64 factor) {
  visitLengths(*this, [factor](omReal64& length) { length *= factor; });
}

omReal64 PlanarFigure::magnitude() const {
  omReal64 largest = 0;
  // Becomes NaN by the first number that is not finite.
  omReal64 zero = arc ? 0 * (arc->axis.x + arc->axis.y) : 0;
  visitLengths(*this, [&](omReal64 length) {
    largest = std::max(largest, std::abs(length));
    zero += 0 * length;
  });
  return largest + zero;
}

std::vector<PlanarPoint> PlanarFigure::representatives() const {
  std::vector<PlanarPoint> points;
  points.reserve(partStarts.size() + 1);
  for (const std::size_t start : partStarts) points.push_back(segments[start].p0);
  if (arc) points.push_back(pointWithNormal(*arc, arc->axis));
  if (circularArc) points.push_back(pointAt(*circularArc, circularArc->start));
  return points;
}

PreparedRings PlanarFigure::rings() const {
  PreparedRings prepared;
  std::size_t start = 0;
  for (const std::size_t end : ringEnds) {
    prepared.add(ringCoordinates.data() + start, (end - start) / 2);
    start = end;
  }
  if (!prepared.build())
    logAndThrow("A region cannot be prepared: it has 2^28 edges or more", __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return prepared;
}

std::size_t PlanarFigure::findInside(const std::vector<PlanarPoint>& points) const {
  if (arc)
    return static_cast<std::size_t>(
        std::find_if(points.begin(), points.end(),
                     [this](const PlanarPoint& point) { return isInEllipse(*arc, point); }) -
        points.begin());
  if (ringEnds.empty()) return points.size();
  // From here on it is worth to sort the edges first.
  constexpr std::size_t s_fewPoints = 16;
  const bool isPrepared = points.size() > s_fewPoints;
  const PreparedRings prepared = isPrepared ? rings() : PreparedRings();
  for (std::size_t i = 0; i < points.size(); ++i) {
    const RingCrossings crossings =
        isPrepared ? prepared.crossings(points[i].x, points[i].y) : crossingsOf(*this, points[i]);
    if (crossings.isOnBoundary || crossings.isOdd) return i;
  }
  return points.size();
}

PlanarFigure figureOf(const BaseGeometryEntity2d& entity) {
  PlanarFigure figure;
  callTyped(PlanarEntityList(), entity, [&figure](const auto& typed) {
    figure.className = std::decay_t<decltype(typed)>::s_className;
    addEntity(figure, typed);
    return true;
  });
  return checked(std::move(figure));
}

PlanarFigure figureOf(const ParabolaArc2d& arc) {
  PlanarFigure figure;
  figure.className = Parabola2d::s_className;
  addParabola(figure, arc.parabola, arc.fromAbscissa, arc.toAbscissa);
  return checked(std::move(figure));
}

void bound(PlanarFigure& parabola, const PlanarFigure& other) {
  ConvexArc& arc = *parabola.arc;
  omReal64 halfWidth = 0, height = 0, least = std::numeric_limits<omReal64>::infinity();
  const auto reach = [&](const PlanarPoint& point, omReal64 radius) {
    const PlanarPoint local = toFrame(arc, point);
    halfWidth = std::max(halfWidth, std::abs(local.x) + radius);
    height = std::max(height, local.y + radius);
  };
  const auto take = [&](const PlanarPoint& point) {
    reach(point, 0);
    const PlanarPoint local = toFrame(arc, point);
    least = std::min(least, std::hypot(local.x, local.y));
  };
  for (const PlanarSegment& segment : other.segments) {
    take(segment.p0);
    take(segment.p1);
  }
  if (other.arc && other.arc->isParabola) {
    const ConvexArc& second = *other.arc;
    take(fromFrame(second, parabolaPoint(second, second.from)));
    const omReal64 top = parabolaPoint(second, std::max(-second.from, second.to)).y;
    for (const omReal64 x : {second.from, second.to})
      for (const omReal64 y : {0.0, top}) reach(fromFrame(second, {x, y}), 0);
  } else if (other.arc) {
    take(pointWithNormal(*other.arc, other.arc->axis));
    reach(other.arc->origin, std::max(other.arc->a, other.arc->b));
  }
  // Wider than rounding errors.
  constexpr omReal64 s_slack = 1 + 1e-12;
  const omReal64 byHeight = 2 * std::sqrt(arc.a) * std::sqrt(std::max(0.0, height + least));
  arc.to = std::min(halfWidth + least, byHeight) * s_slack;
  arc.from = -arc.to;
  parabola.isUnbounded = false;
}

omReal64 scaleTogether(PlanarFigure& a, PlanarFigure& b) {
  constexpr omReal64 s_largest = 0x1p400, s_smallest = 0x1p-400;
  const omReal64 magnitude = std::max(a.magnitude(), b.magnitude());
  if (magnitude == 0 || (magnitude >= s_smallest && magnitude <= s_largest)) return 1;
  const omReal64 factor = magnitude > s_largest ? 0x1p-700 : 0x1p700;
  a.scale(factor);
  b.scale(factor);
  return factor;
}

bool isBefore(const PlanarFigure& a, const PlanarFigure& b) {
  if (const int order = compareRanges(a.segments, b.segments, compareSegments); order != 0) return order < 0;
  if (const int order = compareRanges(numbersOf(a.arc), numbersOf(b.arc), compareNumbers); order != 0) return order < 0;
  if (a.ringEnds != b.ringEnds) return a.ringEnds < b.ringEnds;
  return numbersOf(a.circularArc) < numbersOf(b.circularArc);
}

}  // namespace ormix::geom::detail
