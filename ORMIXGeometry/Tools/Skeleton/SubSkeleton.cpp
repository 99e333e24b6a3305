#include <ORMIXGeometry/Tools/Skeleton/SubSkeleton.h>

namespace ormix::geom::detail {

namespace {

/// Copies the elements that are marked, and replaces the marks by their new indices.
template <class Element>
std::vector<Element> takeMarked(const std::vector<Element>& elements, std::vector<omUInt32>& marks) {
  std::vector<Element> taken;
  for (std::size_t i = 0; i < elements.size(); ++i) {
    if (marks[i] == 0) continue;
    marks[i] = static_cast<omUInt32>(taken.size());
    taken.push_back(elements[i]);
  }
  return taken;
}

}  // namespace

Skeleton2d subSkeleton(const Skeleton2d& skeleton, const std::vector<char>& isKept,
                       const std::vector<omUInt32>& moreVertices) {
  const MedialAxis whole = skeleton.toMedialAxis();
  std::vector<omUInt32> vertices(whole.vertices.size(), 0), parts(whole.parts.size(), 0);
  MedialAxis result;
  for (std::size_t e = 0; e < whole.edges.size(); ++e) {
    if (!isKept[e]) continue;
    result.edges.push_back(whole.edges[e]);
    for (const std::size_t side : {0, 1})
      vertices[whole.edges[e].vertices[side]] = parts[whole.edges[e].parts[side]] = 1;
  }
  for (const omUInt32 vertex : moreVertices) vertices[vertex] = 1;
  result.vertices = takeMarked(whole.vertices, vertices);
  result.parts = takeMarked(whole.parts, parts);
  for (AxisEdge& edge : result.edges)
    for (const std::size_t side : {0, 1}) {
      edge.vertices[side] = vertices[edge.vertices[side]];
      edge.parts[side] = parts[edge.parts[side]];
    }
  return Skeleton2d(result);
}

}  // namespace ormix::geom::detail
