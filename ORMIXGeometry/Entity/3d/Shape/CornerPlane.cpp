#include <ORMIXGeometry/Entity/2d/Shape/CombinedRuns.h>
#include <ORMIXGeometry/Entity/3d/Shape/CornerPlane.h>

#include <algorithm>

namespace ormix::geom::detail {

namespace {

/// Where the voxels of a row begin and end, in ascending order.
struct RowEdges {
  const omUInt32* next;
  const omUInt32* end;

  explicit RowEdges(const RowIntersections::Row& row)
      : next(row.empty() ? nullptr : &row.begin()->begin), end(row.empty() ? nullptr : next + 2 * row.size()) {}
};

/// The pattern of a corner between places of a line, of which each has a bit for each of the four rows.
std::size_t patternOf(std::size_t before, std::size_t behind) {
  // Bit k goes to bit 2 k.
  static constexpr std::array<omUInt8, 16> spread{0b0000000, 0b0000001, 0b0000100, 0b0000101, 0b0010000, 0b0010001,
                                                  0b0010100, 0b0010101, 0b1000000, 0b1000001, 0b1000100, 0b1000101,
                                                  0b1010000, 0b1010001, 0b1010100, 0b1010101};
  return static_cast<std::size_t>(spread[before] | spread[behind] << 1);
}

}  // namespace

void CornerPlane::set(const NumberedRows& rows, std::size_t slice, const CornerFansTable& fans) {
  static const RowIntersections none;
  const bool hasFormer = slice > 0;
  const RowIntersections& former = hasFormer ? rows.slice(slice - 1) : none;
  const RowIntersections& next = slice < rows.nbSlices() ? rows.slice(slice) : none;
  const auto linesOf = [](const RowIntersections& sliceRows) {
    return Range{sliceRows.getStartRow(), sliceRows.getNbRows() == 0 ? 0 : sliceRows.getNbRows() + omUInt64{1}, 0};
  };
  _ranges = {linesOf(former), linesOf(next)};
  if (_ranges[0].nbLines == 0 || (_ranges[1].nbLines != 0 && _ranges[1].begin < _ranges[0].begin))
    std::swap(_ranges[0], _ranges[1]);
  const omUInt64 firstEnd = _ranges[0].begin + _ranges[0].nbLines;
  if (_ranges[1].nbLines != 0 && _ranges[1].begin <= firstEnd) {  // one range
    _ranges[0].nbLines = std::max(firstEnd, _ranges[1].begin + _ranges[1].nbLines) - _ranges[0].begin;
    _ranges[1].nbLines = 0;
  }
  _ranges[1].firstLine = static_cast<std::size_t>(_ranges[0].nbLines);
  _lineBegins.clear();
  _corners.clear();
  _vertices.clear();
  for (const Range& range : _ranges)
    for (omUInt64 y = range.begin; y < range.begin + range.nbLines; ++y) {
      _lineBegins.push_back(_corners.size());
      addLine({rowOrNone(former, y - 1), rowOrNone(former, y), rowOrNone(next, y - 1), rowOrNone(next, y)}, fans);
    }
}

void CornerPlane::addLine(const RowsAtLine& rows, const CornerFansTable& fans) {
  constexpr omUInt64 none = ~omUInt64{0};
  std::array<RowEdges, 4> edges{RowEdges(rows[0]), RowEdges(rows[1]), RowEdges(rows[2]), RowEdges(rows[3])};
  const auto nextEdge = [&edges] {
    omUInt64 x = none;
    for (const RowEdges& row : edges)
      if (row.next != row.end) x = std::min<omUInt64>(x, *row.next);
    return x;
  };
  std::size_t inside = 0;
  for (omUInt64 x = nextEdge(); x != none;) {
    const std::size_t before = inside;
    for (std::size_t row = 0; row < edges.size(); ++row)
      if (edges[row].next != edges[row].end && *edges[row].next == x) {
        inside ^= std::size_t{1} << row;
        ++edges[row].next;
      }
    addCorner(static_cast<omUInt32>(x), patternOf(before, inside), fans);
    const omUInt64 next = nextEdge();
    if (inside != 0 && inside != 0b1111)
      for (++x; x < next; ++x) addCorner(static_cast<omUInt32>(x), patternOf(inside, inside), fans);
    x = next;
  }
}

void CornerPlane::addCorner(omUInt32 x, std::size_t pattern, const CornerFansTable& fans) {
  _corners.push_back({x, static_cast<omUInt32>(_vertices.size()), static_cast<omUInt8>(pattern)});
  _vertices.insert(_vertices.end(), fans[pattern].nbFans, s_noVertex);
}

}  // namespace ormix::geom::detail
