#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>

/// \file
/// Sets of pixels made in order of their pixels; not installed.

namespace ormix::geom::detail {

/// Makes RowIntersections from runs that come in order, each in amortised constant time. The order is the caller's
/// to keep and is not checked. What is made is canonical: adjacent runs are one, and there are no rows without runs
/// before the first pixel and after the last one.
class RowIntersectionsBuilder {
 public:
  /// Room for this many rows and runs, so that they are added without allocation.
  void reserve(std::size_t nbRows, std::size_t nbRuns);

  /// Adds the pixels of a run that is not empty, behind all pixels added before. Rows that are left out have no runs.
  /// \throw ORMIXGeometryException, logged, if there were more than `RowIntersections::s_maxNbRows` rows, or the row
  /// is the last one that omUInt64 holds
  void addRun(omUInt64 row, const PixelRun& run) {
    RowIntersections::RunColl& runs = _rows._runColl;
    if (!isLastRow(row)) {
      openRow(row);
    } else if (runs.back().end == run.begin) {
      runs.back().end = run.end;
      return;
    }
    runs.push_back(run);
    _rows._runEndColl.back() = runs.size();
  }

  /// Adds a row behind all rows added before; [first, last) are its runs, of which no two are adjacent. Without runs
  /// nothing is added.
  /// \throw as addRun()
  void addRow(omUInt64 row, const PixelRun* first, const PixelRun* last);

  /// \throw ORMIXGeometryException, logged, if no set has pixels in both rows: they are too far apart, or the last one
  /// is the last that omUInt64 holds
  static void checkRows(omUInt64 first, omUInt64 last);

  /// Moves all rows so that the first one is `startRow`, which leaves room for the others.
  static void moveTo(omUInt64 startRow, RowIntersections& rows) { rows._startRow = startRow; }

  /// The pixels added so far; the builder is empty after that.
  RowIntersections take();

 private:
  bool isLastRow(omUInt64 row) const { return row + 1 == _rows.getEndRow() && _rows.getNbRows() > 0; }
  /// Adds the row, and rows without runs up to it.
  void openRow(omUInt64 row);

  RowIntersections _rows;
};

}  // namespace ormix::geom::detail
