#include <ORMIXGeometry/Tools/Mesh/RepairMesh.h>

#include <algorithm>
#include <utility>

namespace ormix::geom::detail {

bool RepairMesh::isClosed() const {
  return std::find(oppositeColl.begin(), oppositeColl.end(), s_none) == oppositeColl.end();
}

omUInt32 RepairMesh::addTriangle(omUInt32 a, omUInt32 b, omUInt32 c) {
  const auto first = static_cast<omUInt32>(indexColl.size());
  indexColl.insert(indexColl.end(), {a, b, c});
  oppositeColl.insert(oppositeColl.end(), 3, s_none);
  return first;
}

omUInt32 RepairMesh::addVertex(const SpatialPoint& scaled) {
  pointColl.push_back(scaled / scale);
  originColl.push_back(s_none);
  return static_cast<omUInt32>(pointColl.size() - 1);
}

void RepairMesh::turn(const std::vector<bool>& isTurned) {
  // (a, b, c) becomes (a, c, b), so that the sides are met in reverse.
  const auto turned = [&](omUInt32 side) { return isTurned[side / 3] ? side - side % 3 + (2 - side % 3) : side; };
  for (std::size_t triangle = 0; triangle < isTurned.size(); ++triangle) {
    if (!isTurned[triangle]) continue;
    std::swap(indexColl[3 * triangle + 1], indexColl[3 * triangle + 2]);
    std::swap(oppositeColl[3 * triangle], oppositeColl[3 * triangle + 2]);
  }
  for (omUInt32& opposite : oppositeColl)
    if (opposite != s_none) opposite = turned(opposite);
}

void RepairMesh::remove(const std::vector<bool>& isRemoved) {
  std::vector<omUInt32> newSides(oppositeColl.size(), s_none);
  omUInt32 kept = 0;
  for (omUInt32 side = 0; side < indexColl.size(); ++side) {
    if (isRemoved[side / 3]) continue;
    indexColl[kept] = indexColl[side];
    if (!oppositeColl.empty()) {
      oppositeColl[kept] = oppositeColl[side];
      newSides[side] = kept;
    }
    ++kept;
  }
  indexColl.resize(kept);
  if (oppositeColl.empty()) return;
  oppositeColl.resize(kept);
  for (omUInt32& opposite : oppositeColl)
    if (opposite != s_none) opposite = newSides[opposite];
}

void dropUnusedVertices(RepairMesh& mesh, RepairReport& report) {
  std::vector<omUInt32> newIndices(mesh.pointColl.size(), RepairMesh::s_none);
  for (const omUInt32 vertex : mesh.indexColl) newIndices[vertex] = 0;
  omUInt32 kept = 0;
  for (std::size_t vertex = 0; vertex < newIndices.size(); ++vertex) {
    if (newIndices[vertex] == RepairMesh::s_none) continue;
    mesh.pointColl[kept] = mesh.pointColl[vertex];
    mesh.originColl[kept] = mesh.originColl[vertex];
    newIndices[vertex] = kept++;
  }
  report.nbUnusedVertices += newIndices.size() - kept - report.nbMergedVertices;
  mesh.pointColl.resize(kept);
  mesh.originColl.resize(kept);
  for (omUInt32& vertex : mesh.indexColl) vertex = newIndices[vertex];
}

}  // namespace ormix::geom::detail
