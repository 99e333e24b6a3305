#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopology.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopologyChecks.h>
#include <ORMIXGeometry/Tools/Mesh/LoopFill.h>
#include <ORMIXGeometry/Tools/Mesh/RepairMesh.h>
#include <ORMIXUtil/HashSecret.h>

#include <algorithm>
#include <unordered_set>

namespace ormix::geom::detail {

namespace {

/// Finds loops of open sides in which no vertex comes twice. A loop is listed against the direction of its sides, as
/// the triangles that fill it run: it leads from the end of a side to its start.
class LoopFinder {
 public:
  explicit LoopFinder(const RepairMesh& mesh)
      : _mesh(mesh),
        _firstColl(mesh.pointColl.size(), RepairMesh::s_none),
        _nextColl(mesh.indexColl.size(), RepairMesh::s_none),
        _placeColl(mesh.pointColl.size(), RepairMesh::s_none),
        _isUsed(mesh.indexColl.size()) {
    for (std::size_t at = mesh.oppositeColl.size(); at > 0; --at) {
      const auto side = static_cast<omUInt32>(at - 1);
      if (mesh.oppositeColl[side] != RepairMesh::s_none) continue;
      _nextColl[side] = _firstColl[mesh.end(side)];
      _firstColl[mesh.end(side)] = side;
    }
  }

  /// \param nbOpen set to the number of chains that are no loops
  std::vector<std::vector<omUInt32>> find(std::size_t& nbOpen) {
    for (omUInt32 side = 0; side < _mesh.oppositeColl.size(); ++side)
      if (_mesh.oppositeColl[side] == RepairMesh::s_none && !_isUsed[side] && !follow(_mesh.end(side))) ++nbOpen;
    return std::move(_loops);
  }

 private:
  /// Follows open sides from a vertex, and takes a loop out whenever the path comes to a vertex on it. False when the
  /// path ends without one.
  bool follow(omUInt32 vertex) {
    _path.clear();
    do {
      const omUInt32 side = _firstColl[vertex];
      if (side == RepairMesh::s_none) {
        for (const omUInt32 left : _path) _placeColl[_mesh.end(left)] = RepairMesh::s_none;
        return false;
      }
      _firstColl[vertex] = _nextColl[side];
      _isUsed[side] = true;
      _placeColl[vertex] = static_cast<omUInt32>(_path.size());
      _path.push_back(side);
      vertex = _mesh.start(side);
      if (_placeColl[vertex] == RepairMesh::s_none) continue;
      const auto begin = _path.begin() + static_cast<std::ptrdiff_t>(_placeColl[vertex]);
      _loops.emplace_back(begin, _path.end());
      for (const omUInt32 taken : _loops.back()) _placeColl[_mesh.end(taken)] = RepairMesh::s_none;
      _path.erase(begin, _path.end());
    } while (!_path.empty());
    return true;
  }

  const RepairMesh& _mesh;
  std::vector<omUInt32> _firstColl;  ///< of each vertex the first open side that ends there and is not used
  std::vector<omUInt32> _nextColl;   ///< of each open side the next one that ends where it does
  std::vector<omUInt32> _placeColl;  ///< of each vertex its place in the path
  std::vector<bool> _isUsed;
  std::vector<omUInt32> _path;
  std::vector<std::vector<omUInt32>> _loops;
};

/// The edges between vertices of open sides, which diagonals should not repeat.
class EdgeSet {
 public:
  explicit EdgeSet(const RepairMesh& mesh) {
    std::vector<bool> isOpen(mesh.pointColl.size());
    for (omUInt32 side = 0; side < mesh.oppositeColl.size(); ++side)
      if (mesh.oppositeColl[side] == RepairMesh::s_none) isOpen[mesh.start(side)] = isOpen[mesh.end(side)] = true;
    for (omUInt32 side = 0; side < mesh.indexColl.size(); ++side)
      if (isOpen[mesh.start(side)] && isOpen[mesh.end(side)]) add(mesh.start(side), mesh.end(side));
  }
  void add(omUInt32 a, omUInt32 b) { _keys.insert(keyOf(a, b)); }
  bool has(omUInt32 a, omUInt32 b) const { return _keys.count(keyOf(a, b)) != 0; }

 private:
  struct Hash {
    Hash() : secret(hashSecret()) {}
    omUInt64 secret;
    std::size_t operator()(omUInt64 key) const {
      key = (key ^ secret) * 0x9E3779B97F4A7C15u;
      return static_cast<std::size_t>((key ^ key >> 32) * 0xFF51AFD7ED558CCDu >> 16);
    }
  };
  static omUInt64 keyOf(omUInt32 a, omUInt32 b) { return omUInt64(std::min(a, b)) << 32 | std::max(a, b); }
  std::unordered_set<omUInt64, Hash> _keys;
};

/// Fills loops one after the other.
class LoopFiller {
 public:
  LoopFiller(RepairMesh& mesh, RepairReport& report) : _mesh(mesh), _report(report), _edges(mesh) {}

  void fill(const std::vector<omUInt32>& sides) {
    std::vector<omUInt32> vertices;
    std::vector<SpatialPoint> points;
    for (const omUInt32 side : sides) {
      vertices.push_back(_mesh.end(side));
      points.push_back(_mesh.at(vertices.back()));
    }
    const auto hasEdge = [&](std::size_t a, std::size_t b) { return _edges.has(vertices[a], vertices[b]); };
    const auto triangles = fillLoop(points, hasEdge);
    _open.assign(sides.begin(), sides.end());
    for (const auto& corners : triangles) {
      const omUInt32 first = _mesh.addTriangle(vertices[corners[0]], vertices[corners[1]], vertices[corners[2]]);
      for (omUInt32 side = first; side < first + 3; ++side) {
        _open.push_back(side);
        _edges.add(_mesh.start(side), _mesh.end(side));
      }
    }
    joinOpen();
    ++_report.nbFilledLoops;
    _report.nbAddedTriangles += triangles.size();
  }

 private:
  /// Joins the sides of the loop and of the triangles in it: each edge has two of them.
  void joinOpen() {
    const auto ends = [this](omUInt32 side) { return std::minmax({_mesh.start(side), _mesh.end(side)}); };
    std::sort(_open.begin(), _open.end(), [&](omUInt32 a, omUInt32 b) { return ends(a) < ends(b); });
    for (std::size_t at = 1; at < _open.size(); at += 2) _mesh.join(_open[at - 1], _open[at]);
  }

  RepairMesh& _mesh;
  RepairReport& _report;
  EdgeSet _edges;
  std::vector<omUInt32> _open;
};

bool isOneTriangle(const std::vector<omUInt32>& loop) {
  return loop.size() == 3 && loop[0] / 3 == loop[1] / 3 && loop[1] / 3 == loop[2] / 3;
}

void logOpen(std::size_t nb, const std::string& why, RepairReport& report) {
  if (nb == 0) return;
  report.nbOpenLoops += nb;
  report.log.push_back("boundary loops left open, as " + why + ": " + std::to_string(nb));
}

}  // namespace

BoolResult fillLoops(RepairMesh& mesh, std::size_t longestLoop, RepairReport& report) {
  std::size_t nbChains = 0, nbSingle = 0, nbLong = 0;
  const std::vector<std::vector<omUInt32>> loops = LoopFinder(mesh).find(nbChains);
  std::size_t nbOpen = 0;
  for (const auto& loop : loops) nbOpen += loop.size();
  if (mesh.getNbTriangles() + nbOpen > MeshTopology::s_maxNbTriangles) return tooManyTriangles();
  LoopFiller filler(mesh, report);
  for (const auto& loop : loops) {
    if (loop.size() > longestLoop)
      ++nbLong;
    else if (isOneTriangle(loop))
      ++nbSingle;
    else if (loop.size() == 2)
      mesh.join(loop[0], loop[1]);
    else
      filler.fill(loop);
  }
  logOpen(nbChains, "they are no loops", report);
  logOpen(nbSingle, "each is the edge of a single triangle", report);
  logOpen(nbLong, "they have more than " + std::to_string(longestLoop) + " edges", report);
  return {};
}

}  // namespace ormix::geom::detail
