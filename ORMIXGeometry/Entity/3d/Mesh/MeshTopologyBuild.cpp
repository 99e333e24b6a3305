#include <ORMIXGeometry/Entity/3d/Mesh/EdgeIndex.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopology.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopologyChecks.h>
#include <ORMIXGeometry/Message/EntityMessage.h>
#include <ORMIXUtil/Memory/LargePages.h>

#include <algorithm>
#include <utility>

namespace ormix::geom {

namespace {

using IndexColl = MeshTopology::IndexColl;

/// A half-edge that runs as an earlier one does.
struct Repeat {
  omUInt32 first;
  omUInt32 again;
};

std::array<std::size_t, 3> cornersOf(const IndexColl& vertexIndexColl, std::size_t triangle) {
  const omUInt32* corners = &vertexIndexColl[3 * triangle];
  return {corners[0], corners[1], corners[2]};
}

/// The half-edges of the triangles, three each in order, without opposite ones.
MeshTopology::HalfEdgeColl makeHalfEdges(const IndexColl& vertexIndexColl) {
  MeshTopology::HalfEdgeColl halfEdges;
  reserveLarge(halfEdges, vertexIndexColl.size());
  halfEdges.resize(vertexIndexColl.size());
  const omUInt32* starts = vertexIndexColl.data();
  const auto nbHalfEdges = static_cast<omUInt32>(vertexIndexColl.size());
  HalfEdge* triangle = halfEdges.data();
  for (omUInt32 first = 0; first < nbHalfEdges; first += 3, triangle += 3) {
    triangle[0] = {starts[first], first + 1, s_noHalfEdge, first / 3};
    triangle[1] = {starts[first + 1], first + 2, s_noHalfEdge, first / 3};
    triangle[2] = {starts[first + 2], first, s_noHalfEdge, first / 3};
  }
  return halfEdges;
}

/// Links opposite half-edges, but for triangles of equal corners, and answers the repeated ones; where there are some,
/// the links along these edges are not to be used.
std::vector<Repeat> linkOpposites(std::size_t nbVertices, const IndexColl& vertexIndexColl,
                                  MeshTopology::HalfEdgeColl& halfEdges) {
  using Side = detail::EdgeIndex::Side;
  std::vector<Repeat> repeats;
  HalfEdge* all = halfEdges.data();
  detail::EdgeIndex edges(nbVertices, vertexIndexColl.data(), vertexIndexColl.size() / 3);
  const auto link = [&](omUInt32 lower, const Side* first, const Side* last) {
    if (last - first == 1) return;
    const auto ascends = [all, lower](const Side* side) { return all[side->sideIdx].startVertexIdx == lower; };
    if (last - first == 2 && ascends(first) != ascends(first + 1)) {
      all[first[0].sideIdx].oppositeHalfEdgeIdx = first[1].sideIdx;
      all[first[1].sideIdx].oppositeHalfEdgeIdx = first[0].sideIdx;
      return;
    }
    std::array<const Side*, 2> firsts{};  // of each direction
    for (const Side* side = first; side != last; ++side) {
      const Side*& firstAlike = firsts[ascends(side) ? 0 : 1];
      if (firstAlike)
        repeats.push_back({firstAlike->sideIdx, side->sideIdx});
      else
        firstAlike = side;
    }
  };
  edges.visitEdges(link, [all](omUInt32 side) { __builtin_prefetch(&all[side], 1); });
  return repeats;
}

/// Why adding the triangles one by one would stop.
BoolResult firstRefusal(std::size_t nbVertices, const IndexColl& vertexIndexColl, const std::vector<Repeat>& repeats) {
  const auto refusing = std::min_element(repeats.begin(), repeats.end(),
                                         [](const Repeat& a, const Repeat& b) { return a.again < b.again; });
  const std::size_t nbBefore = refusing == repeats.end() ? vertexIndexColl.size() / 3 : refusing->again / 3;
  for (std::size_t triangle = 0; triangle < nbBefore; ++triangle)
    if (BoolResult refused = detail::checkCorners(cornersOf(vertexIndexColl, triangle), nbVertices); !refused)
      return refused;
  if (refusing == repeats.end()) return {};
  return failure(formatMessage<eEntityMessage>(eEntityMessage::eEM_HalfEdgeCannotTakeTriangle, refusing->first));
}

/// The triangles that adding them one by one would refuse, ascending. A refused triangle takes no edge, so that a later
/// one may.
IndexColl findRefused(const IndexColl& vertexIndexColl, const std::vector<Repeat>& repeats) {
  IndexColl directionColl;
  std::vector<bool> isTaken;
  if (!repeats.empty()) {
    directionColl.assign(vertexIndexColl.size(), s_noHalfEdge);
    isTaken.resize(vertexIndexColl.size());
    for (const Repeat& repeat : repeats) directionColl[repeat.first] = directionColl[repeat.again] = repeat.first;
  }
  IndexColl refused;
  for (std::size_t first = 0; first < vertexIndexColl.size(); first += 3) {
    const auto hasTakenEdge = [&](std::size_t halfEdge) {
      return directionColl[halfEdge] != s_noHalfEdge && isTaken[directionColl[halfEdge]];
    };
    const bool refusedHere =
        detail::hasEqualCorners(&vertexIndexColl[first]) ||
        (!repeats.empty() && (hasTakenEdge(first) || hasTakenEdge(first + 1) || hasTakenEdge(first + 2)));
    if (refusedHere)
      refused.push_back(static_cast<omUInt32>(first / 3));
    else if (!repeats.empty())
      for (std::size_t halfEdge = first; halfEdge < first + 3; ++halfEdge)
        if (directionColl[halfEdge] != s_noHalfEdge) isTaken[directionColl[halfEdge]] = true;
  }
  return refused;
}

/// Gives the triangles vertices of their own, numbered from `own` on, and answers the former ones.
IndexColl separate(const IndexColl& triangles, omUInt32 own, IndexColl& vertexIndexColl) {
  IndexColl origins;
  origins.reserve(3 * triangles.size());
  for (const omUInt32 triangle : triangles)
    for (std::size_t corner = 0; corner < 3; ++corner)
      origins.push_back(std::exchange(vertexIndexColl[3 * std::size_t{triangle} + corner], own++));
  return origins;
}

BoolResult checkIndices(std::size_t nbVertices, const IndexColl& vertexIndexColl) {
  if (vertexIndexColl.size() % 3 != 0)
    return failure("Triangles have three vertex indices each, not " + std::to_string(vertexIndexColl.size()) +
                   " together");
  if (vertexIndexColl.size() / 3 > MeshTopology::s_maxNbTriangles) return detail::tooManyTriangles();
  omUInt32 greatest = 0;
  for (const omUInt32 vertexIdx : vertexIndexColl) greatest = std::max(greatest, vertexIdx);
  const std::size_t nbUsable = std::min(nbVertices, MeshTopology::s_maxNbVertices);
  if (vertexIndexColl.empty() || greatest < nbUsable) return {};
  const auto first = std::find_if(vertexIndexColl.begin(), vertexIndexColl.end(),
                                  [nbUsable](omUInt32 vertexIdx) { return vertexIdx >= nbUsable; });
  return detail::invalidVertex(*first, nbVertices);
}

}  // namespace

BoolResult MeshTopology::build(std::size_t nbVertices, IndexColl vertexIndexColl, eNonManifoldPolicy policy,
                               IndexColl& ownerColl, IndexColl& originColl) {
  if (BoolResult refused = checkIndices(nbVertices, vertexIndexColl); !refused) return refused;
  HalfEdgeColl halfEdges = makeHalfEdges(vertexIndexColl);
  const std::vector<Repeat> repeats = linkOpposites(nbVertices, vertexIndexColl, halfEdges);
  IndexColl owners;
  if (policy == eNMP_Refuse) {
    if (BoolResult refused = firstRefusal(nbVertices, vertexIndexColl, repeats); !refused) return refused;
  } else {
    owners = findRefused(vertexIndexColl, repeats);
    if (nbVertices > s_maxNbVertices || owners.size() > (s_maxNbVertices - nbVertices) / 3)
      return detail::tooManyVertices();
  }
  IndexColl origins;
  if (!owners.empty()) {
    origins = separate(owners, static_cast<omUInt32>(nbVertices), vertexIndexColl);
    halfEdges = makeHalfEdges(vertexIndexColl);
    linkOpposites(nbVertices + origins.size(), vertexIndexColl, halfEdges);
  }
  IndexColl triangleToHalfEdge(halfEdges.size() / 3);
  for (omUInt32 triangle = 0; triangle < triangleToHalfEdge.size(); ++triangle)
    triangleToHalfEdge[triangle] = 3 * triangle;
  clear();
  _halfEdgeColl = std::move(halfEdges);
  _triangleToHalfEdgeColl = std::move(triangleToHalfEdge);
  _vertexIndexColl = std::move(vertexIndexColl);
  ownerColl = std::move(owners);
  originColl = std::move(origins);
  return {};
}

}  // namespace ormix::geom
