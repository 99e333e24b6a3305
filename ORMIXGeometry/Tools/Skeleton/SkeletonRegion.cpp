#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Skeleton/SkeletonRegion.h>
#include <ORMIXMath/Index/DisjointSets.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/Ring.h>

#include <algorithm>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <cmath>
#include <utility>

namespace ormix::geom {

namespace {

using Ring = std::vector<Point2dData<omReal64>>;
using Node = PolygonWithHoles2d<omReal64>;

omReal64 directionTo(const PlanarPoint& from, const PlanarPoint& to) {
  return std::atan2(to.y - from.y, to.x - from.x);
}

/// The half-edges of a skeleton: 2e leads along edge e, 2e + 1 against it.
class BoundaryWalk {
 public:
  BoundaryWalk(const Skeleton2d& skeleton, omReal64 tolerance)
      : _skeleton(skeleton), _tolerance(tolerance), _next(2 * skeleton.getNbEdges()) {
    for (omUInt32 v = 0; v < skeleton.getNbVertices(); ++v) linkAround(v);
  }

  /// The ring to the left of a half-edge, with the region to its right as the walk is inside; marks what it passes.
  Ring ringOf(omUInt32 halfEdge, std::vector<char>& isVisited) {
    _ring.clear();
    for (; !isVisited[halfEdge]; halfEdge = _next[halfEdge]) {
      isVisited[halfEdge] = 1;
      add(halfEdge, 0);
      add(halfEdge, 1);
      turn(halfEdge, _next[halfEdge]);
    }
    return corners();
  }

  /// The circle around a vertex without edges.
  Ring circleAround(const SkeletonVertex2d& vertex) {
    _ring.clear();
    addArc({vertex.getPoint().getX(), vertex.getPoint().getY()}, vertex.getRadius(), 0, 2 * s_pi);
    return corners();
  }

 private:
  struct WalkPoint {
    PlanarPoint point;
    bool isCorner;
  };

  const AxisEdge& edgeOf(omUInt32 halfEdge) const { return _skeleton.getEdgeColl()[halfEdge / 2]; }
  omUInt32 leftPart(omUInt32 halfEdge) const { return edgeOf(halfEdge).parts[halfEdge % 2]; }
  omUInt32 endVertex(omUInt32 halfEdge) const { return edgeOf(halfEdge).vertices[1 - halfEdge % 2]; }
  /// Where the circle around its first or last vertex touches the boundary on its left.
  PlanarPoint contact(omUInt32 halfEdge, int end) const {
    const int isReversed = static_cast<int>(halfEdge % 2);
    return _skeleton.getCurve(halfEdge / 2).contact(isReversed, isReversed == 1 ? 1 - end : end);
  }

  /// Links the half-edges that arrive at a vertex with those that leave it. Each that leaves has a sector of the circle
  /// between its contacts, and sectors do not overlap.
  void linkAround(omUInt32 vertexIdx) {
    const SkeletonVertex2d& vertex = _skeleton.getVertexColl()[vertexIdx];
    const PlanarPoint center{vertex.getPoint().getX(), vertex.getPoint().getY()};
    std::vector<std::pair<omReal64, omUInt32>> leaving;
    for (const omUInt32 e : vertex.getEdgeIndexColl())
      for (const omUInt32 halfEdge : {2 * e, 2 * e + 1}) {
        if (edgeOf(halfEdge).vertices[halfEdge % 2] != vertexIdx) continue;
        const auto isSame = [halfEdge](const auto& other) { return other.second == halfEdge; };
        if (std::any_of(leaving.begin(), leaving.end(), isSame)) continue;
        leaving.emplace_back(directionOf(halfEdge, center, vertex.getRadius()), halfEdge);
      }
    std::sort(leaving.begin(), leaving.end());
    // To keep the boundary on the left, go on with the half-edge that comes before the way back.
    for (std::size_t i = 0; i < leaving.size(); ++i)
      _next[leaving[i].second ^ 1u] = leaving[i == 0 ? leaving.size() - 1 : i - 1].second;
  }

  omReal64 directionOf(omUInt32 halfEdge, const PlanarPoint& center, omReal64 radius) const {
    const AxisCurve curve = _skeleton.getCurve(halfEdge / 2);
    const bool isReversed = halfEdge % 2 == 1;
    if (radius > 0) return directionTo(center, curve.contact(isReversed ? 0 : 1, isReversed ? 1 : 0));
    return directionTo(center, curve.isArc() ? curve.control() : curve.point(isReversed ? 0 : 1));
  }

  /// Adds a contact: a corner of the boundary, or a point inside of a straight part of it.
  void add(omUInt32 halfEdge, int end) {
    const omUInt32 vertex = edgeOf(halfEdge).vertices[end == 0 ? halfEdge % 2 : 1 - halfEdge % 2];
    const bool isCorner =
        _skeleton.getPartColl()[leftPart(halfEdge)].isVertex || _skeleton.getVertexColl()[vertex].getRadius() == 0;
    _ring.push_back({contact(halfEdge, end), isCorner});
  }

  /// Follows the circle around the vertex between two half-edges, where a branch was between them.
  void turn(omUInt32 arriving, omUInt32 leaving) {
    if (leftPart(arriving) == leftPart(leaving)) return;
    const SkeletonVertex2d& vertex = _skeleton.getVertexColl()[endVertex(arriving)];
    const PlanarPoint center{vertex.getPoint().getX(), vertex.getPoint().getY()};
    const PlanarPoint from = contact(arriving, 1), to = contact(leaving, 0);
    // Rounding of contacts, and of vertices that short edges were shrunk to, is far below this.
    constexpr omReal64 s_samePoint = 1e-6;
    if (std::hypot(to.x - from.x, to.y - from.y) <= s_samePoint * vertex.getRadius()) return;
    _ring.back().isCorner = true;
    const omReal64 start = directionTo(center, from);
    omReal64 angle = start - directionTo(center, to);
    if (angle < 0) angle += 2 * s_pi;
    addArc(center, vertex.getRadius(), start, -angle);
    _ring.push_back({to, true});
  }

  /// Points of a circle strictly between two angles.
  void addArc(const PlanarPoint& center, omReal64 radius, omReal64 start, omReal64 angle) {
    // A chord over the angle a is radius·(1 − cos(a / 2)) away from its arc.
    constexpr omReal64 s_mostChords = 1e6;
    const omReal64 ratio = std::min(_tolerance / radius, 1.0);
    const omReal64 greatest = 4 * std::asin(std::sqrt(ratio / 2));
    const omReal64 nbChords = std::min(std::ceil(std::abs(angle) / greatest), s_mostChords);
    for (omReal64 i = 1; i < nbChords; ++i) {
      const omReal64 at = start + angle * (i / nbChords);
      _ring.push_back({{center.x + radius * std::cos(at), center.y + radius * std::sin(at)}, true});
    }
  }

  /// The corners of the ring, closed, in the other direction.
  Ring corners() const {
    Ring ring;
    for (auto point = _ring.rbegin(); point != _ring.rend(); ++point) {
      const Point2dData<omReal64> corner(point->point.x, point->point.y);
      if (point->isCorner && (ring.empty() || ring.back() != corner)) ring.push_back(corner);
    }
    if (!ring.empty() && ring.back() != ring.front()) ring.push_back(ring.front());
    return ring;
  }

  const Skeleton2d& _skeleton;
  omReal64 _tolerance;
  std::vector<omUInt32> _next;
  std::vector<WalkPoint> _ring;  // of the walk
};

void setRing(Node& node, Ring ring, ePolygon2dType type) {
  node.getExteriorPolygon().getPointColl() = std::move(ring);
  node.getExteriorPolygon().setPolygon2dType(type);
}

omReal64 areaOf(const Ring& ring) { return std::abs(ringSignedArea(coordinates(ring), ring.size())); }

}  // namespace

std::vector<boost::shared_ptr<PolygonWithHoles2d<omReal64>>> regionOf(const Skeleton2d& skeleton, omReal64 tolerance) {
  if (!(tolerance > 0))
    logAndThrow("The tolerance of arcs is " + std::to_string(tolerance) + ", not a number above 0", __func__, __FILE__,
                __LINE__);
  ormix::detail::DisjointSets components(skeleton.getNbVertices());
  for (const AxisEdge& edge : skeleton.getEdgeColl()) components.unite(edge.vertices[0], edge.vertices[1]);
  BoundaryWalk walk(skeleton, tolerance);
  std::vector<std::vector<Ring>> rings(
      skeleton.getNbVertices());  // of each component, at the vertex that stands for it
  std::vector<char> isVisited(2 * skeleton.getNbEdges(), 0);
  for (omUInt32 h = 0; h < isVisited.size(); ++h)
    if (!isVisited[h])
      rings[components.lowest(skeleton.getEdgeColl()[h / 2].vertices[0])].push_back(walk.ringOf(h, isVisited));
  for (omUInt32 v = 0; v < skeleton.getNbVertices(); ++v)
    if (const SkeletonVertex2d& vertex = skeleton.getVertexColl()[v]; vertex.getNbEdges() == 0)
      rings[v].push_back(walk.circleAround(vertex));

  std::vector<boost::shared_ptr<PolygonWithHoles2d<omReal64>>> region;
  for (std::vector<Ring>& of : rings) {
    if (of.empty()) continue;
    // The outer ring encloses the others.
    std::iter_swap(of.begin(), std::max_element(of.begin(), of.end(),
                                                [](const Ring& a, const Ring& b) { return areaOf(a) < areaOf(b); }));
    region.push_back(boost::make_shared<Node>());
    setRing(*region.back(), std::move(of.front()), eP2DT_Exterior);
    for (std::size_t i = 1; i < of.size(); ++i) {
      const auto hole = boost::make_shared<Node>();
      setRing(*hole, std::move(of[i]), eP2DT_Interior);
      region.back()->getPolygonHoles().push_back(hole);
    }
  }
  return region;
}

}  // namespace ormix::geom
