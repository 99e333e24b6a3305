#include <ORMIXGeometry/Entity/3d/Mesh/HalfEdgeTable.h>
#include <ORMIXUtil/HashSecret.h>

#include <utility>

namespace ormix::geom {

namespace {

constexpr std::size_t s_smallestNbSlots = 16;
constexpr std::size_t s_nbGroupSlots = 8;

// The finalizer of SplitMix64 (Steele2014): every bit of the vertex indices influences every bit of the slot, so that
// the regular indices of meshes cause no clusters. The secret protects against archives with indices chosen to collide.
omUInt64 hashOf(omUInt32 start, omUInt32 end) {
  omUInt64 key = (omUInt64{start} << 32 | end) ^ hashSecret();
  key = (key ^ key >> 30) * 0xBF58476D1CE4E5B9u;
  key = (key ^ key >> 27) * 0x94D049BB133111EBu;
  return key ^ key >> 31;
}

/// Visits the slots in which a half-edge may be, in order, until `isLast(slot)`; there must be an empty one.
template <class IsLast>
void visitSlots(omUInt32 start, omUInt32 end, std::size_t nbSlots, IsLast isLast) {
  const std::size_t mask = nbSlots - 1;
  const std::size_t group = s_nbGroupSlots * start & mask;
  for (std::size_t slot = group; slot < group + s_nbGroupSlots; ++slot)
    if (isLast(slot)) return;
  // By steps of an odd number, which reach every slot: one by one would be along whole rows of full groups.
  const omUInt64 hash = hashOf(start, end);
  const auto step = static_cast<std::size_t>(hash >> 32 | 1);
  for (auto slot = static_cast<std::size_t>(hash) & mask; !isLast(slot);) slot = (slot + step) & mask;
}

}  // namespace

void HalfEdgeTable::update(const std::vector<HalfEdge>& halfEdgeColl, std::size_t nbMore) {
  const std::size_t nbWanted = halfEdgeColl.size() + nbMore;
  if (_slotColl.size() / 2 < nbWanted) {
    std::size_t nbSlots = s_smallestNbSlots;
    while (nbSlots / 2 < nbWanted) nbSlots *= 2;
    std::vector<omUInt32> slots(nbSlots, s_noHalfEdge);
    _slotColl.swap(slots);
    _nbHeld = 0;
  }
  for (; _nbHeld < halfEdgeColl.size(); ++_nbHeld) enter(static_cast<omUInt32>(_nbHeld), halfEdgeColl);
}

omUInt32 HalfEdgeTable::find(omUInt32 start, omUInt32 end, const std::vector<HalfEdge>& halfEdgeColl) const {
  omUInt32 found = s_noHalfEdge;
  if (_slotColl.empty()) return found;
  visitSlots(start, end, _slotColl.size(), [&](std::size_t slot) {
    found = _slotColl[slot];
    if (found == s_noHalfEdge) return true;
    const HalfEdge& halfEdge = halfEdgeColl[found];
    return halfEdge.startVertexIdx == start && halfEdgeColl[halfEdge.nextHalfEdgeIdx].startVertexIdx == end;
  });
  return found;
}

void HalfEdgeTable::clear() noexcept {
  std::vector<omUInt32>().swap(_slotColl);
  _nbHeld = 0;
}

void HalfEdgeTable::swap(HalfEdgeTable& other) noexcept {
  _slotColl.swap(other._slotColl);
  std::swap(_nbHeld, other._nbHeld);
}

void HalfEdgeTable::enter(omUInt32 halfEdgeIdx, const std::vector<HalfEdge>& halfEdgeColl) {
  const HalfEdge& halfEdge = halfEdgeColl[halfEdgeIdx];
  const omUInt32 end = halfEdgeColl[halfEdge.nextHalfEdgeIdx].startVertexIdx;
  visitSlots(halfEdge.startVertexIdx, end, _slotColl.size(), [&](std::size_t slot) {
    if (_slotColl[slot] != s_noHalfEdge) return false;
    _slotColl[slot] = halfEdgeIdx;
    return true;
  });
}

}  // namespace ormix::geom
