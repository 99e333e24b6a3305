#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXSerialization/Archive/PackedCoordinates.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>
#include <string_view>
#include <vector>

namespace ormix {
class BaseIArchive;
class BaseOArchive;
}  // namespace ormix

namespace ormix::geom {

/// The consecutive pixels begin, begin + 1, …, end - 1 of a row.
struct PixelRun {
  omUInt32 begin;  ///< column of the first pixel
  omUInt32 end;    ///< column after the last pixel

  friend constexpr bool operator==(const PixelRun& a, const PixelRun& b) {
    return a.begin == b.begin && a.end == b.end;
  }
  friend constexpr bool operator!=(const PixelRun& a, const PixelRun& b) { return !(a == b); }
};

}  // namespace ormix::geom

namespace ormix {

/// A vector of runs is archived as one numeric array of two columns.
template <>
struct PackedCoordinates<geom::PixelRun> {
  using Scalar = omUInt32;                     ///< type of the columns
  static constexpr std::size_t nbColumns = 2;  ///< begin and end
};

}  // namespace ormix

namespace ormix::geom {

namespace detail {
class RowIntersectionsBuilder;
}

/// A set of pixels as runs of consecutive rows, beginning with a start row. The runs of a row are not empty, in
/// ascending order and without common pixels; they may be adjacent, and a row may have no runs. The runs of all rows
/// are stored in one contiguous array; each row takes 8 bytes, also one without runs.
class ORMIX_GEOMETRY_API RowIntersections {
 public:
  using RunColl = std::vector<PixelRun>;  ///< runs, contiguous

  /// The largest number of rows; functions that would make more fail.
  static constexpr std::size_t s_maxNbRows = 0xFFFFFFFFu;

  /// A view of the runs of one row; valid until the RowIntersections change.
  class Row {
   public:
    /// The runs in [first, last).
    Row(const PixelRun* first, const PixelRun* last) : _first(first), _last(last) {}
    /// As of a standard container; an index must be less than size().
    /// @{
    const PixelRun* begin() const { return _first; }
    const PixelRun* end() const { return _last; }
    std::size_t size() const { return static_cast<std::size_t>(_last - _first); }
    bool empty() const { return _first == _last; }
    const PixelRun& operator[](std::size_t index) const { return _first[index]; }
    /// @}

   private:
    const PixelRun* _first;
    const PixelRun* _last;
  };

  /// No rows.
  RowIntersections() = default;
  RowIntersections(const RowIntersections&) = default;
  RowIntersections(RowIntersections&&) noexcept = default;
  /// Memory is used again; where it does not suffice and there is no more, nothing changes.
  RowIntersections& operator=(const RowIntersections& other);
  RowIntersections& operator=(RowIntersections&&) noexcept = default;
  ~RowIntersections() = default;

  /// The first row; 0 where there are no rows.
  omUInt64 getStartRow() const { return _startRow; }
  /// The row after the last one.
  omUInt64 getEndRow() const { return _startRow + getNbRows(); }
  /// The number of rows, those without runs included.
  std::size_t getNbRows() const { return _runEndColl.size(); }
  /// The number of pixels of all runs. Linear in the number of runs.
  omUInt64 getNbPixels() const;

  /// The runs of all rows, one row after the other.
  const RunColl& getRunColl() const { return _runColl; }
  /// The runs of a row.
  /// \throw ORMIXGeometryException, logged, when the row is not in [getStartRow(), getEndRow())
  Row getRow(omUInt64 row) const;

  /// Adds the pixels [begin, end) of a row; missing rows between it and the others are added without runs. Amortised
  /// constant time after the last run of the last row, otherwise linear in the rows and runs after the new one.
  /// \return a failure, with nothing changed, if the run is empty or shares pixels with a run of its row, or if there
  /// would be more than `s_maxNbRows` rows
  BoolResult addRun(omUInt64 row, omUInt32 begin, omUInt32 end);

  /// Replaces all rows. Linear.
  /// \param nbRunsColl the number of runs of each row, from `startRow` on
  /// \param runColl the runs of all rows, one row after the other
  /// \return a failure, with nothing changed, if the numbers do not match the runs, there are too many rows, or the
  /// runs of a row are empty, not in ascending order or share pixels
  BoolResult setRows(omUInt64 startRow, const std::vector<omUInt32>& nbRunsColl, RunColl runColl);

  /// Removes all rows.
  void clear();

  friend bool operator==(const RowIntersections& a, const RowIntersections& b) {
    return a._startRow == b._startRow && a._runEndColl == b._runEndColl && a._runColl == b._runColl;
  }
  friend bool operator!=(const RowIntersections& a, const RowIntersections& b) { return !(a == b); }

 private:
  friend detail::RowIntersectionsBuilder;

  /// Index in _runColl of the first run of a row, itself given by its index from the start row.
  std::size_t runBegin(std::size_t rowIndex) const { return rowIndex == 0 ? 0 : _runEndColl[rowIndex - 1]; }
  /// Adds the row, and all rows between it and the existing ones, where it is missing; returns its index.
  std::size_t ensureRow(omUInt64 row);

  omUInt64 _startRow = 0;
  std::vector<std::size_t> _runEndColl;  // for each row, the index in _runColl after its last run
  RunColl _runColl;
};

/// Writes or reads a section with "startRow" and two numeric arrays: "nbRunsColl" with the number of runs of each row,
/// and "runColl" with begin and end of each run of all rows. Reading fails, with `rows` unchanged, when
/// `RowIntersections::setRows` refuses what was read.
/// @{
BoolResult writeItem(BaseOArchive& archive, std::string_view key, const RowIntersections& rows);
BoolResult readItem(BaseIArchive& archive, std::string_view key, RowIntersections& rows);
/// @}

}  // namespace ormix::geom
