#include <ORMIXGeometry/Tools/Skeleton/SkeletonPaths.h>
#include <ORMIXMath/Index/DisjointSets.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

namespace ormix::geom {

namespace {

constexpr omUInt32 s_none = std::numeric_limits<omUInt32>::max();

std::vector<omReal64> edgeLengths(const Skeleton2d& skeleton) {
  std::vector<omReal64> lengths(skeleton.getNbEdges());
  for (std::size_t e = 0; e < lengths.size(); ++e) lengths[e] = skeleton.getCurve(e).length();
  return lengths;
}

/// Follows edges from a vertex until the next end point or branch point, or until the path is closed.
SkeletonPath follow(const Skeleton2d& skeleton, omUInt32 vertexIdx, omUInt32 edgeIdx, std::vector<char>& isVisited) {
  SkeletonPath path;
  path.startVertexIdx = path.endVertexIdx = vertexIdx;
  while (!isVisited[edgeIdx]) {
    isVisited[edgeIdx] = 1;
    const AxisEdge& edge = skeleton.getEdgeColl()[edgeIdx];
    const bool isReversed = edge.vertices[0] != path.endVertexIdx;
    path.steps.push_back({edgeIdx, isReversed});
    path.length += skeleton.getCurve(edgeIdx).length();
    path.endVertexIdx = edge.vertices[isReversed ? 0 : 1];
    const auto& edges = skeleton.getVertexColl()[path.endVertexIdx].getEdgeIndexColl();
    if (edges.size() != 2 || path.endVertexIdx == vertexIdx) break;
    edgeIdx = edges[0] == edgeIdx ? edges[1] : edges[0];
  }
  return path;
}

/// A forest of edges, and distances in it.
class Forest {
 public:
  Forest(const Skeleton2d& skeleton, std::vector<char> isInForest)
      : _skeleton(skeleton),
        _isInForest(std::move(isInForest)),
        _lengths(edgeLengths(skeleton)),
        _distance(skeleton.getNbVertices()),
        _edgeTo(skeleton.getNbVertices()) {}

  /// The vertex farthest from another of its tree; afterwards distanceTo() and pathTo() are those from the latter.
  omUInt32 farthestFrom(omUInt32 start) {
    omUInt32 farthest = start;
    _distance[start] = 0;
    _edgeTo[start] = s_none;
    _tree.assign(1, start);
    for (std::size_t next = 0; next < _tree.size(); ++next) {
      const omUInt32 from = _tree[next];
      if (_distance[from] > _distance[farthest]) farthest = from;
      for (const omUInt32 e : _skeleton.getVertexColl()[from].getEdgeIndexColl()) {
        if (!_isInForest[e] || e == _edgeTo[from]) continue;
        const omUInt32 to = otherEnd(e, from);
        _distance[to] = _distance[from] + _lengths[e];
        _edgeTo[to] = e;
        _tree.push_back(to);
      }
    }
    return farthest;
  }
  omReal64 distanceTo(omUInt32 vertex) const { return _distance[vertex]; }
  const std::vector<omUInt32>& tree() const { return _tree; }  ///< vertices of the last tree

  SkeletonPath pathTo(omUInt32 end) const {
    SkeletonPath path;
    path.endVertexIdx = path.startVertexIdx = end;
    path.length = _distance[end];
    for (omUInt32 at = end; _edgeTo[at] != s_none; at = path.startVertexIdx) {
      path.steps.push_back({_edgeTo[at], _skeleton.getEdgeColl()[_edgeTo[at]].vertices[1] != at});
      path.startVertexIdx = otherEnd(_edgeTo[at], at);
    }
    std::reverse(path.steps.begin(), path.steps.end());
    return path;
  }

 private:
  omUInt32 otherEnd(omUInt32 edgeIdx, omUInt32 vertexIdx) const {
    const AxisEdge& edge = _skeleton.getEdgeColl()[edgeIdx];
    return edge.vertices[0] == vertexIdx ? edge.vertices[1] : edge.vertices[0];
  }

  const Skeleton2d& _skeleton;
  std::vector<char> _isInForest;
  std::vector<omReal64> _lengths;
  std::vector<omReal64> _distance;
  std::vector<omUInt32> _edgeTo;
  std::vector<omUInt32> _tree;
};

/// The edges of a spanning forest, the widest first.
std::vector<char> widestForest(const Skeleton2d& skeleton) {
  std::vector<omUInt32> order(skeleton.getNbEdges());
  std::iota(order.begin(), order.end(), omUInt32{0});
  std::vector<omReal64> width(order.size());
  for (std::size_t e = 0; e < width.size(); ++e) width[e] = skeleton.getCurve(e).leastRadius();
  std::stable_sort(order.begin(), order.end(), [&](omUInt32 a, omUInt32 b) { return width[a] > width[b]; });
  ormix::detail::DisjointSets components(skeleton.getNbVertices());
  std::vector<char> isInForest(order.size(), 0);
  for (const omUInt32 e : order) {
    const AxisEdge& edge = skeleton.getEdgeColl()[e];
    isInForest[e] = components.unite(edge.vertices[0], edge.vertices[1]);
  }
  return isInForest;
}

}  // namespace

SkeletonCounts countsOf(const Skeleton2d& skeleton) {
  SkeletonCounts counts;
  ormix::detail::DisjointSets components(skeleton.getNbVertices());
  counts.nbComponents = skeleton.getNbVertices();
  for (const AxisEdge& edge : skeleton.getEdgeColl())
    if (components.unite(edge.vertices[0], edge.vertices[1])) --counts.nbComponents;
  counts.nbCycles = skeleton.getNbEdges() + counts.nbComponents - skeleton.getNbVertices();
  for (const SkeletonVertex2d& vertex : skeleton.getVertexColl()) {
    if (vertex.isEndPoint()) ++counts.nbEndPoints;
    if (vertex.isBranchPoint()) ++counts.nbBranchPoints;
  }
  for (const omReal64 length : edgeLengths(skeleton)) counts.length += length;
  return counts;
}

std::vector<SkeletonPath> branchesOf(const Skeleton2d& skeleton) {
  std::vector<SkeletonPath> branches;
  std::vector<char> isVisited(skeleton.getNbEdges(), 0);
  const auto followFrom = [&](bool fromPassages) {
    for (omUInt32 v = 0; v < skeleton.getNbVertices(); ++v) {
      const SkeletonVertex2d& vertex = skeleton.getVertexColl()[v];
      if ((vertex.getNbEdges() == 2) != fromPassages) continue;
      for (const omUInt32 e : vertex.getEdgeIndexColl())
        if (!isVisited[e]) branches.push_back(follow(skeleton, v, e, isVisited));
    }
  };
  followFrom(false);
  followFrom(true);  // what is left are cycles
  return branches;
}

SkeletonPath longestPath(const Skeleton2d& skeleton) {
  Forest forest(skeleton, widestForest(skeleton));
  std::vector<char> isSeen(skeleton.getNbVertices(), 0);
  SkeletonPath longest;
  for (omUInt32 v = 0; v < skeleton.getNbVertices(); ++v) {
    if (isSeen[v]) continue;
    // In a tree the vertex farthest from any other is an end of a longest path.
    const omUInt32 start = forest.farthestFrom(v);
    for (const omUInt32 of : forest.tree()) isSeen[of] = 1;
    const omUInt32 end = forest.farthestFrom(start);
    if (longest.steps.empty() || forest.distanceTo(end) > longest.length) longest = forest.pathTo(end);
  }
  return longest;
}

}  // namespace ormix::geom
