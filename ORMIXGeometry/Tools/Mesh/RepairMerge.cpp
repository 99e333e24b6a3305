#include <ORMIXGeometry/Entity/3d/Mesh/EdgeIndex.h>
#include <ORMIXGeometry/Tools/Mesh/RepairMesh.h>
#include <ORMIXGeometry/Tools/Stl/TripleTable.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace ormix::geom::detail {

namespace {

bool isFinite(const SpatialPoint& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

bool isBefore(const SpatialPoint& p, const SpatialPoint& q) {
  return p.x != q.x ? p.x < q.x : p.y != q.y ? p.y < q.y : p.z < q.z;
}

/// The vertices of edges that have one triangle.
std::vector<omUInt32> openVertices(const RepairMesh& mesh) {
  std::vector<bool> isOpen(mesh.pointColl.size());
  EdgeIndex edges(mesh.pointColl.size(), mesh.indexColl.data(), mesh.getNbTriangles());
  edges.visitEdges([&](omUInt32 lower, const EdgeIndex::Side* first, const EdgeIndex::Side* last) {
    if (last - first == 1) isOpen[lower] = isOpen[first->higherVertexIdx] = true;
  });
  std::vector<omUInt32> vertices;
  for (omUInt32 vertex = 0; vertex < isOpen.size(); ++vertex)
    if (isOpen[vertex]) vertices.push_back(vertex);
  return vertices;
}

/// Of equal vertices the lowest takes the place of the others.
void mergeEqual(const RepairMesh& mesh, std::vector<omUInt32>& vertices, std::vector<omUInt32>& places) {
  std::sort(vertices.begin(), vertices.end(), [&](omUInt32 a, omUInt32 b) {
    const SpatialPoint &p = mesh.pointColl[a], &q = mesh.pointColl[b];
    return isBefore(p, q) || (!isBefore(q, p) && a < b);
  });
  for (std::size_t at = 1; at < vertices.size(); ++at)
    if (!isBefore(mesh.pointColl[vertices[at - 1]], mesh.pointColl[vertices[at]]))
      places[vertices[at]] = places[vertices[at - 1]];
}

/// Vertices in cubes as large as the tolerance. Those that were kept are further apart than this, so that a cube has
/// few of them.
class ToleranceGrid {
 public:
  ToleranceGrid(const RepairMesh& mesh, const std::vector<omUInt32>& vertices, omReal64 tolerance)
      : _mesh(mesh), _tolerance(tolerance), _nextColl(mesh.pointColl.size(), RepairMesh::s_none) {
    for (const omUInt32 vertex : vertices) _cells.push_back(cellOf(vertex));
    std::sort(_cells.begin(), _cells.end(), isBefore);
    _cells.erase(std::unique(_cells.begin(), _cells.end(),
                             [](const SpatialPoint& p, const SpatialPoint& q) { return !isBefore(p, q); }),
                 _cells.end());
    _firstColl.assign(_cells.size(), RepairMesh::s_none);
  }

  /// The nearest kept vertex within the tolerance, of several the lowest; none where there is none.
  omUInt32 nearest(omUInt32 vertex) const {
    const SpatialPoint cell = cellOf(vertex);
    omUInt32 found = RepairMesh::s_none;
    omReal64 best = _tolerance;
    for (int around = 0; around < 27; ++around) {
      const SpatialPoint offset{omReal64(around % 3 - 1), omReal64(around / 3 % 3 - 1), omReal64(around / 9 - 1)};
      const std::size_t place = find(cell + offset);
      if (place == _cells.size()) continue;
      for (omUInt32 other = _firstColl[place]; other != RepairMesh::s_none; other = _nextColl[other]) {
        const SpatialPoint gap = _mesh.pointColl[vertex] - _mesh.pointColl[other];
        const omReal64 distance = std::hypot(gap.x, gap.y, gap.z);
        if (distance < best || (distance == best && other < found)) {
          best = distance;
          found = other;
        }
      }
    }
    return found;
  }

  void keep(omUInt32 vertex) {
    const std::size_t place = find(cellOf(vertex));
    _nextColl[vertex] = _firstColl[place];
    _firstColl[place] = vertex;
  }

 private:
  SpatialPoint cellOf(omUInt32 vertex) const {
    const SpatialPoint p = _mesh.pointColl[vertex] / _tolerance;
    return {std::floor(p.x), std::floor(p.y), std::floor(p.z)};
  }
  std::size_t find(const SpatialPoint& cell) const {
    const auto found = std::lower_bound(_cells.begin(), _cells.end(), cell, isBefore);
    return found == _cells.end() || isBefore(cell, *found) ? _cells.size()
                                                           : static_cast<std::size_t>(found - _cells.begin());
  }

  const RepairMesh& _mesh;
  const omReal64 _tolerance;
  std::vector<SpatialPoint> _cells;
  std::vector<omUInt32> _firstColl, _nextColl;  ///< the kept vertices of each cell, linked
};

}  // namespace

void dropInvalidTriangles(RepairMesh& mesh, RepairReport& report) {
  std::vector<bool> isRemoved(mesh.getNbTriangles());
  TripleTable table(2 * mesh.getNbTriangles());
  for (std::size_t triangle = 0; triangle < mesh.getNbTriangles(); ++triangle) {
    std::array<omUInt32, 3> corners{mesh.indexColl[3 * triangle], mesh.indexColl[3 * triangle + 1],
                                    mesh.indexColl[3 * triangle + 2]};
    std::size_t* reason = nullptr;
    if (hasEqualCorners(corners.data())) {
      reason = &report.nbDegenerate;
    } else if (!std::all_of(corners.begin(), corners.end(), [&](omUInt32 v) { return isFinite(mesh.pointColl[v]); })) {
      reason = &report.nbNotFinite;
    } else {
      std::sort(corners.begin(), corners.end());
      const std::size_t nbBefore = table.getTriples().size();
      if (table.add({corners[0], corners[1], corners[2]}) < nbBefore) reason = &report.nbDuplicate;
    }
    if (reason == nullptr) continue;
    ++*reason;
    isRemoved[triangle] = true;
  }
  mesh.remove(isRemoved);
}

void mergeOpenVertices(RepairMesh& mesh, omReal64 tolerance, RepairReport& report) {
  std::vector<omUInt32> vertices = openVertices(mesh), places(mesh.pointColl.size());
  if (vertices.empty()) return;
  std::iota(places.begin(), places.end(), omUInt32(0));
  if (tolerance == 0) {
    mergeEqual(mesh, vertices, places);
  } else {
    ToleranceGrid grid(mesh, vertices, tolerance);
    for (const omUInt32 vertex : vertices) {
      const omUInt32 nearest = grid.nearest(vertex);
      if (nearest == RepairMesh::s_none)
        grid.keep(vertex);
      else
        places[vertex] = nearest;
    }
  }
  for (std::size_t vertex = 0; vertex < places.size(); ++vertex) report.nbMergedVertices += places[vertex] != vertex;
  for (omUInt32& vertex : mesh.indexColl) vertex = places[vertex];
}

}  // namespace ormix::geom::detail
