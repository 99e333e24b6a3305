#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/HalfEdge.h>
#include <ORMIXGeometry/Export.h>

#include <vector>

namespace ormix::geom {

/// Finds the half-edge that runs from one vertex to another in expected constant time, whatever the valences: open
/// addressing with linear probing over half-edge indices, whose vertices are looked up in the mesh's collection. A
/// cache beside that collection: a copy of it starts empty and is filled again by `update`.
class ORMIX_GEOMETRY_API HalfEdgeTable {
 public:
  HalfEdgeTable() = default;
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
  ~HalfEdgeTable() = default;

  /// Enters the half-edges at the end of the collection that are not held yet, with room for `nbMore` others.
  void update(const std::vector<HalfEdge>& halfEdgeColl, std::size_t nbMore);
  /// The half-edge from `start` to `end` among those held, or `s_noHalfEdge`.
  omUInt32 find(omUInt32 start, omUInt32 end, const std::vector<HalfEdge>& halfEdgeColl) const;
  /// Releases the memory; to be called when half-edges held have changed.
  void clear() noexcept;

 private:
  void swap(HalfEdgeTable& other) noexcept;
  void enter(omUInt32 halfEdgeIdx, const std::vector<HalfEdge>& halfEdgeColl);

  std::vector<omUInt32> _slotColl;  // a power of two, at most half of them taken
  std::size_t _nbHeld = 0;          // the half-edges before this index are held
};

}  // namespace ormix::geom
