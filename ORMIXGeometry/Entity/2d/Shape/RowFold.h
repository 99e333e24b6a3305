#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/CombinedRuns.h>

#include <cstddef>
#include <vector>

/// \file
/// The union and the intersection of many rows; not installed.

namespace ormix::geom::detail {

/// Combines rows that are added one after the other. Rows are combined in pairs, the results in pairs again and so on,
/// so that each run is looked at as often as the logarithm of the number of rows says at most. Memory is used again.
template <eKeptPixels Kept>
class RowFold {
 public:
  /// Forgets the rows added.
  void clear() { _nbRows = 0; }

  /// Adds the row that `fill` writes into the empty collection it is given; of its runs no two are adjacent.
  /// \return whether the result may have pixels, also after further rows; with false, it is to be cleared
  template <class Fill>
  bool add(Fill fill) {
    _row.clear();
    fill(_row);
    // A level holds as many rows as its power of two, if its bit is set.
    std::size_t level = 0;
    for (; (_nbRows >> level & 1) != 0; ++level)
      if (!combineWith(_levels[level])) return false;
    if (level == _levels.size()) _levels.emplace_back();
    _levels[level].swap(_row);
    ++_nbRows;
    return Kept != eKP_Intersect || !_levels[level].empty();
  }

  /// The combination of all rows added; no runs without rows. Valid until rows are added.
  RowIntersections::Row finish() {
    _row.clear();
    bool isFirst = true;
    for (std::size_t level = 0; _nbRows >> level != 0; ++level) {
      if ((_nbRows >> level & 1) == 0) continue;
      if (isFirst)
        _row.swap(_levels[level]);
      else
        combineWith(_levels[level]);
      isFirst = false;
    }
    return {_row.data(), _row.data() + _row.size()};
  }

 private:
  /// Combines the row with another one.
  /// \return whether there may be pixels
  bool combineWith(const RowIntersections::RunColl& other) {
    _combined.resize(_row.size() + other.size() + 1);
    const PixelRun* const end = combineRuns<Kept>({_row.data(), _row.data() + _row.size()},
                                                  {other.data(), other.data() + other.size()}, _combined.data());
    _combined.resize(static_cast<std::size_t>(end - _combined.data()));
    _row.swap(_combined);
    return Kept != eKP_Intersect || !_row.empty();
  }

  std::size_t _nbRows = 0;
  std::vector<RowIntersections::RunColl> _levels;
  RowIntersections::RunColl _row;
  RowIntersections::RunColl _combined;
};

}  // namespace ormix::geom::detail
