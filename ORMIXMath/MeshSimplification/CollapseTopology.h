#pragma once

#include <ORMIXMath/MeshSimplification/MeshSides.h>

#include <cstddef>
#include <vector>

/// \file
/// Which triangles meet, while edges collapse; not installed.

namespace ormix::detail {

/// The sides of the same triangle, three of which follow each other.
/// @{
constexpr omUInt32 nextSide(omUInt32 side) { return side % 3 == 2 ? side - 2 : side + 1; }
constexpr omUInt32 previousSide(omUInt32 side) { return side % 3 == 0 ? side + 2 : side - 1; }
/// @}

/// Asks for what will be read soon to come from memory.
inline void prefetchMemory(const void* place) {
#if defined(__GNUC__)
  __builtin_prefetch(place);
#else
  static_cast<void>(place);
#endif
}

/// The triangles of a mesh as sides, and for each vertex the side with which its fan begins. Vertices have one fan: one
/// with several is split into copies, of which the first is the vertex itself.
class CollapseTopology {
 public:
  /// O(n).
  /// \param sides as MeshSides has them, whose starts are below nbVertices
  CollapseTopology(std::vector<MeshSide> sides, std::size_t nbVertices);

  std::size_t nbVertices() const { return _firstSide.size(); }
  std::size_t nbTriangles() const { return _nbTriangles; }
  std::size_t nbSides() const { return _sides.size(); }
  omUInt32 start(omUInt32 side) const { return _sides[side].start; }
  omUInt32 end(omUInt32 side) const { return _sides[nextSide(side)].start; }
  omUInt32 opposite(omUInt32 side) const { return _sides[side].opposite; }
  /// Asks for a side to come from memory.
  void prefetch(omUInt32 side) const { prefetchMemory(&_sides[side]); }
  /// Whether the triangle of a side is still there.
  bool isAlive(omUInt32 side) const { return _sides[side].start != s_noSide; }
  /// Whether a side stands for its edge, as the lower one of the two.
  bool isFirstOfEdge(omUInt32 side) const { return side < _sides[side].opposite; }
  /// The number of triangles around a vertex.
  omUInt32 valence(omUInt32 vertex) const { return _valences[vertex]; }
  bool isOnBoundary(omUInt32 vertex) const {
    return _firstSide[vertex] != s_noSide && opposite(_firstSide[vertex]) == s_noSide;
  }

  /// The given vertex of which a vertex is a copy, or itself.
  omUInt32 originOf(omUInt32 vertex) const { return vertex < _nbGiven ? vertex : _origins[vertex - _nbGiven]; }
  /// Whether there are vertices that have copies.
  bool hasCopies() const { return !_origins.empty(); }
  /// The given vertices that have copies, with a repetition for each.
  const std::vector<omUInt32>& copied() const { return _origins; }

  /// Sets `fan` to the sides that start at a vertex, counter-clockwise, on a boundary from the one that is on it.
  void collectFan(omUInt32 vertex, std::vector<omUInt32>& fan) const {
    fan.clear();
    const omUInt32 first = _firstSide[vertex];
    omUInt32 side = first;
    if (side == s_noSide) return;
    do {
      fan.push_back(side);
      side = opposite(previousSide(side));
    } while (side != first && side != s_noSide);
  }

  /// Two sides that become one edge, or one side of a boundary and none.
  struct Merged {
    omUInt32 in = s_noSide;   ///< from the apex to the kept vertex
    omUInt32 out = s_noSide;  ///< from the kept vertex to the apex
  };

  /// Collapses an edge to one of its ends, which the link condition must allow.
  /// \param fanOfKept, fanOfGone of the two ends; then the fan of the kept one, in no order, and empty
  /// \param merged set to the two edges that replace four, of a boundary edge one and none
  void collapse(omUInt32 side, omUInt32 kept, std::vector<omUInt32>& fanOfKept, std::vector<omUInt32>& fanOfGone,
                Merged (&merged)[2]);

 private:
  void findFans();
  Merged removeTriangle(omUInt32 side);

  std::size_t _nbGiven;
  std::size_t _nbTriangles;
  std::vector<MeshSide> _sides;
  std::vector<omUInt32> _firstSide;  ///< of each vertex, one on the boundary if there is any
  std::vector<omUInt32> _valences;
  std::vector<omUInt32> _origins;  ///< of the copies, which come after the given vertices
};

/// Calls `visit` with each vertex next to the one with this fan. On a boundary the fan is as collectFan() has it.
template <class Visit>
void visitNeighbours(const CollapseTopology& topology, const std::vector<omUInt32>& fan, Visit visit) {
  for (const omUInt32 side : fan) visit(topology.end(side));
  const omUInt32 last = previousSide(fan.back());
  if (topology.opposite(last) == s_noSide) visit(topology.start(last));
}

}  // namespace ormix::detail
