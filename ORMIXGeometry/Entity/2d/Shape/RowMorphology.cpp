#include <ORMIXGeometry/Entity/2d/BoundingBox/BoundingBox2d.h>
#include <ORMIXGeometry/Entity/2d/Shape/ConnectedComponents.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowFold.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersectionsBuilder.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowMorphology.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowSetOperations.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>

namespace ormix::geom {

namespace {

using Row = RowIntersections::Row;
using RunColl = RowIntersections::RunColl;
using SetOperation = RowIntersections (*)(const RowIntersections&, const RowIntersections&);
using detail::RowIntersectionsBuilder;

constexpr omUInt64 s_endOfColumns = std::numeric_limits<omUInt32>::max();
constexpr omUInt64 s_endOfRows = std::numeric_limits<omUInt64>::max();

/// Adds to `grown` the pixels at most `halfWidth` columns away from those of the row.
void growRuns(const Row& row, omUInt32 halfWidth, RunColl& grown) {
  for (const PixelRun& run : row) {
    const omUInt32 begin = run.begin - std::min(run.begin, halfWidth);
    const auto end = static_cast<omUInt32>(std::min(omUInt64{run.end} + halfWidth, s_endOfColumns));
    if (!grown.empty() && begin <= grown.back().end)
      grown.back().end = end;
    else
      grown.push_back({begin, end});
  }
}

/// Adds to `shrunk` the pixels that have all pixels at most `halfWidth` columns away in the row, in which no two runs
/// are adjacent.
void shrinkRuns(const Row& row, omUInt32 halfWidth, RunColl& shrunk) {
  for (const PixelRun& run : row)
    if (run.end - run.begin > 2 * omUInt64{halfWidth}) shrunk.push_back({run.begin + halfWidth, run.end - halfWidth});
}

/// Each row for itself by growRuns() or shrinkRuns(), the first row of `rows` becoming row 0.
template <class Change>
RowIntersections changedRows(const RowIntersections& rows, omUInt32 halfWidth, Change change) {
  RowIntersectionsBuilder builder;
  builder.reserve(rows.getNbRows(), rows.getRunColl().size());
  RunColl changed;
  for (omUInt64 row = rows.getStartRow(); row < rows.getEndRow(); ++row) {
    changed.clear();
    change(rows.getRow(row), halfWidth, changed);
    builder.addRow(row - rows.getStartRow(), changed.data(), changed.data() + changed.size());
  }
  return builder.take();
}

/// Combines each row with the `nbRows` - 1 rows above it, by doubling their number.
RowIntersections combineWithRowsAbove(RowIntersections rows, omUInt64 nbRows, SetOperation combine) {
  for (omUInt64 nbDone = 1; nbDone < nbRows && rows.getNbRows() > 0;) {
    const omUInt64 step = std::min(nbDone, nbRows - nbDone);
    RowIntersections moved = rows;
    RowIntersectionsBuilder::moveTo(rows.getStartRow() + step, moved);
    rows = combine(rows, moved);
    nbDone += step;
  }
  return rows;
}

/// The rows moved down by `down` and then up by `up`, without those that are no rows after that.
RowIntersections movedRows(const RowIntersections& rows, omUInt64 down, omUInt64 up) {
  RowIntersectionsBuilder builder;
  builder.reserve(rows.getNbRows(), rows.getRunColl().size());
  for (omUInt64 row = rows.getStartRow(); row < rows.getEndRow(); ++row) {
    if (row < up && down < up - row) continue;
    if (row > up && row - up >= s_endOfRows - down) break;
    const Row runs = rows.getRow(row);
    builder.addRow(down + row - up, runs.begin(), runs.end());  // the sum may wrap around, the difference is right
  }
  return builder.take();
}

/// The half widths of the rows of a disc of pixels, from the middle row on downwards.
std::vector<omUInt32> halfWidthsOfDisc(omReal64 radius) {
  // The square of the radius is the sum of two numbers exactly, and only its whole part matters.
  const omReal64 square = radius * radius;
  const omReal64 error = std::fma(radius, radius, -square);
  const omReal64 whole = std::floor(square);
  omUInt64 squareBound = static_cast<omUInt64>(whole);
  if (whole == square) squareBound += static_cast<omUInt64>(static_cast<omInt64>(std::floor(error)));
  auto halfWidth = static_cast<omUInt64>(radius);
  std::vector<omUInt32> halfWidths;
  halfWidths.reserve(static_cast<std::size_t>(halfWidth) + 1);
  for (omUInt64 dy = 0; dy <= static_cast<omUInt64>(radius); ++dy) {
    while (halfWidth * halfWidth > squareBound - dy * dy) --halfWidth;
    halfWidths.push_back(static_cast<omUInt32>(halfWidth));
  }
  return halfWidths;
}

void checkRadius(omReal64 radius) {
  if (radius >= 0 && radius < 4294967296.0) return;
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text << "Disc of radius " << radius << ": the radius is not a number from 0 on and below 4294967296";
  logAndThrow(text.str(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

omUInt64 distance(omUInt64 a, omUInt64 b) { return a < b ? b - a : a - b; }

}  // namespace

RowIntersections dilate(const RowIntersections& rows, omUInt32 halfWidth, omUInt32 halfHeight) {
  const RowIntersections grown = changedRows(rows, halfWidth, growRuns);
  if (grown.getNbRows() == 0) return {};
  RowIntersectionsBuilder::checkRows(0, grown.getEndRow() - 1 + 2 * omUInt64{halfHeight});
  return movedRows(combineWithRowsAbove(grown, 2 * omUInt64{halfHeight} + 1, unite), rows.getStartRow(), halfHeight);
}

RowIntersections erode(const RowIntersections& rows, omUInt32 halfWidth, omUInt32 halfHeight) {
  const RowIntersections shrunk = changedRows(normalized(rows), halfWidth, shrinkRuns);
  return movedRows(combineWithRowsAbove(shrunk, 2 * omUInt64{halfHeight} + 1, intersect), rows.getStartRow(),
                   halfHeight);
}

RowIntersections dilate(const RowIntersections& rows, omReal64 radius) {
  checkRadius(radius);
  const RowIntersections region = normalized(rows);
  if (region.getNbRows() == 0) return {};
  const auto halfHeight = static_cast<omUInt64>(radius);
  const omUInt64 start = region.getStartRow();
  const omUInt64 last = region.getEndRow() - 1;
  const omUInt64 firstOfResult = start - std::min(start, halfHeight);
  const omUInt64 lastOfResult = last + std::min(s_endOfRows - 1 - last, halfHeight);
  RowIntersectionsBuilder::checkRows(firstOfResult, lastOfResult);
  const std::vector<omUInt32> halfWidths = halfWidthsOfDisc(radius);
  RowIntersectionsBuilder builder;
  detail::RowFold<detail::eKP_Unite> fold;
  for (omUInt64 row = firstOfResult; row <= lastOfResult; ++row) {
    fold.clear();
    omUInt64 source = std::max(start, row - std::min(row, halfHeight));
    for (; source <= last && (source <= row || source - row <= halfHeight); ++source) {
      const Row runs = region.getRow(source);
      if (runs.empty()) continue;
      fold.add([&](RunColl& grown) { growRuns(runs, halfWidths[distance(row, source)], grown); });
    }
    const Row runs = fold.finish();
    builder.addRow(row, runs.begin(), runs.end());
  }
  return builder.take();
}

RowIntersections erode(const RowIntersections& rows, omReal64 radius) {
  checkRadius(radius);
  const RowIntersections region = normalized(rows);
  const auto halfHeight = static_cast<omUInt64>(radius);
  if (region.getNbRows() <= 2 * halfHeight) return {};
  const std::vector<omUInt32> halfWidths = halfWidthsOfDisc(radius);
  RowIntersectionsBuilder builder;
  detail::RowFold<detail::eKP_Intersect> fold;
  const omUInt64 end = region.getEndRow() - halfHeight;
  for (omUInt64 row = region.getStartRow() + halfHeight; row < end; ++row) {
    fold.clear();
    const auto add = [&](omUInt64 source, omUInt64 dy) {
      return fold.add([&](RunColl& shrunk) { shrinkRuns(region.getRow(source), halfWidths[dy], shrunk); });
    };
    // The widest rows of the disc come first, as they mostly settle that nothing is left.
    bool mayHavePixels = add(row, 0);
    for (omUInt64 dy = 1; mayHavePixels && dy <= halfHeight; ++dy)
      mayHavePixels = add(row - dy, dy) && add(row + dy, dy);
    if (!mayHavePixels) continue;
    const Row runs = fold.finish();
    builder.addRow(row, runs.begin(), runs.end());
  }
  return builder.take();
}

RowIntersections fillHoles(const RowIntersections& rows, ePixelConnectivity connectivity) {
  RowIntersections region = normalized(rows);
  if (region.getNbRows() == 0) return region;
  const omUInt64 startRow = region.getStartRow();
  RowIntersectionsBuilder::moveTo(0, region);
  PixelRun columns = region.getRunColl().front();
  for (const PixelRun& run : region.getRunColl())
    columns = {std::min(columns.begin, run.begin), std::max(columns.end, run.end)};
  const auto nbRows = static_cast<omUInt32>(region.getNbRows());
  // All parts of the background that reach beyond this box are connected, around it.
  const RowIntersections background =
      complement(region, BoundingBox2d<omUInt32>(columns.begin, 0, columns.end, nbRows));
  const RunComponents parts = componentsOf(background, backgroundConnectivity(connectivity));
  const auto visitRuns = [&](auto visit) {
    const omUInt32* part = parts.componentOfRun.data();
    for (omUInt64 row = background.getStartRow(); row < background.getEndRow(); ++row)
      for (const PixelRun& run : background.getRow(row)) visit(row, run, *part++);
  };
  std::vector<bool> isOutside(parts.nbComponents);
  visitRuns([&](omUInt64 row, const PixelRun& run, omUInt32 part) {
    if (row == 0 || row + 1 == nbRows || run.begin == columns.begin || run.end == columns.end) isOutside[part] = true;
  });
  RowIntersectionsBuilder holes;
  visitRuns([&](omUInt64 row, const PixelRun& run, omUInt32 part) {
    if (!isOutside[part]) holes.addRun(row, run);
  });
  RowIntersections filled = unite(region, holes.take());
  RowIntersectionsBuilder::moveTo(startRow, filled);
  return filled;
}

}  // namespace ormix::geom
