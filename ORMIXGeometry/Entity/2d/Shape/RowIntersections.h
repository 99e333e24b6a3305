#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXSerialization/Archive/PackedCoordinates.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>
#include <vector>

namespace ormix::geom {

/// The pixels begin, begin + 1, …, end - 1 of a row.
struct PixelRun {
  omUInt32 begin;
  omUInt32 end;

  friend constexpr bool operator==(const PixelRun& a, const PixelRun& b) {
    return a.begin == b.begin && a.end == b.end;
  }
  friend constexpr bool operator!=(const PixelRun& a, const PixelRun& b) { return !(a == b); }
};

}  // namespace ormix::geom

namespace ormix {

/// Runs are one numeric array of two columns.
template <>
struct PackedCoordinates<geom::PixelRun> {
  using Scalar = omUInt32;
  static constexpr std::size_t nbColumns = 2;
};

}  // namespace ormix

namespace ormix::geom {

/// A set of pixels, row by row from a start row: the runs of a row are not empty, ascend and do not share pixels. Runs
/// may touch, and rows may have none. Kept in one piece, whatever the number of rows.
class ORMIX_GEOMETRY_API RowIntersections {
 public:
  using RunColl = std::vector<PixelRun>;

  /// More rows are refused.
  static constexpr std::size_t s_maxNbRows = 0xFFFFFFFFu;

  /// The runs of one row; valid until the next change.
  class Row {
   public:
    Row(const PixelRun* first, const PixelRun* last) : _first(first), _last(last) {}
    const PixelRun* begin() const { return _first; }
    const PixelRun* end() const { return _last; }
    std::size_t size() const { return static_cast<std::size_t>(_last - _first); }
    bool empty() const { return _first == _last; }
    const PixelRun& operator[](std::size_t index) const { return _first[index]; }

   private:
    const PixelRun* _first;
    const PixelRun* _last;
  };

  /// No rows.
  RowIntersections() = default;

  /// The first row; 0 where there are none.
  omUInt64 getStartRow() const { return _startRow; }
  /// The row behind the last one.
  omUInt64 getEndRow() const { return _startRow + getNbRows(); }
  std::size_t getNbRows() const { return _runEndColl.size(); }
  /// The number of pixels of all runs. Linear in the runs.
  omUInt64 getNbPixels() const;

  /// The runs of all rows, one row after the other.
  const RunColl& getRunColl() const { return _runColl; }
  /// The runs of a row.
  /// \throw ORMIXGeometryException, logged, when the row is not in [getStartRow(), getEndRow())
  Row getRow(omUInt64 row) const;

  /// Adds the pixels [begin, end) of a row; rows in between become rows without runs. Constant time, amortised, at the
  /// end of the last row, otherwise linear in what comes behind. \return a failure, with nothing changed, for an empty
  /// run, one that shares pixels with a run of its row, and a row
  ///         that would make more than `s_maxNbRows` rows
  BoolResult addRun(omUInt64 row, omUInt32 begin, omUInt32 end);

  /// Replaces everything. Linear.
  /// \param nbRunsColl for each row from `startRow` the number of its runs
  /// \param runColl the runs of all rows, one row after the other
  /// \return a failure, with nothing changed, where the numbers do not match or the runs of a row are empty, do not
  /// ascend
  ///         or share pixels
  BoolResult setRows(omUInt64 startRow, const std::vector<omUInt32>& nbRunsColl, RunColl runColl);

  void clear();

  friend bool operator==(const RowIntersections& a, const RowIntersections& b) {
    return a._startRow == b._startRow && a._runEndColl == b._runEndColl && a._runColl == b._runColl;
  }
  friend bool operator!=(const RowIntersections& a, const RowIntersections& b) { return !(a == b); }

 private:
  /// Where the runs of the row with this index begin.
  std::size_t runBegin(std::size_t rowIndex) const { return rowIndex == 0 ? 0 : _runEndColl[rowIndex - 1]; }
  std::size_t ensureRow(omUInt64 row);

  omUInt64 _startRow = 0;
  std::vector<std::size_t> _runEndColl;  // for each row where its runs end in _runColl
  RunColl _runColl;
};

}  // namespace ormix::geom
