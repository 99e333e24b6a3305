#include <ORMIXMath/Contact/RegionLengths.h>
#include <ORMIXUtil/HashSecret.h>

#include <algorithm>
#include <tuple>

namespace ormix::detail {

void KeyNumbers::grow() {
  constexpr unsigned s_leastBits = 6;
  const unsigned nbBits = _slots.empty() ? s_leastBits : 64 - _shift + 1;
  _shift = 64 - nbBits;
  _secret = hashSecret();
  _slots.assign(std::size_t{1} << nbBits, s_none);
  for (std::size_t number = 0; number < _keys.size(); ++number) {
    std::size_t slot = slotOf(_keys[number]);
    while (_slots[slot] != s_none) slot = (slot + 1) & (_slots.size() - 1);
    _slots[slot] = static_cast<omUInt32>(number);
  }
}

std::vector<RegionLengths::Pair> RegionLengths::pairs() const {
  std::vector<Pair> result;
  result.reserve(_lengths.size());
  for (std::size_t number = 0; number < _lengths.size(); ++number) {
    const omUInt64 key = _numbers.keys()[number];
    result.push_back({static_cast<omUInt32>(key >> 32), static_cast<omUInt32>(key), _lengths[number].onFirst,
                      _lengths[number].onSecond});
  }
  std::sort(result.begin(), result.end(),
            [](const Pair& a, const Pair& b) { return std::tie(a.first, a.second) < std::tie(b.first, b.second); });
  return result;
}

}  // namespace ormix::detail
