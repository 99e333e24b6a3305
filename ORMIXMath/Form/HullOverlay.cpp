#include "HullOverlay.h"

#include <ORMIXMath/Algebra/VectorArithmetic.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace ormix::detail {

namespace {

/// The edges of a hull, each directed one with the facet to its left, sorted by where they start.
class HullGraph {
 public:
  struct Edge {
    omUInt32 from;
    omUInt32 to;
    omUInt32 facet;
  };

  HullGraph(std::size_t nbPoints, const std::vector<IndexTriangle>& facets) : _first(nbPoints + 1, 0) {
    _edges.resize(3 * facets.size());
    for (const IndexTriangle& facet : facets)
      for (const omUInt32 vertex : facet) ++_first[vertex + 1];
    for (std::size_t i = 0; i < nbPoints; ++i) _first[i + 1] += _first[i];
    std::vector<std::size_t> next(_first.begin(), _first.end() - 1);
    for (std::size_t f = 0; f < facets.size(); ++f)
      for (std::size_t k = 0; k < 3; ++k) {
        const omUInt32 from = facets[f][k];
        _edges[next[from]++] = {from, facets[f][(k + 1) % 3], static_cast<omUInt32>(f)};
      }
  }

  const Edge* begin(omUInt32 vertex) const { return _edges.data() + _first[vertex]; }
  const Edge* end(omUInt32 vertex) const { return _edges.data() + _first[vertex + 1]; }
  const std::vector<Edge>& edges() const { return _edges; }

  /// The facet on the other side of an edge.
  omUInt32 facetBeyond(const Edge& edge) const {
    const Edge* found = std::find_if(begin(edge.to), end(edge.to), [&](const Edge& e) { return e.to == edge.from; });
    return found->facet;
  }

 private:
  std::vector<std::size_t> _first;
  std::vector<Edge> _edges;
};

class Overlay {
 public:
  Overlay(const std::vector<SpatialPoint>& points, const std::vector<IndexTriangle>& facets,
          const std::function<void(const AntipodalPair&)>& visit)
      : _points(points), _facets(facets), _visit(visit), _graph(points.size(), facets) {}

  void run() {
    std::vector<omUInt32> opposite(_facets.size(), s_none);
    std::vector<omUInt32> waiting{0};
    opposite[0] = climb(_facets[0][0], normal(0));
    // From neighbour to neighbour, so that climbs are short.
    while (!waiting.empty()) {
      const omUInt32 facet = waiting.back();
      waiting.pop_back();
      _visit({normal(facet), _facets[facet][0], opposite[facet]});
      for (std::size_t k = 0; k < 3; ++k) {
        const HullGraph::Edge edge{_facets[facet][k], _facets[facet][(k + 1) % 3], facet};
        const omUInt32 beyond = _graph.facetBeyond(edge);
        if (opposite[beyond] == s_none) {
          opposite[beyond] = climb(opposite[facet], normal(beyond));
          waiting.push_back(beyond);
        }
        if (facet < beyond) turn(edge, opposite[facet], normal(facet), normal(beyond));
      }
    }
  }

 private:
  static constexpr omUInt32 s_none = 0xFFFFFFFF;

  SpatialPoint normal(omUInt32 facet) const {
    const IndexTriangle& f = _facets[facet];
    const SpatialPoint n = cross(_points[f[1]] - _points[f[0]], _points[f[2]] - _points[f[0]]);
    const omReal64 length = std::sqrt(dot(n, n));
    return length > 0 ? n / length : n;
  }

  /// The vertex lowest along a direction.
  omUInt32 climb(omUInt32 vertex, const SpatialPoint& direction) const {
    for (;;) {
      omUInt32 next = vertex;
      omReal64 lowest = 0;
      for (const HullGraph::Edge* e = _graph.begin(vertex); e != _graph.end(vertex); ++e)
        if (const omReal64 height = dot(_points[e->to] - _points[vertex], direction); height < lowest) {
          lowest = height;
          next = e->to;
        }
      if (next == vertex) break;
      vertex = next;
    }
    return vertex;
  }

  /// Visits the edges opposite to an edge while the direction turns from the normal of one of its facets to the other.
  void turn(const HullGraph::Edge& edge, omUInt32 vertex, const SpatialPoint& from, const SpatialPoint& to) const {
    const SpatialPoint change = to - from;
    const SpatialPoint along = _points[edge.to] - _points[edge.from];
    omReal64 reached = 0;
    // Each step goes to another vertex; more than all of them would be a circle made by rounding.
    for (std::size_t nbSteps = 0; nbSteps < _points.size(); ++nbSteps) {
      omReal64 nearest = 1;
      omUInt32 next = s_none;
      for (const HullGraph::Edge* e = _graph.begin(vertex); e != _graph.end(vertex); ++e) {
        const SpatialPoint step = _points[e->to] - _points[vertex];
        const omReal64 slope = dot(step, change);
        if (!(slope < 0)) continue;
        const omReal64 part = std::max(-dot(step, from) / slope, reached);
        if (part < nearest) {
          nearest = part;
          next = e->to;
        }
      }
      if (next == s_none) return;
      SpatialPoint direction = cross(along, _points[next] - _points[vertex]);
      if (dot(direction, from + to) < 0) direction = direction * -1.0;
      _visit({direction, edge.from, vertex});
      vertex = next;
      reached = nearest;
    }
  }

  const std::vector<SpatialPoint>& _points;
  const std::vector<IndexTriangle>& _facets;
  const std::function<void(const AntipodalPair&)>& _visit;
  HullGraph _graph;
};

}  // namespace

void visitAntipodalPairs(const std::vector<SpatialPoint>& points, const std::vector<IndexTriangle>& facets,
                         const std::function<void(const AntipodalPair&)>& visit) {
  if (!facets.empty()) Overlay(points, facets, visit).run();
}

}  // namespace ormix::detail
