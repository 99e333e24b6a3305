#include <ORMIXGeometry/Entity/3d/Mesh/HalfEdgeTable.h>
#include <ORMIXUtil/HashSecret.h>

#include <utility>

namespace ormix::geom {

namespace {

constexpr std::size_t s_smallestNbSlots = 16;

// The finalizer of SplitMix64 (Steele2014): every bit of the vertex indices influences every bit of the slot, so that
// the regular indices of meshes cause no clusters. The secret protects against archives with indices chosen to collide.
std::size_t hashOf(omUInt32 start, omUInt32 end) {
  omUInt64 key = (omUInt64{start} << 32 | end) ^ hashSecret();
  key = (key ^ key >> 30) * 0xBF58476D1CE4E5B9u;
  key = (key ^ key >> 27) * 0x94D049BB133111EBu;
  return static_cast<std::size_t>(key ^ key >> 31);
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
  if (_slotColl.empty()) return s_noHalfEdge;
  const std::size_t mask = _slotColl.size() - 1;
  for (std::size_t slot = hashOf(start, end) & mask;; slot = (slot + 1) & mask) {
    const omUInt32 held = _slotColl[slot];
    if (held == s_noHalfEdge) return s_noHalfEdge;
    const HalfEdge& halfEdge = halfEdgeColl[held];
    if (halfEdge.startVertexIdx == start && halfEdgeColl[halfEdge.nextHalfEdgeIdx].startVertexIdx == end) return held;
  }
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
  const std::size_t mask = _slotColl.size() - 1;
  std::size_t slot = hashOf(halfEdge.startVertexIdx, halfEdgeColl[halfEdge.nextHalfEdgeIdx].startVertexIdx) & mask;
  while (_slotColl[slot] != s_noHalfEdge) slot = (slot + 1) & mask;
  _slotColl[slot] = halfEdgeIdx;
}

}  // namespace ormix::geom
