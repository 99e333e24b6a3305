#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/PixelConnectivity.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>

#include <vector>

namespace ormix::geom::detail {

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
  /// A run and its row.
  struct PlacedRun {
    omUInt64 row;
    PixelRun run;
  };
  /// A component, or what was one before it was joined to another.
  struct Part {
    std::size_t parent;           // index of the part that it was joined to, its own where it was not
    std::vector<PlacedRun> runs;  // in order if `isSorted`
    PlacedRun first;              // the first of the runs
    omUInt64 lastRow;             // the row of the last of the runs
    bool isSorted;
  };
  /// A run of the last row and its component.
  struct OpenRun {
    PixelRun run;
    std::size_t part;
  };
  /// A component that no later row can touch.
  struct Finished {
    PlacedRun first;
    RowIntersections rows;
  };

  static constexpr std::size_t s_none = static_cast<std::size_t>(-1);  // no part

  static bool isBefore(const PlacedRun& a, const PlacedRun& b);
  template <ePixelConnectivity Connectivity>
  void linkRow(omUInt64 y, const RowIntersections::Row& runs);
  std::size_t rootOf(std::size_t part);
  std::size_t newPart(const PlacedRun& run);
  std::size_t join(std::size_t a, std::size_t b);
  void close(std::size_t part);
  static void sortByRow(std::vector<PlacedRun>& runs, omUInt64 firstRow, std::size_t nbRows);
  void closeUntouched(omUInt64 y);

  ePixelConnectivity _connectivity;
  bool _hasRows = false;
  omUInt64 _lastRow = 0;
  std::vector<OpenRun> _lastRuns;
  std::vector<OpenRun> _newRuns;  // of the row that is being added
  std::vector<Part> _parts;
  std::vector<std::size_t> _freeParts;    // indices of parts to be used again
  std::vector<std::size_t> _joinedParts;  // joined to others in the row that is being added
  std::vector<Finished> _finished;
};

}  // namespace ormix::geom::detail
