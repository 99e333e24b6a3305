#include <ORMIXGeometry/Entity/2d/Shape/ContourRings.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersectionsBuilder.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <string>
#include <type_traits>

namespace ormix::geom::detail {

namespace {

// A side is the left (even index) or right (odd index) end of a run: side 2k + s belongs to run k. It is one pixel
// high. With the pixels on the left of the direction, left sides are followed upwards and right sides downwards.
using Side = omUInt32;

constexpr bool isRightSide(Side side) { return (side & 1u) != 0; }

/// The columns of all sides, in order of the runs.
const omUInt32* columnsOfSides(const RowIntersections& rows) {
  static_assert(sizeof(PixelRun) == 2 * sizeof(omUInt32) && std::is_trivially_copyable_v<PixelRun>);
  return reinterpret_cast<const omUInt32*>(rows.getRunColl().data());
}

/// For each row and one more, the index of its first side.
std::vector<Side> firstSides(const RowIntersections& rows) {
  std::vector<Side> first;
  first.reserve(rows.getNbRows() + 1);
  first.push_back(0);
  for (omUInt64 row = rows.getStartRow(); row != rows.getEndRow(); ++row)
    first.push_back(first.back() + static_cast<Side>(2 * rows.getRow(row).size()));
  return first;
}

bool hasAdjacentRuns(const RowIntersections& rows) {
  for (omUInt64 row = rows.getStartRow(); row != rows.getEndRow(); ++row) {
    const RowIntersections::Row runs = rows.getRow(row);
    for (std::size_t i = 1; i < runs.size(); ++i)
      if (runs[i].begin == runs[i - 1].end) return true;
  }
  return false;
}

RowIntersections joinAdjacentRuns(const RowIntersections& rows) {
  RowIntersectionsBuilder builder;
  builder.reserve(rows.getNbRows(), rows.getRunColl().size());
  for (omUInt64 row = rows.getStartRow(); row != rows.getEndRow(); ++row)
    for (const PixelRun& run : rows.getRow(row)) builder.addRun(row, run);
  return builder.take();
}

/// Links the sides of two rows, one above and one below a horizontal line, in the direction of the boundary: `next` of
/// a side is the one that the boundary comes to after it, past at most one horizontal edge on the line.
///
/// The ends of the runs above and below are merged by their columns. Between two of them the line is part of the
/// boundary if the pixels above or those below are inside, not both.
class LineLinks {
 public:
  LineLinks(const omUInt32* columns, Side* next, bool is8Connected)
      : _columns(columns), _next(next), _is8Connected(is8Connected) {}

  /// \param above,aboveEnd,below,belowEnd the sides of the two rows
  void link(Side above, Side aboveEnd, Side below, Side belowEnd) {
    _above = above;
    _aboveEnd = aboveEnd;
    _below = below;
    _belowEnd = belowEnd;
    // In each round both next sides are left ones or both are right ones: the line before them is not boundary.
    while (_above != _aboveEnd && _below != _belowEnd) {
      if (columnAfterAbove() > _columns[_below] && columnAfterBelow() > _columns[_above]) {
        linkDown();
      } else if (columnAfterAbove() < _columns[_below]) {
        linkWithin(_above);
      } else if (columnAfterBelow() < _columns[_above]) {
        linkWithin(_below);
      } else {
        linkPastTouchingPixels();
      }
    }
    while (_above != _aboveEnd) linkWithin(_above);
    while (_below != _belowEnd) linkWithin(_below);
  }

 private:
  // Beyond the last side of a row there is none: a column larger than all.
  static constexpr omUInt64 s_noColumn = omUInt64{1} << 32;
  omUInt64 columnOf(Side side, Side end) const { return side < end ? _columns[side] : s_noColumn; }
  omUInt64 columnAfterAbove() const { return columnOf(_above + 1, _aboveEnd); }
  omUInt64 columnAfterBelow() const { return columnOf(_below + 1, _belowEnd); }

  /// The boundary goes on from one row to the other, straight or past an edge on the line.
  void linkDown() {
    if (isRightSide(_above))
      _next[_above] = _below;
    else
      _next[_below] = _above;
    ++_above;
    ++_below;
  }

  /// The boundary turns back into the row: past a run of pixels without pixels on the other side of the line, or a gap
  /// without a gap there. Sides above are reached at their right end, those below at their left one.
  void linkWithin(Side& side) {
    const bool isAbove = &side == &_above;
    const Side left = isRightSide(side) ? side + 1 : side;
    const Side right = isRightSide(side) ? side : side + 1;
    if (isAbove)
      _next[right] = left;
    else
      _next[left] = right;
    side += 2;
  }

  /// As long as an edge on the line ends where two pixels touch at a corner, another one begins there. The boundary
  /// keeps to its pixel if the pixels are in different regions, otherwise it goes on along the other pixel.
  void linkPastTouchingPixels() {
    Side open = _columns[_above] < _columns[_below] ? _above++ : _below++;
    while (columnOf(_above, _aboveEnd) == columnOf(_below, _belowEnd)) {
      const bool isBelowInside = isRightSide(_below);
      const Side own = isBelowInside ? _below : _above;
      const Side other = isBelowInside ? _above : _below;
      linkAlongLine(open, _is8Connected ? other : own, isBelowInside);
      open = _is8Connected ? own : other;
      ++_above;
      ++_below;
    }
    const bool isBelowInside = isRightSide(_below);
    const bool closesAbove = columnOf(_above, _aboveEnd) < columnOf(_below, _belowEnd);
    linkAlongLine(open, closesAbove ? _above++ : _below++, isBelowInside);
  }

  /// Links two sides past the edge between them, which is followed to the right if the pixels are below it.
  void linkAlongLine(Side left, Side right, bool isBelowInside) {
    if (isBelowInside)
      _next[left] = right;
    else
      _next[right] = left;
  }

  const omUInt32* _columns;
  Side* _next;
  bool _is8Connected;
  Side _above = 0, _aboveEnd = 0, _below = 0, _belowEnd = 0;
};

/// Links the sides of all rows.
std::unique_ptr<Side[]> linkSides(const omUInt32* columns, const std::vector<Side>& first,
                                  ePixelConnectivity connectivity) {
  std::unique_ptr<Side[]> next(new Side[first.back()]);
  LineLinks links(columns, next.get(), connectivity == ePC_8);
  Side above = 0;
  for (std::size_t row = 0; row + 1 < first.size(); ++row) {
    links.link(above, first[row], first[row], first[row + 1]);
    above = first[row];
  }
  links.link(above, first.back(), first.back(), first.back());
  return next;
}

/// Follows the links of all sides, ring by ring.
class RingWalk {
 public:
  RingWalk(const omUInt32* columns, Side* next, const std::vector<Side>& first, ContourRings& result)
      : _columns(columns), _next(next), _first(first), _result(result) {}

  void run() {
    // Two corners a side at most, and room for writing ahead; what is not used is never written, and takes no memory.
    _result.corners.reset(new PixelCorner[2 * std::size_t{_first.back()} + 1]);
    for (std::size_t row = 0; row + 1 < _first.size(); ++row)
      for (Side side = _first[row]; side != _first[row + 1]; ++side)
        if ((_next[side] & s_isVisited) == 0) addRing(side, static_cast<omUInt32>(row));
  }

 private:
  // Of a visited side, `next` is the index of its ring, which is less than half the number of sides.
  static constexpr Side s_isVisited = 0x80000000u;

  std::size_t ringOf(Side side) const { return _next[side] & ~s_isVisited; }

  /// The ring of a side that is the first one of it, row by row: a left side if the ring is the boundary of a region, a
  /// right side if that of a hole. Between it and the side before it in its row is no other boundary.
  void addRing(Side start, omUInt32 row) {
    const bool isHole = isRightSide(start);
    std::size_t parent = ContourRings::s_noParent;
    if (start != _first[row]) {
      const std::size_t beside = ringOf(start - 1);
      parent = _result.rings[beside].isHole == isHole ? _result.rings[beside].parent : beside;
    }
    const std::size_t begin = _result.rings.empty() ? 0 : _result.rings.back().end;
    const std::size_t end = begin + walk(start, row, &_result.corners[begin]);
    _result.rings.push_back({begin, end, parent, isHole});
  }

  /// Writes the corners of a ring; returns their number.
  std::size_t walk(Side start, omUInt32 row, PixelCorner* corners) {
    const Side visited = static_cast<Side>(_result.rings.size()) | s_isVisited;
    // The first corner is at the top of the first side: a left one ends there, a right one begins there, so that this
    // corner comes last.
    PixelCorner* corner = isRightSide(start) ? corners + 1 : corners;
    omUInt32 y = isRightSide(start) ? row + 1 : row;
    Side side = start;
    do {
      const Side following = _next[side];
      _next[side] = visited;
      const omUInt32 from = _columns[side];
      const omUInt32 to = _columns[following];
      corner[0] = {from, y};
      corner[1] = {to, y};
      corner += from != to ? 2 : 0;
      y += isRightSide(following) ? 1u : ~0u;
      side = following;
    } while (side != start);
    const auto nbCorners = static_cast<std::size_t>(corner - corners) - (isRightSide(start) ? 1 : 0);
    if (isRightSide(start)) corners[0] = corners[nbCorners];
    return nbCorners;
  }

  const omUInt32* _columns;
  Side* _next;
  const std::vector<Side>& _first;
  ContourRings& _result;
};

}  // namespace

ContourRings traceRings(const RowIntersections& rows, ePixelConnectivity connectivity) {
  constexpr std::size_t maxNbRuns = std::size_t{1} << 30;
  if (rows.getRunColl().size() >= maxNbRuns)
    logAndThrow("Boundaries of " + std::to_string(rows.getRunColl().size()) + " runs of pixels, at most " +
                    std::to_string(maxNbRuns - 1) + " are traced",
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
  if (hasAdjacentRuns(rows)) return traceRings(joinAdjacentRuns(rows), connectivity);
  ContourRings result;
  result.startRow = rows.getStartRow();
  const std::vector<Side> first = firstSides(rows);
  const omUInt32* columns = columnsOfSides(rows);
  const std::unique_ptr<Side[]> next = linkSides(columns, first, connectivity);
  RingWalk(columns, next.get(), first, result).run();
  return result;
}

}  // namespace ormix::geom::detail
