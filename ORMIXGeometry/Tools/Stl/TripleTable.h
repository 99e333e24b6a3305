#pragma once

#include <ORMIXUtil/HashSecret.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <vector>

// Not installed.
namespace ormix::geom {

/// Numbers different triples in the order in which they first come: an open table, at most half full, of places in a
/// growing list of them. Expected constant time each.
class TripleTable {
 public:
  struct Triple {
    omUInt32 x, y, z;
    bool operator==(const Triple& other) const { return ((x ^ other.x) | (y ^ other.y) | (z ^ other.z)) == 0; }
  };

  explicit TripleTable(std::size_t nbExpected) {
    std::size_t nbSlots = 1024;
    while (nbSlots < nbExpected) nbSlots *= 2;
    _slots.assign(nbSlots, s_free);
    _triples.reserve(nbSlots / 2);
  }

  /// The number of the triple, which is the count of triples before when it is new.
  omUInt32 add(const Triple& triple) {
    const std::size_t mask = _slots.size() - 1;
    for (std::size_t slot = hash(triple, _secret) & mask;; slot = (slot + 1) & mask) {
      const omUInt32 place = _slots[slot];
      if (place == s_free) return insert(triple, slot);
      if (_triples[place] == triple) return place;
    }
  }

  const std::vector<Triple>& getTriples() const { return _triples; }

  /// Forgets the triples; the memory stays.
  void clear() {
    _slots.assign(_slots.size(), s_free);
    _triples.clear();
  }

  /// Each bit of the triple reaches the lower bits of the result, by multiplication and by folding the upper half down;
  /// the table uses the lower ones.
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

}  // namespace ormix::geom
