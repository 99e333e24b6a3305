#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/RasterChains.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// \file
/// What chains of edges cover in each row of pixels, row by row; not installed.

namespace ormix::geom::detail {

/// The columns begin, begin + 1, …, end - 1; none where end <= begin.
struct ColumnSpan {
  omInt64 begin;
  omInt64 end;
};

inline omInt64 orderOf(omInt64 column) { return column; }
inline omInt64 orderOf(const ColumnSpan& span) { return span.begin; }

/// Follows a chain from row to row: the first column whose centre is at the crossing with the centres of the row, or
/// right of it.
template <class T>
class CentreTracker {
 public:
  using Place = omInt64;  ///< a column

  /// The rows whose centres a chain crosses: its upper end is on it, its lower one is not.
  static RowRange rowsOf(omReal64 top, omReal64 bottom) { return {firstCentre(top), firstCentre(bottom)}; }

  explicit CentreTracker(const RasterChain<T>& chain) : _lower(chain.top), _step(chain.step), _endRow(chain.rows.end) {}

  omInt64 endRow() const { return _endRow; }

  /// \param row one of the chain's rows, none before that of the call before
  Place at(omInt64 row) {
    const omReal64 y = static_cast<omReal64>(row) + 0.5;
    if (static_cast<omReal64>(_lower->getY()) <= y) moveTo(y);
    return _isVertical ? _column : crossing(_edge, y, 0.5).ceil();
  }

 private:
  void moveTo(omReal64 y) {
    do _lower += _step;
    while (static_cast<omReal64>(_lower->getY()) <= y);
    // Each chain is a stream of its own through memory, which the processor does not foresee.
    __builtin_prefetch(reinterpret_cast<const void*>(reinterpret_cast<std::uintptr_t>(_lower) +
                                                     static_cast<std::uintptr_t>(128 * _step)));
    const Point2dData<T>& upper = *(_lower - _step);
    _isVertical = upper.getX() == _lower->getX();
    if (_isVertical)
      _column = firstCentre(static_cast<omReal64>(upper.getX()));
    else
      _edge.set(static_cast<omReal64>(upper.getX()), static_cast<omReal64>(upper.getY()),
                static_cast<omReal64>(_lower->getX()), static_cast<omReal64>(_lower->getY()));
  }

  const Point2dData<T>* _lower;  // the lower end of the edge
  std::ptrdiff_t _step;
  omInt64 _endRow;
  bool _isVertical = false;
  omInt64 _column = 0;
  DownEdge _edge{};
};

/// Follows a chain from row to row: the columns of the pixels that it touches, which are without a gap.
/// \param Interior whether only the interior of the pixels counts, otherwise their left and upper sides too
template <class T, bool Interior>
class TouchTracker {
 public:
  using Place = ColumnSpan;  ///< columns; none for a chain on the border of pixels

  static RowRange rowsOf(omReal64 top, omReal64 bottom) {
    return {floorColumn(top), Interior ? ceilColumn(bottom) : floorColumn(bottom) + 1};
  }

  explicit TouchTracker(const RasterChain<T>& chain)
      : _lower(chain.top + chain.step), _bottom(chain.bottom), _step(chain.step), _endRow(chain.rows.end) {}

  omInt64 endRow() const { return _endRow; }

  /// \param row one of the chain's rows, none before that of the call before
  Place at(omInt64 row) {
    const auto top = static_cast<omReal64>(row);
    while (static_cast<omReal64>(_lower->getY()) < top && _lower != _bottom) _lower += _step;
    ColumnSpan span{s_largestColumn, -s_largestColumn};
    for (;;) {
      addEdge(top, span);
      if (static_cast<omReal64>(_lower->getY()) >= top + 1 || _lower == _bottom) return span;
      _lower += _step;
    }
  }

 private:
  static ColumnPosition positionOf(omReal64 x) {
    const omInt64 below = floorColumn(x);
    return {below, static_cast<omReal64>(below) == x ? 0 : 1};
  }

  /// Adds the columns of the part of the edge from row `top` to before the next one.
  void addEdge(omReal64 top, ColumnSpan& span) const {
    const Point2dData<T>& upper = *(_lower - _step);
    const auto x0 = static_cast<omReal64>(upper.getX());
    const auto y0 = static_cast<omReal64>(upper.getY());
    const auto x1 = static_cast<omReal64>(_lower->getX());
    const auto y1 = static_cast<omReal64>(_lower->getY());
    if (Interior && y1 <= top) return;
    const omReal64 bottom = top + 1;
    DownEdge edge{};
    if (x0 != x1 && (y0 < top || y1 > bottom)) edge.set(x0, y0, x1, y1);
    const ColumnPosition from = y0 >= top || x0 == x1 ? positionOf(x0) : crossing(edge, top, 0);
    const ColumnPosition to = y1 <= bottom || x0 == x1 ? positionOf(x1) : crossing(edge, bottom, 0);
    // The end of the part belongs to it if it is above the next row. Otherwise the columns up to it count, but not one
    // that only begins there.
    const omInt64 fromEnd = Interior ? from.ceil() : from.floor() + 1;
    const omInt64 toEnd = Interior || y1 >= bottom ? to.ceil() : to.floor() + 1;
    span.begin = std::min({span.begin, from.floor(), to.floor()});
    span.end = std::max({span.end, fromEnd, toEnd});
  }

  const Point2dData<T>* _lower;  // the lower end of the edge
  const Point2dData<T>* _bottom;
  std::ptrdiff_t _step;
  omInt64 _endRow;
};

/// Walks down the rows with the chains that have them, in order of their places.
template <class T, class Tracker>
class RasterSweep {
 public:
  using Place = typename Tracker::Place;

  /// A chain in the row.
  struct Entry {
    Place place;
    omUInt32 tracker;
  };

  /// Adds the chains of a ring, see RasterChains::add().
  void add(const Polygon2d<T>& ring, std::size_t ringIndex) { _chains.add(ring, ringIndex); }

  /// \param clip rows that are wanted
  explicit RasterSweep(const RowRange& clip) : _chains(clip) {}

  /// The rows of all chains; empty where there are none.
  RowRange rows() const {
    RowRange all{s_largestColumn, -s_largestColumn};
    for (const RasterChain<T>& chain : _chains.chains()) {
      all.begin = std::min(all.begin, chain.rows.begin);
      all.end = std::max(all.end, chain.rows.end);
    }
    return all;
  }

  /// To be called once, with rows(), before the first row.
  void start(const RowRange& rows) {
    const std::vector<RasterChain<T>>& chains = _chains.chains();
    if (chains.size() >= s_none)
      logAndThrow("A polygon cannot be rasterized: it turns up and down " + std::to_string(chains.size()) + " times",
                  __PRETTY_FUNCTION__, __FILE__, __LINE__);
    _rows = rows;
    if (rows.empty()) return;
    _firstOfRow.assign(static_cast<std::size_t>(rows.end - rows.begin), s_none);
    _nextOfRow.resize(chains.size());
    for (std::size_t i = chains.size(); i-- > 0;) {
      omUInt32& first = _firstOfRow[static_cast<std::size_t>(chains[i].rows.begin - rows.begin)];
      _nextOfRow[i] = first;
      first = static_cast<omUInt32>(i);
    }
  }

  /// The chains of a row, the leftmost one first. Rows are asked for from the first one on, without a gap; those before
  /// and behind have no chains.
  const std::vector<Entry>& row(omInt64 row) {
    if (row < _rows.begin || row >= _rows.end) {
      _entries.clear();
      return _entries;
    }
    std::size_t nbKept = 0;
    for (const Entry& entry : _entries) {
      Tracker& tracker = _trackers[entry.tracker];
      if (tracker.endRow() > row)
        _entries[nbKept++] = {tracker.at(row), entry.tracker};
      else
        _free.push_back(entry.tracker);
    }
    _entries.resize(nbKept);
    sort(_entries);
    addArrivals(row);
    return _entries;
  }

 private:
  static constexpr omUInt32 s_none = static_cast<omUInt32>(-1);

  static bool isLeft(const Entry& a, const Entry& b) { return orderOf(a.place) < orderOf(b.place); }

  /// Chains mostly keep their order from one row to the next: insertion takes linear time then. Where they do not, it
  /// gives up.
  static void sort(std::vector<Entry>& entries) {
    std::size_t budget = 4 * entries.size();
    for (std::size_t i = 1; i < entries.size(); ++i) {
      if (!isLeft(entries[i], entries[i - 1])) continue;
      const Entry moved = entries[i];
      std::size_t hole = i;
      for (; hole > 0 && isLeft(moved, entries[hole - 1]); --hole) entries[hole] = entries[hole - 1];
      entries[hole] = moved;
      if (i - hole > budget) return std::sort(entries.begin(), entries.end(), isLeft);
      budget -= i - hole;
    }
  }

  omUInt32 makeTracker(const RasterChain<T>& chain) {
    if (_free.empty()) {
      _trackers.emplace_back(chain);
      return static_cast<omUInt32>(_trackers.size() - 1);
    }
    const omUInt32 index = _free.back();
    _free.pop_back();
    _trackers[index] = Tracker(chain);
    return index;
  }

  /// Chains that begin in a row are anywhere in memory.
  void prefetchArrivals(omInt64 row) {
    if (row >= _rows.end) return;
    for (omUInt32 i = _firstOfRow[static_cast<std::size_t>(row - _rows.begin)]; i != s_none; i = _nextOfRow[i])
      __builtin_prefetch(_chains.chains()[i].top);
  }

  void addArrivals(omInt64 row) {
    prefetchArrivals(row + 1);
    _arrivals.clear();
    for (omUInt32 i = _firstOfRow[static_cast<std::size_t>(row - _rows.begin)]; i != s_none; i = _nextOfRow[i]) {
      const omUInt32 tracker = makeTracker(_chains.chains()[i]);
      _arrivals.push_back({_trackers[tracker].at(row), tracker});
    }
    if (_arrivals.empty()) return;
    sort(_arrivals);
    // Merged from the right, so that it needs no other memory.
    std::size_t i = _entries.size();
    std::size_t j = _arrivals.size();
    _entries.resize(i + j);
    for (std::size_t end = i + j; j > 0;)
      _entries[--end] = i > 0 && isLeft(_arrivals[j - 1], _entries[i - 1]) ? _entries[--i] : _arrivals[--j];
  }

  RasterChains<T, Tracker> _chains;
  RowRange _rows{0, 0};
  std::vector<omUInt32> _firstOfRow;  // the first chain that begins in a row
  std::vector<omUInt32> _nextOfRow;   // for each chain, the next one that begins in its row
  std::vector<Tracker> _trackers;
  std::vector<omUInt32> _free;  // trackers of chains that are over
  std::vector<Entry> _entries;
  std::vector<Entry> _arrivals;
};

}  // namespace ormix::geom::detail
