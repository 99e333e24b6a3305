#include <ORMIXGeometry/Tools/Distance/Hausdorff2d.h>
#include <ORMIXGeometry/Tools/Distance/PlanarFigure.h>
#include <ORMIXMath/Distance/DirectedHausdorff.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace ormix::geom {

namespace {

using detail::PlanarFigure;
using ormix::detail::ConvexArc;
using ormix::detail::DirectedHausdorff;
using ormix::detail::PlanarSet;
using ormix::detail::SegmentSet;

// How far a polyline may be off a curve, in parts of its extent.
constexpr omReal64 s_polylineTolerance = 1e-8;

/// The points of a polyline with its vertices on the arc. A chord of an ellipse over the angle e of its parametrisation
/// is off by at most the larger radius times 1 − cos(e / 2), one of a parabola of width w by at most w^2 / (16 f).
std::vector<PlanarPoint> polylineOf(const ConvexArc& arc) {
  std::vector<PlanarPoint> points;
  if (!arc.isParabola) {
    const auto nb = static_cast<std::size_t>(std::ceil(s_pi / std::sqrt(2 * s_polylineTolerance)));
    for (std::size_t i = 0; i < nb; ++i) {
      const omReal64 angle = s_twoPi * static_cast<omReal64>(i) / static_cast<omReal64>(nb);
      points.push_back(fromFrame(arc, {arc.a * std::cos(angle), arc.b * std::sin(angle)}));
    }
    return points;
  }
  const omReal64 width = arc.to - arc.from;
  const omReal64 rise = std::abs(parabolaPoint(arc, arc.to).y - parabolaPoint(arc, arc.from).y);
  const omReal64 error = s_polylineTolerance * std::max(width, rise);
  const omReal64 step = 4 * std::sqrt(arc.a) * std::sqrt(error);
  const auto nb = static_cast<std::size_t>(width > 0 ? std::ceil(width / step) : 0) + 1;
  for (std::size_t i = 0; i <= nb; ++i) {
    const omReal64 part = static_cast<omReal64>(i) / static_cast<omReal64>(nb);
    points.push_back(fromFrame(arc, parabolaPoint(arc, arc.from + part * width)));
  }
  return points;
}

/// Makes a curve straight edges.
void straighten(PlanarFigure& figure) {
  if (figure.isUnbounded)
    detail::refuse(eToolsMessage::eTM_NotBounded, figure.className, __PRETTY_FUNCTION__, __LINE__);
  if (!figure.arc) return;
  const std::vector<PlanarPoint> points = polylineOf(*figure.arc);
  const bool isClosed = !figure.arc->isParabola;
  for (std::size_t i = 0; i + (isClosed ? 0 : 1) < points.size(); ++i)
    figure.segments.push_back({points[i], points[(i + 1) % points.size()]});
  if (isClosed) {
    for (const PlanarPoint& point : points) {
      figure.ringCoordinates.push_back(point.x);
      figure.ringCoordinates.push_back(point.y);
    }
    figure.ringEnds.push_back(figure.ringCoordinates.size());
  }
  figure.arc.reset();
}

/// An entity in the form in which it is searched.
class Side {
 public:
  Side(PlanarFigure figure, eInteriorPolicy policy)
      : _hasRegion(policy == eIP_Filled && !figure.ringEnds.empty()),
        _region(_hasRegion ? figure.rings() : PreparedRings()),
        _boundary(std::move(figure.segments), figure.order) {}

  PlanarSet set() const { return {_boundary, _hasRegion ? &_region : nullptr}; }

 private:
  bool _hasRegion;
  PreparedRings _region;
  SegmentSet _boundary;
};

/// Both sides, in units in which products stay in range.
struct Sides {
  omReal64 scale;
  Side a;
  Side b;
};
Sides sidesOf(PlanarFigure a, PlanarFigure b, eInteriorPolicy policy) {
  straighten(a);
  straighten(b);
  const omReal64 scale = detail::scaleTogether(a, b);
  return {scale, Side(std::move(a), policy), Side(std::move(b), policy)};
}

/// The answer for one direction.
/// \param isFromA whether the first set is that of a
PlanarHausdorff answerOf(const PlanarNearestPair& pair, omReal64 excess, bool isFromA, omReal64 scale) {
  const Point2dData<omReal64> farthest(pair.onA.x / scale, pair.onA.y / scale);
  const Point2dData<omReal64> nearest(pair.onB.x / scale, pair.onB.y / scale);
  return {pair.distance / scale, isFromA ? farthest : nearest, isFromA ? nearest : farthest, isFromA, excess / scale};
}

}  // namespace

PlanarHausdorff directedHausdorff(const BaseGeometryEntity2d& a, const BaseGeometryEntity2d& b,
                                  eInteriorPolicy policy) {
  const Sides sides = sidesOf(detail::figureOf(a), detail::figureOf(b), policy);
  const DirectedHausdorff there(sides.a.set(), sides.b.set(), 0);
  return answerOf(there.farthest, there.excess, true, sides.scale);
}

PlanarHausdorff hausdorff(const BaseGeometryEntity2d& a, const BaseGeometryEntity2d& b, eInteriorPolicy policy) {
  PlanarFigure figureA = detail::figureOf(a);
  PlanarFigure figureB = detail::figureOf(b);
  const bool isExchanged = isBefore(figureB, figureA);
  if (isExchanged) std::swap(figureA, figureB);
  const Sides sides = sidesOf(std::move(figureA), std::move(figureB), policy);
  const DirectedHausdorff there(sides.a.set(), sides.b.set(), 0);
  const DirectedHausdorff back(sides.b.set(), sides.a.set(), there.farthest.distance);
  const bool isThere = there.farthest.distance >= back.farthest.distance;
  const PlanarNearestPair& pair = isThere ? there.farthest : back.farthest;
  const omReal64 excess = std::max(there.farthest.distance + there.excess, pair.distance + back.excess) - pair.distance;
  return answerOf(pair, excess, isThere != isExchanged, sides.scale);
}

}  // namespace ormix::geom
