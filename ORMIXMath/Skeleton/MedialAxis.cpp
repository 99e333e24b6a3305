#include <ORMIXMath/Index/DisjointSets.h>
#include <ORMIXMath/Skeleton/MedialAxis.h>
#include <ORMIXMath/Skeleton/VoronoiAxis.h>

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

namespace ormix {

using namespace detail;

namespace {

/// Which of two vertices stands for both: that of a corner, else the center of the larger circle.
bool standsFor(const AxisVertex& a, const AxisVertex& b) {
  if ((a.radius == 0) != (b.radius == 0)) return a.radius == 0;
  return a.radius >= b.radius;
}

/// Shrinks short edges, shortest first. An edge that would close a cycle and a pair of corners stay. Where many parts
/// are equally far from one point, as in the middle of a regular polygon, snapping makes as many short edges around it,
/// in a neighborhood that may be wider than each of them; therefore a vertex may move by many lengths, but not by any
/// number.
void mergeEdges(GridAxis& axis, omReal64 mergeLength, MedialAxisReport& report) {
  std::vector<std::pair<omReal64, std::size_t>> shortEdges;
  for (std::size_t e = 0; e < axis.edges.size(); ++e) {
    const PlanarPoint &a = axis.vertices[axis.edges[e].vertices[0]].point,
                      &b = axis.vertices[axis.edges[e].vertices[1]].point;
    const omReal64 length = std::hypot(b.x - a.x, b.y - a.y);
    if (length <= mergeLength) shortEdges.emplace_back(length, e);
  }
  if (shortEdges.empty()) return;
  constexpr omReal64 s_mostLengths = 16;
  std::sort(shortEdges.begin(), shortEdges.end());
  DisjointSets sets(axis.vertices.size());
  std::vector<omReal64> reach(axis.vertices.size(), 0);  // of each set's vertex to the others
  std::vector<char> isMerged(axis.edges.size(), 0);
  for (const auto& [edgeLength, e] : shortEdges) {
    omUInt32 stays = sets.lowest(axis.edges[e].vertices[0]), goes = sets.lowest(axis.edges[e].vertices[1]);
    if (!standsFor(axis.vertices[stays], axis.vertices[goes])) std::swap(stays, goes);
    const AxisVertex to = axis.vertices[stays], from = axis.vertices[goes];
    const omReal64 moved = std::hypot(to.point.x - from.point.x, to.point.y - from.point.y) + reach[goes];
    if (stays == goes || moved > s_mostLengths * mergeLength || from.radius == 0) continue;
    sets.unite(stays, goes);
    const omUInt32 lowest = std::min(stays, goes);
    reach[lowest] = std::max(reach[stays], moved);
    axis.vertices[lowest] = to;
    axis.vertexToSector[lowest] = axis.vertexToSector[stays];
    isMerged[e] = 1;
    ++report.nbMergedEdges;
  }
  std::vector<AxisEdge> edges;
  edges.reserve(axis.edges.size() - report.nbMergedEdges);
  for (std::size_t e = 0; e < axis.edges.size(); ++e) {
    if (isMerged[e]) continue;
    AxisEdge edge = axis.edges[e];
    for (omUInt32& vertex : edge.vertices) vertex = sets.lowest(vertex);
    edges.push_back(edge);
  }
  axis.edges = std::move(edges);
}

/// Makes the vertices in the corners of sectors one where a ring leads from one sector into the next.
void joinSectors(const SnappedBoundary& boundary, const BoundaryGraph& graph, GridAxis& axis) {
  DisjointSets sectors(boundary.edges.size());
  bool isAnyJoined = false;
  for (std::size_t e = 0; e < boundary.edges.size(); ++e)
    isAnyJoined |= sectors.unite(graph.faceNext[e], boundary.edges[e].next);
  if (!isAnyJoined) return;
  std::vector<omUInt32> sectorToVertex(boundary.edges.size(), s_none);
  std::vector<omUInt32> replacement(axis.vertices.size());
  for (std::size_t v = 0; v < replacement.size(); ++v) {
    replacement[v] = static_cast<omUInt32>(v);
    if (axis.vertexToSector[v] == s_none) continue;
    omUInt32& first = sectorToVertex[sectors.lowest(axis.vertexToSector[v])];
    if (first == s_none) first = static_cast<omUInt32>(v);
    replacement[v] = first;
  }
  for (AxisEdge& edge : axis.edges)
    for (omUInt32& vertex : edge.vertices) vertex = replacement[vertex];
}

/// Turns indices into those of the values that are in use, in the order of `isBefore`.
template <class IsBefore>
std::vector<omUInt32> usedInOrder(std::vector<omUInt32>& newIndex, IsBefore isBefore) {
  std::vector<omUInt32> used;
  for (std::size_t i = 0; i < newIndex.size(); ++i)
    if (newIndex[i] != s_none) used.push_back(static_cast<omUInt32>(i));
  std::sort(used.begin(), used.end(), isBefore);
  for (std::size_t i = 0; i < used.size(); ++i) newIndex[used[i]] = static_cast<omUInt32>(i);
  return used;
}

/// The axis in the unit of the caller, with the vertices and parts that its edges use.
MedialAxis toMedialAxis(const SnappedBoundary& boundary, const BoundaryGraph& graph, const GridAxis& axis) {
  const auto nbEdges = static_cast<omUInt32>(boundary.edges.size());
  const auto partOf = [&](omUInt32 index) {
    const bool isVertex = index >= nbEdges;
    const GridEdge& edge = boundary.edges[isVertex ? graph.vertexToEdge[index - nbEdges] : index];
    const PlanarPoint start = boundary.grid.fromGrid(toPlanarPoint(edge.start.x, edge.start.y));
    const PlanarPoint end = isVertex ? start : boundary.grid.fromGrid(toPlanarPoint(edge.end.x, edge.end.y));
    const bool isOwnVertex = isVertex && edge.startPointIdx != s_none;
    return AxisPart{start, end, edge.ringIdx, isOwnVertex ? edge.startPointIdx : edge.pointIdx, isVertex};
  };
  std::vector<omUInt32> newVertex(axis.vertices.size(), s_none), newPart(nbEdges + graph.vertexToEdge.size(), s_none);
  for (const AxisEdge& edge : axis.edges)
    for (const int side : {0, 1}) newVertex[edge.vertices[side]] = newPart[edge.parts[side]] = 0;
  MedialAxis result;
  for (const omUInt32 v : usedInOrder(newVertex, std::less<>()))
    result.vertices.push_back(
        {boundary.grid.fromGrid(axis.vertices[v].point), boundary.grid.lengthFromGrid(axis.vertices[v].radius)});
  const auto key = [&](omUInt32 index) {
    const bool isVertex = index >= nbEdges;
    const GridEdge& edge = boundary.edges[isVertex ? graph.vertexToEdge[index - nbEdges] : index];
    return std::make_tuple(edge.ringIdx, edge.pointIdx, !isVertex, index);
  };
  for (const omUInt32 p : usedInOrder(newPart, [&](omUInt32 a, omUInt32 b) { return key(a) < key(b); }))
    result.parts.push_back(partOf(p));
  result.edges.reserve(axis.edges.size());
  for (const AxisEdge& edge : axis.edges)
    result.edges.push_back(
        {{newVertex[edge.vertices[0]], newVertex[edge.vertices[1]]}, {newPart[edge.parts[0]], newPart[edge.parts[1]]}});
  return result;
}

/// One attempt with the region turned by an angle.
/// \param isWorthRepeating set to whether another angle may help
BoolResult attempt(const std::vector<BoundaryRing>& rings, omReal64 angle, const MedialAxisOptions& options,
                   MedialAxis& axis, MedialAxisReport& report, bool& isWorthRepeating) {
  const std::size_t nbAttempts = report.nbAttempts + 1;
  report = MedialAxisReport();
  report.nbAttempts = nbAttempts;
  isWorthRepeating = false;
  SnappedBoundary boundary;
  if (const BoolResult snapped = snapBoundary(rings, angle, boundary, report); !snapped) return snapped;
  BoundaryGraph graph;
  if (const BoolResult built = buildBoundaryGraph(boundary, graph); !built) return built;
  isWorthRepeating = true;
  GridAxis gridAxis;
  if (const BoolResult made = voronoiAxis(boundary, graph, gridAxis); !made) return made;
  if (const BoolResult checked = checkAxis(boundary, graph, gridAxis, report.areaError); !checked) return checked;
  report.nbComponents = graph.nbFaces;
  report.nbCycles = graph.nbWalks - graph.nbFaces;
  mergeEdges(gridAxis, options.mergeLength, report);
  joinSectors(boundary, graph, gridAxis);
  axis = toMedialAxis(boundary, graph, gridAxis);
  return true;
}

}  // namespace

BoolResult medialAxis(const std::vector<BoundaryRing>& rings, const MedialAxisOptions& options, MedialAxis& axis,
                      MedialAxisReport* report) {
  // Angles in radians that no two of which share directions of the grid.
  constexpr std::array<omReal64, 4> s_angles{0.0, 0.5, 0.1, 1.1};
  MedialAxisReport own;
  MedialAxisReport& used = report ? *report : own;
  used = MedialAxisReport();
  MedialAxis found;
  BoolResult result = failure("The merge length is not a number of at least 0");
  if (!(options.mergeLength >= 0)) return result;
  bool isWorthRepeating = true;
  for (std::size_t i = 0; i < s_angles.size() && !result && isWorthRepeating; ++i)
    result = attempt(rings, s_angles[i], options, found, used, isWorthRepeating);
  if (!result && isWorthRepeating)
    result = failure(result.getMessage() + ", turned or not; are holes inside, and polygons apart?");
  if (result) axis = std::move(found);
  return result;
}

}  // namespace ormix
