#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/OpenParts.h>
#include <ORMIXGeometry/Entity/2d/Shape/PixelConnectivity.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>

#include <vector>

namespace ormix::geom::detail {

/// A run and its row.
struct RowRun {
  omUInt64 row;
  PixelRun run;

  omUInt64 layer() const { return row; }
  friend bool operator<(const RowRun& a, const RowRun& b) {
    return a.row != b.row ? a.row < b.row : a.run.begin < b.run.begin;
  }
};

/// The set of the pixels of runs in order.
RowIntersections makeSet(const std::vector<RowRun>& runs);

/// The connected components of pixels whose rows arrive one after the other, for images larger than memory. Held are
/// the components that a later row may still touch, which are those with pixels in the last row, and the others until
/// they are taken: memory does not grow with the number of rows. Time is linear in the runs, times at most the
/// logarithm of the runs of a component that has parts which met in a later row.
class ORMIX_GEOMETRY_API OpenComponents {
 public:
  /// No rows yet.
  explicit OpenComponents(ePixelConnectivity connectivity) : _connectivity(connectivity) {}

  /// Adds the next row; the rows between the last one and this one have no pixels. Runs may be adjacent.
  /// \return a failure, with nothing changed, if `y` is not above the last row or is the largest number there is, or
  /// the runs are empty, not in ascending order or share pixels
  BoolResult addRow(omUInt64 y, const RowIntersections::Row& runs);

  /// Takes out the components that no later row can touch, in order of their first pixel, row by row, each as
  /// RowIntersections without adjacent runs.
  std::vector<RowIntersections> takeFinished();

  /// Takes out all components, in the same order, and forgets the rows.
  std::vector<RowIntersections> finish();

 private:
  template <ePixelConnectivity Connectivity>
  void linkRow(omUInt64 y, const RowIntersections::Row& runs);

  ePixelConnectivity _connectivity;
  bool _hasRows = false;
  omUInt64 _lastRow = 0;
  RowIntersections::RunColl _lastRuns;
  OpenParts<RowRun, RowIntersections> _parts;
};

}  // namespace ormix::geom::detail
