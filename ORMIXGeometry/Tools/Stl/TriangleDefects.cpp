#include <ORMIXGeometry/Entity/3d/Mesh/EdgeIndex.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopologyChecks.h>
#include <ORMIXGeometry/Tools/Stl/TriangleDefects.h>
#include <ORMIXGeometry/Tools/Stl/TripleTable.h>
#include <ORMIXMath/Index/DisjointSets.h>

#include <algorithm>

namespace ormix::geom {

namespace {

/// Counts the triangles with the same three corners as an earlier one, in any order.
std::size_t countDuplicates(const std::vector<omUInt32>& vertexIndexColl, std::size_t nbProper) {
  detail::TripleTable table(2 * nbProper);
  for (std::size_t first = 0; first < vertexIndexColl.size(); first += 3) {
    const omUInt32 a = vertexIndexColl[first], b = vertexIndexColl[first + 1], c = vertexIndexColl[first + 2];
    if (detail::hasEqualCorners(&vertexIndexColl[first])) continue;
    const omUInt32 lowest = std::min({a, b, c}), highest = std::max({a, b, c});
    table.add({lowest, a ^ b ^ c ^ lowest ^ highest, highest});
  }
  return nbProper - table.getTriples().size();
}

}  // namespace

TriangleDefects findDefects(std::size_t nbVertices, const std::vector<omUInt32>& vertexIndexColl) {
  TriangleDefects defects;
  const std::size_t nbTriangles = vertexIndexColl.size() / 3;
  for (std::size_t triangle = 0; triangle < nbTriangles; ++triangle)
    defects.nbDegenerate += detail::hasEqualCorners(&vertexIndexColl[3 * triangle]) ? 1 : 0;
  const std::size_t nbProper = nbTriangles - defects.nbDegenerate;
  defects.nbDuplicate = countDuplicates(vertexIndexColl, nbProper);
  defects.nbComponents = nbProper;
  ormix::detail::DisjointSets triangles(nbTriangles), vertices(nbVertices);
  std::vector<bool> isOnBoundary(nbVertices);
  using Side = detail::EdgeIndex::Side;
  const auto ascends = [&vertexIndexColl](const Side& side) {
    return vertexIndexColl[side.sideIdx] < side.higherVertexIdx;
  };
  detail::EdgeIndex edges(nbVertices, vertexIndexColl.data(), nbTriangles);
  edges.visitEdges([&](omUInt32 vertex, const Side* first, const Side* last) {
    ++defects.nbEdges;
    for (const Side* side = first + 1; side < last; ++side)
      if (triangles.unite(first->sideIdx / 3, side->sideIdx / 3)) --defects.nbComponents;
    if (last - first == 1) {
      ++defects.nbBoundaryEdges;
      // The number of connected chains is that of their vertices minus that of the edges that unite two chains.
      for (const omUInt32 end : {vertex, first->higherVertexIdx}) {
        if (!isOnBoundary[end]) ++defects.nbBoundaryLoops;
        isOnBoundary[end] = true;
      }
      if (vertices.unite(vertex, first->higherVertexIdx)) --defects.nbBoundaryLoops;
    } else if (last - first > 2) {
      ++defects.nbNonManifoldEdges;
    } else if (ascends(first[0]) == ascends(first[1])) {
      ++defects.nbFlippedNeighbours;
    }
  });
  return defects;
}

}  // namespace ormix::geom
