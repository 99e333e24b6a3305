#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/HalfEdge.h>
#include <ORMIXGeometry/Export.h>

#include <vector>

namespace ormix::geom {

/// Finds the half-edge that runs from one vertex to another in expected constant time, whatever the valences: a table
/// of half-edge indices, whose keys, the vertices, are looked up in the half-edges of the mesh. A half-edge is in the
/// group of slots of its start vertex, and of vertices near each other so are the groups; where that is full, it is in
/// a place chosen by a hash of both vertices, with double hashing. The table is a cache: a copy starts empty and is
/// filled again by `update`.
class ORMIX_GEOMETRY_API HalfEdgeTable {
 public:
  HalfEdgeTable() = default;
  /// Copies are empty, and copy assignment empties the table; moves take the entries over.
  /// @{
  HalfEdgeTable(const HalfEdgeTable&) noexcept {}
  HalfEdgeTable(HalfEdgeTable&& other) noexcept { swap(other); }
  HalfEdgeTable& operator=(const HalfEdgeTable& other) noexcept {
    if (this != &other) clear();
    return *this;
  }
  HalfEdgeTable& operator=(HalfEdgeTable&& other) noexcept {
    HalfEdgeTable staged(std::move(other));
    swap(staged);
    return *this;
  }
  /// @}
  ~HalfEdgeTable() = default;

  /// Inserts the half-edges at the end of the collection that are not in the table yet, and makes room for `nbMore`
  /// others.
  void update(const std::vector<HalfEdge>& halfEdgeColl, std::size_t nbMore);
  /// The index of the half-edge in the table from vertex `start` to vertex `end`, or `s_noHalfEdge`.
  omUInt32 find(omUInt32 start, omUInt32 end, const std::vector<HalfEdge>& halfEdgeColl) const;
  /// Removes all entries and releases the memory. Must be called when half-edges in the table have changed.
  void clear() noexcept;

 private:
  void swap(HalfEdgeTable& other) noexcept;
  void enter(omUInt32 halfEdgeIdx, const std::vector<HalfEdge>& halfEdgeColl);

  std::vector<omUInt32> _slotColl;  // as many as a power of two, at most half of them used
  std::size_t _nbHeld = 0;          // the half-edges with indices below this are in the table
};

}  // namespace ormix::geom
