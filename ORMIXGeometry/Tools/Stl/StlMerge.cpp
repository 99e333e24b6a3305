#include <ORMIXGeometry/Tools/Stl/StlMerge.h>
#include <ORMIXGeometry/Tools/Stl/TripleTable.h>
#include <ORMIXUtil/Memory/LargePages.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <utility>

namespace ormix::geom {

namespace {

omUInt32 bitsOf(omReal32 value) {
  omUInt32 bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

/// The bits of a coordinate, with +0 for -0: two vertices are equal if their canonical bits are.
omUInt32 canonicalBits(omReal32 value) {
  constexpr omUInt32 minusZero = 0x80000000u;
  const omUInt32 bits = bitsOf(value);
  return bits == minusZero ? 0 : bits;
}

/// An integer that increases with the coordinate: 0 for -inf, up to +inf, followed by the NaNs in the order of their
/// bits.
omUInt32 orderOf(omReal32 value) {
  constexpr omUInt32 sign = 0x80000000u, minusInfinity = 0xFF800000u;
  const omUInt32 bits = bitsOf(value);
  if (bits > minusInfinity) return bits;  // negative NaNs have the largest bits already
  return ((bits & sign) != 0 ? ~bits : bits | sign) - ~minusInfinity;
}

detail::TripleTable::Triple keyOf(const omReal32* coords) {
  return {canonicalBits(coords[0]), canonicalBits(coords[1]), canonicalBits(coords[2])};
}

/// Appends the triples of a table as vertices, each with its index in `vertices`.
void appendVertices(const detail::TripleTable& table, std::vector<CoordWithIndex>& vertices) {
  for (const detail::TripleTable::Triple& triple : table.getTriples()) {
    CoordWithIndex vertex{0, 0, 0, static_cast<omUInt32>(vertices.size())};
    std::memcpy(&vertex, &triple, sizeof triple);
    vertices.push_back(vertex);
  }
}

/// Partitions the corners of triangles by their hashes and merges equal ones. Equal corners are in the same part, and
/// the hash table of a part fits into the first two levels of the cache, however many corners there are.
class CornerParts {
 public:
  explicit CornerParts(const std::vector<omReal32>& coordColl) : _coords(coordColl), _nbCorners(coordColl.size() / 3) {
    constexpr std::size_t cornersPerPart = std::size_t(1) << 14;
    unsigned bits = 0;
    while (_nbCorners > (cornersPerPart << bits) && bits < s_maxBits) ++bits;
    _ends.assign(std::size_t(1) << bits, 0);
    for (std::size_t at = 0; at < _nbCorners; ++at) ++_ends[partOf(keyOf(&_coords[3 * at]))];
  }

  /// The different corners in arbitrary order, each with its index in the result. The index of every corner in the
  /// result is written to `placeColl`.
  std::vector<CoordWithIndex> merge(std::vector<omUInt32>& placeColl) {
    const auto nbUsed = _ends.size() - static_cast<std::size_t>(std::count(_ends.begin(), _ends.end(), 0));
    std::vector<CoordWithIndex> vertices;
    reserveLarge(vertices, _nbCorners);  // address space: memory is taken where vertices come
    // If most parts are empty, few corners are different: one table for all of them is small enough.
    if (4 * nbUsed < _ends.size()) {
      detail::TripleTable table(0);
      for (std::size_t at = 0; at < _nbCorners; ++at) placeColl[at] = table.add(keyOf(&_coords[3 * at]));
      appendVertices(table, vertices);
    } else {
      mergeParts(placeColl, vertices);
    }
    return vertices;
  }

 private:
  struct Corner {
    detail::TripleTable::Triple key;
    omUInt32 index;
  };
  /// With more than 2^10 parts, distributing the corners takes longer than merging them.
  static constexpr unsigned s_maxBits = 10;

  std::size_t partOf(const detail::TripleTable::Triple& key) const {
    // The tables use the lower bits of the hash, so that the part must be chosen by upper ones.
    return static_cast<std::size_t>((omUInt64(detail::TripleTable::hash(key, _secret)) >> 40) & (_ends.size() - 1));
  }

  void mergeParts(std::vector<omUInt32>& placeColl, std::vector<CoordWithIndex>& vertices) {
    std::size_t sum = 0;
    for (std::size_t& end : _ends) sum += std::exchange(end, sum);
    const std::unique_ptr<Corner[]> corners(new Corner[_nbCorners]);  // uninitialized until the corners are distributed
    adviseLargePages(corners.get(), _nbCorners * sizeof(Corner));
    for (std::size_t at = 0; at < _nbCorners; ++at) {
      const detail::TripleTable::Triple key = keyOf(&_coords[3 * at]);
      corners[_ends[partOf(key)]++] = {key, static_cast<omUInt32>(at)};
    }
    detail::TripleTable table(0);
    std::size_t at = 0;
    for (const std::size_t end : _ends) {
      const auto first = static_cast<omUInt32>(vertices.size());
      for (; at < end; ++at) placeColl[corners[at].index] = first + table.add(corners[at].key);
      appendVertices(table, vertices);
      table.clear();
    }
  }

  const omUInt64 _secret = hashSecret();
  const std::vector<omReal32>& _coords;
  std::size_t _nbCorners;
  std::vector<std::size_t> _ends;  // sizes of the parts; after `mergeParts` has distributed the corners, their ends
};

/// Sorts vertices lexicographically: all by x, then each range of equal x by y, and each range of equal x and y by z.
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
  /// For fewer vertices, a sort by comparisons is faster than the histograms of a radix sort.
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
  reserveLarge(merged.indexColl, coordColl.size() / 3);
  merged.indexColl.resize(coordColl.size() / 3);
  std::vector<CoordWithIndex> vertices = CornerParts(coordColl).merge(merged.indexColl);
  sortByCoords(vertices);
  reserveLarge(merged.coordColl, 3 * vertices.size());
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
