#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>
#include <vector>

/// \file
/// How the boundaries of regions are divided among their neighbours; not installed.

namespace ormix::detail {

/// Numbers keys by the order in which they first come. A table with linear probing, half full at most.
class KeyNumbers {
 public:
  /// The number of a key.
  omUInt32 operator[](omUInt64 key) {
    if (2 * (_keys.size() + 1) > _slots.size()) grow();
    for (std::size_t slot = slotOf(key);; slot = (slot + 1) & (_slots.size() - 1)) {
      if (_slots[slot] == s_none) {
        _slots[slot] = static_cast<omUInt32>(_keys.size());
        _keys.push_back(key);
        return _slots[slot];
      }
      if (_keys[_slots[slot]] == key) return _slots[slot];
    }
  }
  /// All keys by their numbers.
  const std::vector<omUInt64>& keys() const { return _keys; }

 private:
  static constexpr omUInt32 s_none = 0xFFFFFFFF;

  std::size_t slotOf(omUInt64 key) const;
  ORMIX_MATH_API void grow();

  std::vector<omUInt64> _keys;
  std::vector<omUInt32> _slots;  // their number is a power of two
  unsigned _shift = 64;
  omUInt64 _secret = 0;
};

inline std::size_t KeyNumbers::slotOf(omUInt64 key) const {
  omUInt64 hash = (key ^ _secret) * 0x9E3779B97F4A7C15u;
  hash = (hash ^ hash >> 32) * 0xD6E8FEB86659FD93u;
  return static_cast<std::size_t>(hash >> _shift);
}

/// The lengths of the parts of the boundary of one region that are given to others, pair by pair.
class RegionLengths {
 public:
  /// Two regions, first < second, and what the boundary of each has given to the other.
  struct Pair {
    omUInt32 first;
    omUInt32 second;
    omReal64 onFirst;
    omReal64 onSecond;
  };

  explicit RegionLengths(std::size_t nbRegions) : _free(nbRegions, 0) {}

  /// Gives a part of the boundary of a region to another region.
  void give(omUInt32 region, omUInt32 other, omReal64 length) {
    Lengths& lengths = lengthsOf(region, other);
    (region < other ? lengths.onFirst : lengths.onSecond) += length;
  }
  /// The same of each to the other.
  void share(omUInt32 region, omUInt32 other, omReal64 length) {
    Lengths& lengths = lengthsOf(region, other);
    lengths.onFirst += length;
    lengths.onSecond += length;
  }
  /// Leaves a part to nobody.
  void leave(omUInt32 region, omReal64 length) { _free[region] += length; }

  /// By region.
  const std::vector<omReal64>& free() const { return _free; }
  /// In ascending order.
  ORMIX_MATH_API std::vector<Pair> pairs() const;

 private:
  struct Lengths {
    omReal64 onFirst;
    omReal64 onSecond;
  };

  Lengths& lengthsOf(omUInt32 region, omUInt32 other) {
    const omUInt32 number = _numbers[region < other ? omUInt64{region} << 32 | other : omUInt64{other} << 32 | region];
    if (number == _lengths.size()) _lengths.push_back({0, 0});
    return _lengths[number];
  }

  std::vector<omReal64> _free;
  KeyNumbers _numbers;
  std::vector<Lengths> _lengths;
};

}  // namespace ormix::detail
