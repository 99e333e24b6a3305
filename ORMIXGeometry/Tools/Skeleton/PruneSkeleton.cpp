#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Skeleton/PruneSkeleton.h>
#include <ORMIXGeometry/Tools/Skeleton/SubSkeleton.h>

#include <algorithm>
#include <limits>
#include <queue>
#include <tuple>

namespace ormix::geom {

namespace {

constexpr omReal64 s_never = std::numeric_limits<omReal64>::infinity();

/// The fires on the edges of a skeleton.
class Fire {
 public:
  explicit Fire(const Skeleton2d& skeleton)
      : _skeleton(skeleton),
        _thickness(skeleton.getNbEdges(), s_never),
        _vertexThickness(skeleton.getNbVertices(), 0),
        _nbUnburnt(skeleton.getNbVertices()) {
    for (omUInt32 v = 0; v < _nbUnburnt.size(); ++v) {
      const SkeletonVertex2d& vertex = skeleton.getVertexColl()[v];
      _nbUnburnt[v] = vertex.getNbEdges();
      if (vertex.isEndPoint()) leave(v, vertex.getRadius());
    }
    while (!_arrivals.empty()) {
      const Arrival arrival = _arrivals.top();
      _arrivals.pop();
      if (_thickness[arrival.edge] == s_never) arrive(arrival);
    }
  }

  const std::vector<omReal64>& thickness() const { return _thickness; }

  /// The vertices where the fire ends, one of each component without cycles.
  std::vector<omUInt32> lastVertices() const {
    std::vector<omUInt32> last;
    for (omUInt32 v = 0; v < _nbUnburnt.size(); ++v)
      if (_nbUnburnt[v] == 0) last.push_back(v);
    return last;
  }

 private:
  struct Arrival {
    omReal64 time;
    omUInt32 edge;
    omUInt32 from;
    friend bool operator<(const Arrival& a, const Arrival& b) {
      // The earliest is on top; equal times in order of the edges, so that the result does not depend on the queue.
      return std::tie(b.time, b.edge, b.from) < std::tie(a.time, a.edge, a.from);
    }
  };

  /// The fire leaves a vertex by its last edge.
  void leave(omUInt32 vertex, omReal64 time) {
    for (const omUInt32 edge : _skeleton.getVertexColl()[vertex].getEdgeIndexColl())
      if (_thickness[edge] == s_never) {
        _arrivals.push({time + _skeleton.getCurve(edge).length(), edge, vertex});
        return;
      }
  }

  void arrive(const Arrival& arrival) {
    const AxisEdge& edge = _skeleton.getEdgeColl()[arrival.edge];
    const omUInt32 to = edge.vertices[0] == arrival.from ? edge.vertices[1] : edge.vertices[0];
    // Never less than behind, as rounding would leave islands on the way where thickness is the same.
    const omReal64 thickness =
        std::max(arrival.time - _skeleton.getVertexColl()[to].getRadius(), _vertexThickness[arrival.from]);
    _thickness[arrival.edge] = std::max(thickness, 0.0);
    _vertexThickness[to] = std::max(_vertexThickness[to], _thickness[arrival.edge]);
    if (--_nbUnburnt[to] == 1) leave(to, arrival.time);
  }

  const Skeleton2d& _skeleton;
  std::vector<omReal64> _thickness;        // of edges
  std::vector<omReal64> _vertexThickness;  // the greatest of the edges that burnt towards each vertex
  std::vector<std::size_t> _nbUnburnt;     // ends of edges at each vertex
  std::priority_queue<Arrival> _arrivals;
};

}  // namespace

std::vector<omReal64> erosionThickness(const Skeleton2d& skeleton) { return Fire(skeleton).thickness(); }

Skeleton2d pruneSkeleton(const Skeleton2d& skeleton, omReal64 threshold, PruningReport* report) {
  if (!(threshold >= 0))
    logAndThrow("The threshold of pruning is " + std::to_string(threshold) + ", not a number of at least 0", __func__,
                __FILE__, __LINE__);
  const Fire fire(skeleton);
  PruningReport done;
  std::vector<char> stays(skeleton.getNbEdges(), 1);
  for (std::size_t e = 0; e < stays.size(); ++e) {
    const omReal64 thickness = fire.thickness()[e];
    if (thickness > threshold) continue;
    stays[e] = 0;
    ++done.nbPrunedEdges;
    done.distanceBound = std::max(done.distanceBound, thickness);
  }
  if (report) *report = done;
  return detail::subSkeleton(skeleton, stays, fire.lastVertices());
}

}  // namespace ormix::geom
