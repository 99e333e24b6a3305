#include <ORMIXGeometry/Entity/3d/Mesh/EdgeIndex.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopology.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopologyChecks.h>
#include <ORMIXGeometry/Message/EntityMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <algorithm>

namespace ormix::geom {

namespace {

using Message = eEntityMessage;

std::string halfEdgeText(std::size_t halfEdgeIdx, const char* what) {
  return "Half edge with index " + std::to_string(halfEdgeIdx) + " " + what;
}

/// Finds the first broken rule of a topology. Each check relies on those before it; each answers a text, which is empty
/// where all is well. Whether the half-edges keep the rules is decided first, which takes a fraction of the time: they
/// may be in any order, and then each look at another one is a look into far memory.
class TopologyChecker {
 public:
  TopologyChecker(const MeshTopology& topology, std::size_t nbVertices)
      : _halfEdges(topology.getHalfEdgeColl()),
        _firsts(topology.getTriangleToHalfEdgeColl()),
        _indices(topology.getVertexIndexColl()),
        _nbVertices(nbVertices) {}

  std::string checkSizes() const {
    if (_firsts.size() > MeshTopology::s_maxNbTriangles) return detail::tooManyTriangles().getMessage();
    if (_halfEdges.size() == 3 * _firsts.size()) return {};
    return std::to_string(_halfEdges.size()) + " half edges are not three for each of " +
           std::to_string(_firsts.size()) + " triangles";
  }

  std::string checkHalfEdges() const {
    if (areLinksSound() && areEdgesDistinct()) return {};
    std::string broken = firstOf(&TopologyChecker::checkIndices);
    if (broken.empty()) broken = firstOf(&TopologyChecker::checkCycle);
    if (broken.empty()) broken = firstOf(&TopologyChecker::checkOpposite);
    return broken.empty() ? checkDirections() : broken;
  }

  /// A cycle has one triangle and there are as many triangles as cycles: when each triangle has a half-edge of its own,
  /// each has one cycle.
  std::string checkTriangles() const {
    for (std::size_t triangle = 0; triangle < _firsts.size(); ++triangle) {
      if (_firsts[triangle] >= _halfEdges.size()) return invalidHalfEdge(_firsts[triangle]);
      if (_halfEdges[_firsts[triangle]].triangleIdx != triangle)
        return halfEdgeText(_firsts[triangle], "is recorded for a triangle that is not its own");
    }
    return {};
  }

  std::string checkVertexIndices() const {
    if (_indices.size() != 3 * _firsts.size())
      return std::to_string(_indices.size()) + " vertex indices are not three for each of " +
             std::to_string(_firsts.size()) + " triangles";
    for (std::size_t triangle = 0; triangle < _firsts.size(); ++triangle) {
      omUInt32 halfEdgeIdx = _firsts[triangle];
      for (std::size_t corner = 0; corner < 3; ++corner, halfEdgeIdx = _halfEdges[halfEdgeIdx].nextHalfEdgeIdx)
        if (_indices[3 * triangle + corner] != _halfEdges[halfEdgeIdx].startVertexIdx)
          return halfEdgeText(halfEdgeIdx, "does not start where the vertex indices of its triangle say");
    }
    return {};
  }

 private:
  /// Whether indices, cycles and opposites are those of a mesh. Of two opposites only the first one looks at the other:
  /// when as many have theirs before them as behind them, each of those that did not look has been looked at.
  bool areLinksSound() const {
    constexpr std::size_t ahead = 32;  // half-edges; what is asked for has arrived by then
    const std::size_t nbUsable = std::min(_nbVertices, MeshTopology::s_maxNbVertices);
    const std::size_t nb = _halfEdges.size();
    std::size_t nbFirst = 0;
    std::size_t nbSecond = 0;
    for (std::size_t index = 0; index < nb; ++index) {
      if (index + ahead < nb) prefetchOpposite(index + ahead);
      const HalfEdge& halfEdge = _halfEdges[index];
      if (halfEdge.startVertexIdx >= nbUsable || halfEdge.nextHalfEdgeIdx >= nb ||
          halfEdge.triangleIdx >= _firsts.size())
        return false;
      const HalfEdge& next = _halfEdges[halfEdge.nextHalfEdgeIdx];
      if (next.nextHalfEdgeIdx >= nb || _halfEdges[next.nextHalfEdgeIdx].nextHalfEdgeIdx != index ||
          halfEdge.nextHalfEdgeIdx == index || next.triangleIdx != halfEdge.triangleIdx ||
          next.startVertexIdx == halfEdge.startVertexIdx)
        return false;
      if (halfEdge.oppositeHalfEdgeIdx == s_noHalfEdge) continue;
      if (halfEdge.oppositeHalfEdgeIdx < index) {
        ++nbSecond;
        continue;
      }
      ++nbFirst;
      if (halfEdge.oppositeHalfEdgeIdx >= nb) return false;
      const HalfEdge& opposite = _halfEdges[halfEdge.oppositeHalfEdgeIdx];
      if (opposite.oppositeHalfEdgeIdx != index || opposite.startVertexIdx != next.startVertexIdx ||
          opposite.nextHalfEdgeIdx >= nb || endOf(opposite) != halfEdge.startVertexIdx)
        return false;
    }
    return nbFirst == nbSecond;
  }

  void prefetchOpposite(std::size_t index) const {
    const omUInt32 opposite = _halfEdges[index].oppositeHalfEdgeIdx;
    if (opposite > index && opposite < _halfEdges.size()) __builtin_prefetch(&_halfEdges[opposite]);
  }

  /// Whether no edge has other half-edges than a pair of opposites or a single one. Relies on sound links.
  bool areEdgesDistinct() const {
    detail::EdgeIndex edges(_nbVertices, [this](auto visit) {
      for (std::size_t index = 0; index < _halfEdges.size(); ++index)
        if (_halfEdges[index].oppositeHalfEdgeIdx > index)
          visit(static_cast<omUInt32>(index), _halfEdges[index].startVertexIdx, endOf(_halfEdges[index]));
    });
    bool areDistinct = true;
    edges.visitEdges(
        [&areDistinct](omUInt32, const detail::EdgeIndex::Side* first, const detail::EdgeIndex::Side* last) {
          areDistinct = areDistinct && last - first == 1;
        });
    return areDistinct;
  }

  std::string firstOf(std::string (TopologyChecker::*check)(std::size_t) const) const {
    for (std::size_t index = 0; index < _halfEdges.size(); ++index)
      if (std::string broken = (this->*check)(index); !broken.empty()) return broken;
    return {};
  }

  omUInt32 endOf(const HalfEdge& halfEdge) const { return _halfEdges[halfEdge.nextHalfEdgeIdx].startVertexIdx; }

  std::string invalidHalfEdge(std::size_t index) const {
    return formatMessage<Message>(Message::eEM_InvalidHalfEdgeIndex, index, _halfEdges.size());
  }

  std::string checkIndices(std::size_t index) const {
    const HalfEdge& halfEdge = _halfEdges[index];
    if (halfEdge.startVertexIdx >= std::min(_nbVertices, MeshTopology::s_maxNbVertices))
      return detail::invalidVertex(halfEdge.startVertexIdx, _nbVertices).getMessage();
    if (halfEdge.nextHalfEdgeIdx >= _halfEdges.size()) return invalidHalfEdge(halfEdge.nextHalfEdgeIdx);
    if (halfEdge.oppositeHalfEdgeIdx >= _halfEdges.size() && halfEdge.oppositeHalfEdgeIdx != s_noHalfEdge)
      return invalidHalfEdge(halfEdge.oppositeHalfEdgeIdx);
    if (halfEdge.triangleIdx >= _firsts.size())
      return formatMessage<Message>(Message::eEM_InvalidTriangleIndex, halfEdge.triangleIdx, _firsts.size());
    return {};
  }

  std::string checkCycle(std::size_t index) const {
    const HalfEdge& halfEdge = _halfEdges[index];
    const HalfEdge& next = _halfEdges[halfEdge.nextHalfEdgeIdx];
    const HalfEdge& afterNext = _halfEdges[next.nextHalfEdgeIdx];
    if (halfEdge.nextHalfEdgeIdx == index || afterNext.nextHalfEdgeIdx != index)
      return halfEdgeText(index, "is not in a cycle of three");
    if (halfEdge.triangleIdx != next.triangleIdx) return halfEdgeText(index, "has another triangle than the next one");
    if (halfEdge.startVertexIdx == next.startVertexIdx) return halfEdgeText(index, "ends where it starts");
    return {};
  }

  std::string checkOpposite(std::size_t index) const {
    const HalfEdge& halfEdge = _halfEdges[index];
    if (halfEdge.oppositeHalfEdgeIdx == s_noHalfEdge) return {};
    const HalfEdge& opposite = _halfEdges[halfEdge.oppositeHalfEdgeIdx];
    if (opposite.oppositeHalfEdgeIdx != index)
      return halfEdgeText(index, "is not the opposite one of its opposite one");
    if (opposite.startVertexIdx != endOf(halfEdge) || endOf(opposite) != halfEdge.startVertexIdx)
      return halfEdgeText(index, "and its opposite one do not run along the same edge");
    return {};
  }

  std::string checkDirections() const {
    detail::EdgeIndex edges(_nbVertices, [this](auto visit) {
      for (std::size_t index = 0; index < _halfEdges.size(); ++index)
        visit(static_cast<omUInt32>(index), _halfEdges[index].startVertexIdx, endOf(_halfEdges[index]));
    });
    // Of each kind the pair whose second half-edge comes first.
    using Pair = std::array<omUInt32, 2>;
    Pair repeated{s_noHalfEdge, s_noHalfEdge};
    Pair unlinked{s_noHalfEdge, s_noHalfEdge};
    const auto keepFirst = [](Pair& kept, const Pair& found) {
      if (found[1] < kept[1]) kept = found;
    };
    using Side = detail::EdgeIndex::Side;
    edges.visitEdges([&](omUInt32 lower, const Side* first, const Side* last) {
      std::array<const Side*, 2> firsts{};  // of each direction
      for (const Side* side = first; side != last; ++side) {
        const Side*& alike = firsts[_halfEdges[side->sideIdx].startVertexIdx == lower ? 0 : 1];
        if (alike)
          keepFirst(repeated, {alike->sideIdx, side->sideIdx});
        else
          alike = side;
      }
      if (last - first == 2 && _halfEdges[first[0].sideIdx].oppositeHalfEdgeIdx != first[1].sideIdx)
        keepFirst(unlinked, {first[0].sideIdx, first[1].sideIdx});
    });
    if (repeated[1] != s_noHalfEdge)
      return halfEdgeText(repeated[1], "runs as that with index ") + std::to_string(repeated[0]) + " does";
    if (unlinked[1] != s_noHalfEdge)
      return formatMessage<Message>(Message::eEM_HalfEdgesNotLinked, unlinked[0], unlinked[1]);
    return {};
  }

  const MeshTopology::HalfEdgeColl& _halfEdges;
  const MeshTopology::IndexColl& _firsts;
  const MeshTopology::IndexColl& _indices;
  const std::size_t _nbVertices;
};

/// \param prefix what a failure's text begins with, by the name of the collection
template <class Prefix>
BoolResult firstBroken(const MeshTopology& topology, std::size_t nbVertices, Prefix prefix) {
  const TopologyChecker checker(topology, nbVertices);
  if (const std::string broken = checker.checkSizes(); !broken.empty())
    return failure(prefix("_triangleToHalfEdgeColl") + broken);
  if (const std::string broken = checker.checkHalfEdges(); !broken.empty())
    return failure(prefix("_halfEdgeColl") + broken);
  if (const std::string broken = checker.checkTriangles(); !broken.empty())
    return failure(prefix("_triangleToHalfEdgeColl") + broken);
  return {};
}

}  // namespace

BoolResult detail::checkCorners(const std::array<std::size_t, 3>& corners, std::size_t nbVertices) {
  for (const std::size_t corner : corners)
    if (corner >= std::min(nbVertices, MeshTopology::s_maxNbVertices)) return detail::invalidVertex(corner, nbVertices);
  if (corners[0] != corners[1] && corners[1] != corners[2] && corners[2] != corners[0]) return {};
  return failure("Triangle with vertices " + std::to_string(corners[0]) + ", " + std::to_string(corners[1]) + " and " +
                 std::to_string(corners[2]) + " does not have three different ones");
}

BoolResult detail::invalidVertex(std::size_t vertexIdx, std::size_t nbVertices) {
  return failure(formatMessage<Message>(Message::eEM_InvalidVertexIndex, vertexIdx, nbVertices));
}

void detail::requireVertex(std::size_t vertexIdx, std::size_t nbVertices) {
  if (vertexIdx >= nbVertices)
    logAndThrow(invalidVertex(vertexIdx, nbVertices).getMessage(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

BoolResult detail::invalidCorner(std::size_t triangleIdx, std::size_t vertexIdx, std::size_t nbVertices) {
  return failure("Triangle with index " + std::to_string(triangleIdx) + ": " +
                 invalidVertex(vertexIdx, nbVertices).getMessage());
}

BoolResult detail::tooManyTriangles() {
  return failure("A mesh holds at most " + std::to_string(MeshTopology::s_maxNbTriangles) + " triangles");
}

BoolResult detail::tooManyVertices() {
  return failure("A mesh holds at most " + std::to_string(MeshTopology::s_maxNbVertices) + " vertices");
}

BoolResult MeshTopology::checkIntegrity(std::size_t nbVertices) const {
  BoolResult sound = firstBroken(*this, nbVertices, [](const char*) { return std::string(); });
  if (!sound) return sound;
  const std::string broken = TopologyChecker(*this, nbVertices).checkVertexIndices();
  return broken.empty() ? sound : failure(broken);
}

BoolResult MeshTopology::validate(std::size_t nbVertices) const {
  return firstBroken(*this, nbVertices, [](const char* key) { return "Key \"" + std::string(key) + "\": "; });
}

}  // namespace ormix::geom
