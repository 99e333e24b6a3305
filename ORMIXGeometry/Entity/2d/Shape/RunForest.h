#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/ConnectedComponents.h>
#include <ORMIXGeometry/Entity/2d/Shape/RunNeighbours.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <algorithm>
#include <limits>
#include <string>
#include <utility>
#include <vector>

/// \file
/// Union and find over runs, in the plane and in space; not installed.

namespace ormix::geom::detail {

/// Trees of runs, of which each node but the roots has a parent with a smaller index.
class RunForest {
 public:
  explicit RunForest(std::size_t nbRuns) { _parents.reserve(nbRuns); }

  /// Adds the next run, in the tree of an earlier one, beside that. Looking for the root here takes longer than joins
  /// save, which shorten the ways that they take.
  void addTo(omUInt32 run) { _parents.push_back(_parents[run]); }
  /// Adds the next run as a tree of its own.
  void add() { _parents.push_back(static_cast<omUInt32>(_parents.size())); }
  /// Joins the trees of two runs.
  void join(omUInt32 a, omUInt32 b) {
    const omUInt32 rootOfA = rootOf(a);
    const omUInt32 rootOfB = rootOf(b);
    _parents[std::max(rootOfA, rootOfB)] = std::min(rootOfA, rootOfB);
  }

  /// Numbers the trees in order of their roots, which are their first runs; to be called once, at the end.
  RunComponents take() {
    omUInt32 nbTrees = 0;
    // A parent comes first and so has its number already.
    for (std::size_t run = 0; run < _parents.size(); ++run)
      _parents[run] = _parents[run] == run ? nbTrees++ : _parents[_parents[run]];
    return {nbTrees, std::move(_parents)};
  }

 private:
  omUInt32 rootOf(omUInt32 run) {
    while (_parents[run] != run) run = _parents[run] = _parents[_parents[run]];
    return run;
  }

  std::vector<omUInt32> _parents;
};

/// Finds for each run of a row the runs of another row that it touches, in order.
/// \param onRun called as onRun(run, touched) with each run and the first one that it touches, null where there is none
/// \param onFurther called as onFurther(run, touched) with each further one
template <ePixelConnectivity Connectivity, class OnRun, class OnFurther>
void matchRuns(const RowIntersections::Row& above, const RowIntersections::Row& row, OnRun onRun, OnFurther onFurther) {
  using Neighbours = RunNeighbours<Connectivity>;
  const PixelRun* touched = above.begin();
  for (const PixelRun& run : row) {
    while (touched != above.end() && Neighbours::isLeftOf(*touched, run)) ++touched;
    const bool isTouched = touched != above.end() && !Neighbours::isLeftOf(run, *touched);
    onRun(run, isTouched ? touched : nullptr);
    if (!isTouched) continue;
    // Whether the run above ends first is not asked: if not, the one behind it begins behind this run anyway, and the
    // processor would guess half of the answers wrong.
    for (; touched + 1 != above.end() && !Neighbours::isLeftOf(run, touched[1]); ++touched) onFurther(run, touched[1]);
  }
}

/// Calls visit(run, touched) for each run of a row with each run of another row that it touches, in order.
template <ePixelConnectivity Connectivity, class Visit>
void visitTouching(const RowIntersections::Row& above, const RowIntersections::Row& row, Visit visit) {
  matchRuns<Connectivity>(
      above, row,
      [&visit](const PixelRun& run, const PixelRun* touched) {
        if (touched != nullptr) visit(run, *touched);
      },
      visit);
}

/// Adds the runs of a row, in the trees of those of the row above that they touch and of adjacent ones.
/// \param indexOf the index of a run of either row in the forest
template <ePixelConnectivity Connectivity, class IndexOf>
void addRow(const RowIntersections::Row& above, const RowIntersections::Row& row, IndexOf indexOf, RunForest& forest) {
  matchRuns<Connectivity>(
      above, row,
      [&](const PixelRun& run, const PixelRun* touched) {
        if (touched != nullptr)
          forest.addTo(indexOf(touched));
        else
          forest.add();
        if (&run != row.begin() && (&run)[-1].end == run.begin) forest.join(indexOf(&run) - 1, indexOf(&run));
      },
      [&](const PixelRun& run, const PixelRun& further) { forest.join(indexOf(&further), indexOf(&run)); });
}

/// \throw ORMIXGeometryException, logged, if runs cannot be numbered with 32 bits
inline void checkNbRuns(std::size_t nbRuns) {
  if (nbRuns >= std::numeric_limits<omUInt32>::max())
    logAndThrow("Components of " + std::to_string(nbRuns) + " runs: there can be at most " +
                    std::to_string(std::numeric_limits<omUInt32>::max() - 1),
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

}  // namespace ormix::geom::detail
