#include <ORMIXGeometry/Tools/Stl/StlMerge.h>
#include <ORMIXGeometry/Tools/Stl/TripleTable.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace ormix::geom {

namespace {

omUInt32 bitsOf(omReal32 value) {
  omUInt32 bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

/// The bits, the same for both zeros: vertices are equal where these are.
omUInt32 canonicalBits(omReal32 value) {
  constexpr omUInt32 minusZero = 0x80000000u;
  const omUInt32 bits = bitsOf(value);
  return bits == minusZero ? 0 : bits;
}

/// A number that grows with the coordinate. Numbers from -inf to +inf come first, from 0 on, then NaN by their bits.
omUInt32 orderOf(omReal32 value) {
  constexpr omUInt32 sign = 0x80000000u, minusInfinity = 0xFF800000u;
  const omUInt32 bits = bitsOf(value);
  if (bits > minusInfinity) return bits;  // NaN with a sign: the last ones already
  return ((bits & sign) != 0 ? ~bits : bits | sign) - ~minusInfinity;
}

TripleTable::Triple keyOf(const omReal32* coords) {
  return {canonicalBits(coords[0]), canonicalBits(coords[1]), canonicalBits(coords[2])};
}

/// The vertices of a table with the places they have there.
std::vector<CoordWithIndex> verticesOf(const TripleTable& table) {
  std::vector<CoordWithIndex> vertices(table.getTriples().size());
  for (std::size_t at = 0; at < vertices.size(); ++at) {
    std::memcpy(&vertices[at], &table.getTriples()[at], sizeof(TripleTable::Triple));
    vertices[at].index = static_cast<omUInt32>(at);
  }
  return vertices;
}

/// Sorts by one coordinate after the other: all by x, then each run of equal x by y, then of equal y by z.
class CoordSorter {
 public:
  explicit CoordSorter(const std::vector<CoordWithIndex>& vertices)
      : _vertices(vertices), _items(vertices.size()), _scratch(vertices.size()) {
    for (std::size_t at = 0; at < _items.size(); ++at) _items[at].place = static_cast<omUInt32>(at);
  }

  std::vector<CoordWithIndex> sorted() {
    sort(0, _items.size(), &CoordWithIndex::x);
    std::vector<CoordWithIndex> result(_items.size());
    for (std::size_t at = 0; at < result.size(); ++at) result[at] = _vertices[_items[at].place];
    return result;
  }

 private:
  using Axis = omReal32 CoordWithIndex::*;
  struct Item {
    omUInt32 order, place;
    bool operator<(const Item& other) const { return order < other.order; }
  };
  static constexpr unsigned s_digitBits = 11;
  static constexpr std::size_t s_nbDigits = std::size_t(1) << s_digitBits;
  /// Below this the histograms cost more than comparisons.
  static constexpr std::size_t s_smallestForRadix = 1024;

  void sort(std::size_t first, std::size_t last, Axis axis) {
    for (std::size_t at = first; at < last; ++at) _items[at].order = orderOf(_vertices[_items[at].place].*axis);
    if (last - first < s_smallestForRadix)
      std::sort(_items.data() + first, _items.data() + last);
    else
      for (unsigned shift = 0; shift < 32; shift += s_digitBits) sortByDigit(first, last, shift);
    if (axis == &CoordWithIndex::z) return;
    const Axis next = axis == &CoordWithIndex::x ? &CoordWithIndex::y : &CoordWithIndex::z;
    for (std::size_t begin = first; begin < last;) {
      std::size_t end = begin + 1;
      while (end < last && _items[end].order == _items[begin].order) ++end;
      if (end - begin > 1) sort(begin, end, next);
      begin = end;
    }
  }

  void sortByDigit(std::size_t first, std::size_t last, unsigned shift) {
    std::array<std::size_t, s_nbDigits> starts{};
    const auto digit = [shift](const Item& item) { return (item.order >> shift) & (s_nbDigits - 1); };
    for (std::size_t at = first; at < last; ++at) ++starts[digit(_items[at])];
    std::size_t sum = first;
    for (std::size_t& start : starts) sum += std::exchange(start, sum);
    for (std::size_t at = first; at < last; ++at) _scratch[starts[digit(_items[at])]++] = _items[at];
    std::copy(_scratch.begin() + static_cast<std::ptrdiff_t>(first),
              _scratch.begin() + static_cast<std::ptrdiff_t>(last),
              _items.begin() + static_cast<std::ptrdiff_t>(first));
  }

  const std::vector<CoordWithIndex>& _vertices;
  std::vector<Item> _items, _scratch;
};

}  // namespace

void sortByCoords(std::vector<CoordWithIndex>& vertices) { vertices = CoordSorter(vertices).sorted(); }

MergedCoords removeDoubles(const std::vector<omReal32>& coordColl) {
  MergedCoords merged;
  merged.indexColl.resize(coordColl.size() / 3);
  // In a closed mesh six corners meet in a vertex.
  TripleTable table(merged.indexColl.size() / 3);
  for (std::size_t at = 0; at < merged.indexColl.size(); ++at)
    merged.indexColl[at] = table.add(keyOf(&coordColl[3 * at]));
  std::vector<CoordWithIndex> vertices = verticesOf(table);
  sortByCoords(vertices);
  merged.coordColl.resize(3 * vertices.size());
  std::vector<omUInt32> ranks(vertices.size());
  for (std::size_t at = 0; at < vertices.size(); ++at) {
    std::memcpy(&merged.coordColl[3 * at], &vertices[at], 3 * sizeof(omReal32));
    ranks[vertices[at].index] = static_cast<omUInt32>(at);
  }
  for (omUInt32& index : merged.indexColl) index = ranks[index];
  return merged;
}

}  // namespace ormix::geom
