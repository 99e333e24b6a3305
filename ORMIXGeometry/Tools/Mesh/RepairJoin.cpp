#include <ORMIXGeometry/Entity/3d/Mesh/EdgeIndex.h>
#include <ORMIXGeometry/Tools/Mesh/RepairMesh.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <queue>
#include <utility>

namespace ormix::geom::detail {

namespace {

/// Finds the triangles that hang on edges of three triangles and more: each of their edges has either more than two
/// triangles or one. The one with the most open edges goes first, of several the last, until no such triangle is left.
class FinFinder {
 public:
  explicit FinFinder(const RepairMesh& mesh) : _edgeOf(mesh.indexColl.size()), _isFin(mesh.getNbTriangles()) {
    EdgeIndex edges(mesh.pointColl.size(), mesh.indexColl.data(), mesh.getNbTriangles());
    edges.visitEdges([&](omUInt32, const EdgeIndex::Side* first, const EdgeIndex::Side* last) {
      for (const EdgeIndex::Side* side = first; side != last; ++side) {
        _edgeOf[side->sideIdx] = static_cast<omUInt32>(_counts.size());
        _sides.push_back(side->sideIdx);
      }
      _counts.push_back(static_cast<omUInt32>(last - first));
      _ends.push_back(_sides.size());
    });
  }

  /// The triangles to drop.
  const std::vector<bool>& find(std::size_t& nbFound) {
    for (omUInt32 triangle = 0; triangle < _isFin.size(); ++triangle) push(triangle);
    while (!_queue.empty()) {
      const auto [nbOpen, triangle] = _queue.top();
      _queue.pop();
      if (_isFin[triangle] || nbOpenSides(triangle) != nbOpen) continue;
      _isFin[triangle] = true;
      ++nbFound;
      for (omUInt32 side = 3 * triangle; side < 3 * triangle + 3; ++side)
        if (--_counts[_edgeOf[side]] == 1) push(lastTriangle(_edgeOf[side]));
    }
    return _isFin;
  }

 private:
  /// The number of open sides of a triangle that hangs on an edge of several; -1 for others.
  int nbOpenSides(omUInt32 triangle) const {
    int nbOpen = 0;
    for (omUInt32 side = 3 * triangle; side < 3 * triangle + 3; ++side) {
      const omUInt32 count = _counts[_edgeOf[side]];
      if (count == 2) return -1;
      nbOpen += count == 1 ? 1 : 0;
    }
    return nbOpen == 3 ? -1 : nbOpen;
  }
  void push(omUInt32 triangle) {
    if (const int nbOpen = nbOpenSides(triangle); nbOpen >= 0) _queue.push({nbOpen, triangle});
  }
  omUInt32 lastTriangle(omUInt32 edge) const {
    for (std::size_t at = edge == 0 ? 0 : _ends[edge - 1]; at < _ends[edge]; ++at)
      if (!_isFin[_sides[at] / 3]) return _sides[at] / 3;
    return 0;
  }

  std::vector<omUInt32> _edgeOf;  ///< of each side
  std::vector<omUInt32> _counts;  ///< triangles of each edge that are left
  std::vector<std::size_t> _ends;
  std::vector<omUInt32> _sides;  ///< by edge
  std::vector<bool> _isFin;
  std::priority_queue<std::pair<int, omUInt32>> _queue;
};

/// A side at an edge of several triangles.
struct SideAtAngle {
  omReal64 angle;  ///< of its triangle around the edge
  bool ascends;    ///< whether it runs from the lower vertex to the higher one
  omUInt32 side;
};

/// The sides of an edge by their angles, counter-clockwise around the direction from its lower vertex to the higher.
void sortByAngle(const RepairMesh& mesh, omUInt32 lower, const EdgeIndex::Side* first, const EdgeIndex::Side* last,
                 std::vector<SideAtAngle>& sides) {
  const SpatialPoint origin = mesh.at(lower), along = mesh.at(first->higherVertexIdx) - origin;
  const omReal64 length = std::sqrt(dot(along, along));
  const auto apex = [&](omUInt32 side) { return mesh.at(mesh.start(RepairMesh::previous(side))) - origin; };
  const SpatialPoint toward = cross(cross(along, apex(first->sideIdx)), along) / (length * length);
  const SpatialPoint beside = cross(along, toward) / length;
  sides.clear();
  for (const EdgeIndex::Side* side = first; side != last; ++side) {
    const SpatialPoint arm = apex(side->sideIdx);
    const omReal64 angle = std::atan2(dot(arm, beside), dot(arm, toward));
    sides.push_back({std::isnan(angle) ? 0 : angle, mesh.start(side->sideIdx) == lower, side->sideIdx});
  }
  std::sort(sides.begin(), sides.end(), [](const SideAtAngle& a, const SideAtAngle& b) {
    return a.angle != b.angle ? a.angle < b.angle : a.side < b.side;
  });
}

/// Joins sides such that the wedge from a descending side counter-clockwise to an ascending one is inside, as brackets
/// are matched around a circle. Of the others each is joined to the next one, and one may stay open.
void joinByAngle(RepairMesh& mesh, const std::vector<SideAtAngle>& sides) {
  std::vector<omUInt32> opening, left;
  for (int round = 0; round < 2; ++round) {
    for (const SideAtAngle& side : sides) {
      if (mesh.oppositeColl[side.side] != RepairMesh::s_none) continue;
      if (!side.ascends) {
        if (round == 0) opening.push_back(side.side);
      } else if (!opening.empty()) {
        mesh.join(opening.back(), side.side);
        opening.pop_back();
      }
    }
  }
  for (const SideAtAngle& side : sides)
    if (mesh.oppositeColl[side.side] == RepairMesh::s_none) left.push_back(side.side);
  for (std::size_t at = 1; at < left.size(); at += 2) mesh.join(left[at - 1], left[at]);
}

/// Whether joined sides run in the same direction.
bool isTurnedAgainst(const RepairMesh& mesh, omUInt32 side, omUInt32 other) {
  return mesh.start(side) == mesh.start(other);
}

}  // namespace

void dropFins(RepairMesh& mesh, RepairReport& report) { mesh.remove(FinFinder(mesh).find(report.nbFins)); }

void joinSides(RepairMesh& mesh, RepairReport& report) {
  mesh.oppositeColl.assign(mesh.indexColl.size(), RepairMesh::s_none);
  std::vector<SideAtAngle> sides;
  EdgeIndex edges(mesh.pointColl.size(), mesh.indexColl.data(), mesh.getNbTriangles());
  edges.visitEdges([&](omUInt32 lower, const EdgeIndex::Side* first, const EdgeIndex::Side* last) {
    if (last - first == 2) {
      mesh.join(first[0].sideIdx, first[1].sideIdx);
    } else if (last - first > 2) {
      ++report.nbSeparatedEdges;
      sortByAngle(mesh, lower, first, last, sides);
      joinByAngle(mesh, sides);
    }
  });
}

void cutTurnedNeighbours(RepairMesh& mesh) {
  for (omUInt32 side = 0; side < mesh.oppositeColl.size(); ++side) {
    const omUInt32 other = mesh.oppositeColl[side];
    if (other == RepairMesh::s_none || !isTurnedAgainst(mesh, side, other)) continue;
    mesh.oppositeColl[side] = mesh.oppositeColl[other] = RepairMesh::s_none;
  }
}

void orientNeighbours(RepairMesh& mesh, RepairReport& report) {
  const std::size_t nbTriangles = mesh.getNbTriangles();
  std::vector<bool> isSeen(nbTriangles), isTurned(nbTriangles);
  std::vector<omUInt32> component;
  for (omUInt32 seed = 0; seed < nbTriangles; ++seed) {
    if (isSeen[seed]) continue;
    component.assign(1, seed);
    isSeen[seed] = true;
    std::size_t nbTurned = 0;
    for (std::size_t at = 0; at < component.size(); ++at) {
      const omUInt32 triangle = component[at];
      for (omUInt32 side = 3 * triangle; side < 3 * triangle + 3; ++side) {
        const omUInt32 other = mesh.oppositeColl[side];
        if (other == RepairMesh::s_none) continue;
        const bool isTurnedThere = isTurned[triangle] != isTurnedAgainst(mesh, side, other);
        if (!isSeen[other / 3]) {
          isSeen[other / 3] = true;
          isTurned[other / 3] = isTurnedThere;
          nbTurned += isTurnedThere ? 1 : 0;
          component.push_back(other / 3);
        } else if (isTurned[other / 3] != isTurnedThere) {
          ++report.nbCutEdges;
          mesh.oppositeColl[side] = mesh.oppositeColl[other] = RepairMesh::s_none;
        }
      }
    }
    if (2 * nbTurned > component.size()) {
      for (const omUInt32 triangle : component) isTurned[triangle] = !isTurned[triangle];
      nbTurned = component.size() - nbTurned;
    }
    report.nbTurned += nbTurned;
  }
  mesh.turn(isTurned);
}

void dropSingleTriangles(RepairMesh& mesh, RepairReport& report) {
  const std::size_t nbTriangles = mesh.getNbTriangles();
  std::vector<bool> isSingle(nbTriangles);
  std::size_t nbSingle = 0;
  for (std::size_t triangle = 0; triangle < nbTriangles; ++triangle) {
    const omUInt32* opposites = &mesh.oppositeColl[3 * triangle];
    isSingle[triangle] = std::all_of(opposites, opposites + 3, [](omUInt32 o) { return o == RepairMesh::s_none; });
    nbSingle += isSingle[triangle] ? 1 : 0;
  }
  // Where most triangles are joined to none, the vertices were not merged as they should be: nothing is dropped then.
  if (nbSingle == 0 || 2 * nbSingle >= nbTriangles) return;
  report.nbSingle += nbSingle;
  mesh.remove(isSingle);
}

}  // namespace ormix::geom::detail
