#include <ORMIXGeometry/Entity/3d/Mesh/EdgeIndex.h>
#include <ORMIXGeometry/Tools/Mesh/RepairMesh.h>
#include <ORMIXMath/Index/DisjointSets.h>

#include <algorithm>

namespace ormix::geom::detail {

namespace {

/// Halves an edge: the triangles on both of its sides become two each.
void halve(RepairMesh& mesh, omUInt32 side, RepairReport& report) {
  const omUInt32 other = mesh.oppositeColl[side];
  const omUInt32 middle = mesh.addVertex((mesh.at(mesh.start(side)) + mesh.at(mesh.end(side))) / 2);
  ++report.nbAddedVertices;
  ++report.nbSplitEdges;
  // The triangle (a, b, c) with the side from a to b becomes (a, m, c) in its place and (m, b, c); `half` runs from m
  // to b.
  const auto halveTriangle = [&](omUInt32 from) {
    const omUInt32 b = mesh.end(from), c = mesh.start(RepairMesh::previous(from));
    const omUInt32 beyond = mesh.oppositeColl[RepairMesh::next(from)];
    const omUInt32 half = mesh.addTriangle(middle, b, c);
    mesh.indexColl[RepairMesh::next(from)] = middle;
    if (beyond != RepairMesh::s_none) mesh.join(half + 1, beyond);
    mesh.join(half + 2, RepairMesh::next(from));
    ++report.nbAddedTriangles;
    return half;
  };
  const omUInt32 half = halveTriangle(side);
  if (other == RepairMesh::s_none) return;
  const omUInt32 otherHalf = halveTriangle(other);
  mesh.join(side, otherHalf);
  mesh.join(other, half);
}

}  // namespace

void splitVertices(RepairMesh& mesh, RepairReport& report) {
  // Corners that sides join lie in the same fan, which the lowest of them stands for.
  const std::size_t nbCorners = mesh.indexColl.size();
  ormix::detail::DisjointSets fans(nbCorners);
  for (omUInt32 side = 0; side < nbCorners; ++side) {
    const omUInt32 other = mesh.oppositeColl[side];
    if (other == RepairMesh::s_none || other < side) continue;
    fans.unite(side, RepairMesh::next(other));
    fans.unite(RepairMesh::next(side), other);
  }
  std::vector<bool> isTaken(mesh.pointColl.size());
  for (omUInt32 corner = 0; corner < nbCorners; ++corner) {
    const omUInt32 first = fans.lowest(corner), vertex = mesh.indexColl[corner];
    if (first != corner) {
      mesh.indexColl[corner] = mesh.indexColl[first];
    } else if (!isTaken[vertex]) {
      isTaken[vertex] = true;
    } else {
      mesh.indexColl[corner] = static_cast<omUInt32>(mesh.pointColl.size());
      mesh.pointColl.push_back(SpatialPoint(mesh.pointColl[vertex]));
      mesh.originColl.push_back(omUInt32(mesh.originColl[vertex]));
      ++report.nbSplitVertices;
    }
  }
}

void splitRepeatedEdges(RepairMesh& mesh, RepairReport& report) {
  // Halving changes the sides of two triangles, so that an edge of theirs waits for the next round. There are hardly
  // ever two rounds; the limit bounds the time for contrived meshes.
  constexpr int mostRounds = 64;
  for (int round = 0; round < mostRounds; ++round) {
    std::vector<omUInt32> repeated;
    EdgeIndex edges(mesh.pointColl.size(), mesh.indexColl.data(), mesh.getNbTriangles());
    edges.visitEdges([&](omUInt32, const EdgeIndex::Side* first, const EdgeIndex::Side* last) {
      const omUInt32 kept = first->sideIdx, joined = mesh.oppositeColl[kept];
      for (const EdgeIndex::Side* side = first + 1; side != last; ++side) {
        const omUInt32 other = mesh.oppositeColl[side->sideIdx];
        if (side->sideIdx != joined && (other == RepairMesh::s_none || side->sideIdx < other))
          repeated.push_back(side->sideIdx);
      }
    });
    if (repeated.empty()) return;
    std::vector<bool> isChanged(mesh.getNbTriangles());
    for (const omUInt32 side : repeated) {
      const omUInt32 other = mesh.oppositeColl[side] == RepairMesh::s_none ? side : mesh.oppositeColl[side];
      if (isChanged[side / 3] || isChanged[other / 3]) continue;
      isChanged[side / 3] = isChanged[other / 3] = true;
      halve(mesh, side, report);
    }
  }
  report.log.emplace_back("some edges still have the same ends as others");
}

}  // namespace ormix::geom::detail
