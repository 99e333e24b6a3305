#pragma once

#include <ORMIXUtil/HashSecret.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <vector>

// Not installed.
namespace ormix::geom::detail {

/// Assigns consecutive numbers to different triples in the order in which they are added. A hash table with linear
/// probing, at most half full, has the indices of a list of the triples. Expected constant time for each.
class TripleTable {
 public:
  /// Three numbers, such as the bits of coordinates.
  struct Triple {
    omUInt32 x, y, z;  ///< components
    /// Whether all three are equal.
    bool operator==(const Triple& other) const { return ((x ^ other.x) | (y ^ other.y) | (z ^ other.z)) == 0; }
  };

  /// \param nbExpected for how many triples to reserve memory, about
  explicit TripleTable(std::size_t nbExpected) {
    std::size_t nbSlots = 1024;
    while (nbSlots < nbExpected) nbSlots *= 2;
    _slots.assign(nbSlots, s_free);
    _triples.reserve(nbSlots / 2);
  }

  /// The number of the triple. A new triple gets the number of the triples before it.
  omUInt32 add(const Triple& triple) {
    const std::size_t mask = _slots.size() - 1;
    for (std::size_t slot = hash(triple, _secret) & mask;; slot = (slot + 1) & mask) {
      const omUInt32 place = _slots[slot];
      if (place == s_free) return insert(triple, slot);
      if (_triples[place] == triple) return place;
    }
  }

  /// The different triples in order of their numbers.
  const std::vector<Triple>& getTriples() const { return _triples; }

  /// Removes all triples and keeps the memory.
  void clear() {
    _slots.assign(_slots.size(), s_free);
    _triples.clear();
  }

  /// A hash whose lower bits, which the table uses, depend on all bits of the triple: products, and the upper half
  /// combined with the lower by exclusive or.
  /// \param secret hashSecret(), as triples come from files
  static std::size_t hash(const Triple& triple, omUInt64 secret) {
    omUInt64 mixed = ((omUInt64(triple.y) << 32 | triple.x) ^ secret) * 0x9E3779B97F4A7C15u;
    mixed ^= mixed >> 32;
    mixed = (mixed ^ omUInt64(triple.z) * 0xC2B2AE3D27D4EB4Fu) * 0xFF51AFD7ED558CCDu;
    return static_cast<std::size_t>(mixed ^ mixed >> 32);
  }

 private:
  static constexpr omUInt32 s_free = 0xFFFFFFFFu;

  omUInt32 insert(const Triple& triple, std::size_t slot) {
    const auto place = static_cast<omUInt32>(_triples.size());
    _triples.push_back(triple);
    _slots[slot] = place;
    if (2 * _triples.size() > _slots.size()) grow();
    return place;
  }

  void grow() {
    const std::size_t mask = 2 * _slots.size() - 1;
    _slots.assign(mask + 1, s_free);
    for (std::size_t place = 0; place < _triples.size(); ++place) {
      std::size_t slot = hash(_triples[place], _secret) & mask;
      while (_slots[slot] != s_free) slot = (slot + 1) & mask;
      _slots[slot] = static_cast<omUInt32>(place);
    }
  }

  omUInt64 _secret = hashSecret();
  std::vector<omUInt32> _slots;
  std::vector<Triple> _triples;
};

}  // namespace ormix::geom::detail
