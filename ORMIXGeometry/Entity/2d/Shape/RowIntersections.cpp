#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>
#include <ORMIXGeometry/Entity/2d/Shape/RunChecks.h>
#include <ORMIXGeometry/Entity/ReserveMore.h>
#include <ORMIXGeometry/Message/EntityMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXSerialization/Archive/ArchiveItem.h>

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

namespace ormix::geom {

namespace {

BoolResult emptyRun(const PixelRun& run) {
  return failure("Run [" + std::to_string(run.begin) + ", " + std::to_string(run.end) + "[ has no pixels");
}

BoolResult intersectingRuns(const PixelRun& added, const PixelRun& existing) {
  return failure(formatMessage<eEntityMessage>(eEntityMessage::eEM_RowRangesIntersect, added.begin, added.end,
                                               existing.begin, existing.end));
}

}  // namespace

BoolResult detail::tooManyRows() {
  return failure("Row intersections have at most " + std::to_string(RowIntersections::s_maxNbRows) +
                 " rows, all of them below row " + std::to_string(std::numeric_limits<omUInt64>::max()));
}

BoolResult detail::checkRuns(const RowIntersections::Row& runs) {
  for (const PixelRun* run = runs.begin(); run != runs.end(); ++run) {
    if (run->begin >= run->end) return emptyRun(*run);
    if (run != runs.begin() && run->begin < run[-1].end) return intersectingRuns(*run, run[-1]);
  }
  return {};
}

// Nothing fails once there is room.
RowIntersections& RowIntersections::operator=(const RowIntersections& other) {
  _runEndColl.reserve(other._runEndColl.size());
  _runColl.reserve(other._runColl.size());
  _startRow = other._startRow;
  _runEndColl = other._runEndColl;
  _runColl = other._runColl;
  return *this;
}

omUInt64 RowIntersections::getNbPixels() const {
  omUInt64 count = 0;
  for (const PixelRun& run : _runColl) count += run.end - run.begin;
  return count;
}

RowIntersections::Row RowIntersections::getRow(omUInt64 row) const {
  if (row < _startRow || row - _startRow >= getNbRows())
    logAndThrow(formatMessage<eEntityMessage>(eEntityMessage::eEM_InvalidRowIndex, row, _startRow, getEndRow()),
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
  const auto rowIndex = static_cast<std::size_t>(row - _startRow);
  return {_runColl.data() + runBegin(rowIndex), _runColl.data() + _runEndColl[rowIndex]};
}

BoolResult RowIntersections::addRun(omUInt64 row, omUInt32 begin, omUInt32 end) {
  const PixelRun run{begin, end};
  if (begin >= end) return emptyRun(run);
  const bool hasRows = getNbRows() > 0;
  const omUInt64 first = hasRows ? std::min(row, _startRow) : row;
  const omUInt64 last = hasRows ? std::max(row, getEndRow() - 1) : row;
  if (last - first >= s_maxNbRows || last == std::numeric_limits<omUInt64>::max()) return detail::tooManyRows();
  std::size_t position = hasRows && row < _startRow ? 0 : _runColl.size();
  if (hasRows && row >= _startRow && row < getEndRow()) {
    const Row runs = getRow(row);
    const PixelRun* next =
        std::lower_bound(runs.begin(), runs.end(), begin, [](const PixelRun& a, omUInt32 x) { return a.end <= x; });
    if (next != runs.end() && next->begin < end) return intersectingRuns(run, *next);
    position = static_cast<std::size_t>(next - _runColl.data());
  }
  detail::reserveMore(_runColl, 1);
  const std::size_t rowIndex = ensureRow(row);
  _runColl.insert(_runColl.begin() + static_cast<std::ptrdiff_t>(position), run);
  for (std::size_t later = rowIndex; later < getNbRows(); ++later) ++_runEndColl[later];
  return {};
}

std::size_t RowIntersections::ensureRow(omUInt64 row) {
  if (getNbRows() == 0) {
    _runEndColl.push_back(0);
    _startRow = row;
  } else if (row < _startRow) {
    _runEndColl.insert(_runEndColl.begin(), static_cast<std::size_t>(_startRow - row), 0);
    _startRow = row;
  } else if (row >= getEndRow()) {
    const auto nbMore = static_cast<std::size_t>(row - getEndRow()) + 1;
    detail::reserveMore(_runEndColl, nbMore);
    _runEndColl.resize(getNbRows() + nbMore, _runColl.size());
  }
  return static_cast<std::size_t>(row - _startRow);
}

BoolResult RowIntersections::setRows(omUInt64 startRow, const std::vector<omUInt32>& nbRunsColl, RunColl runColl) {
  if (nbRunsColl.size() > s_maxNbRows || startRow > std::numeric_limits<omUInt64>::max() - nbRunsColl.size())
    return detail::tooManyRows();
  std::vector<std::size_t> runEnds;
  runEnds.reserve(nbRunsColl.size());
  std::size_t begin = 0;
  for (const omUInt32 nbRuns : nbRunsColl) {
    if (nbRuns > runColl.size() - begin)
      return failure(std::to_string(runColl.size()) + " runs are fewer than those of the rows");
    if (BoolResult sound = detail::checkRuns({runColl.data() + begin, runColl.data() + begin + nbRuns}); !sound)
      return sound;
    begin += nbRuns;
    runEnds.push_back(begin);
  }
  if (begin != runColl.size())
    return failure(std::to_string(runColl.size()) + " runs are more than those of the rows, " + std::to_string(begin));
  _startRow = nbRunsColl.empty() ? 0 : startRow;
  _runEndColl = std::move(runEnds);
  _runColl = std::move(runColl);
  return {};
}

void RowIntersections::clear() {
  _startRow = 0;
  _runEndColl.clear();
  _runColl.clear();
}

BoolResult writeItem(BaseOArchive& archive, std::string_view key, const RowIntersections& rows) {
  std::vector<omUInt32> nbRunsColl;
  nbRunsColl.reserve(rows.getNbRows());
  for (omUInt64 row = rows.getStartRow(); row < rows.getEndRow(); ++row)
    nbRunsColl.push_back(static_cast<omUInt32>(rows.getRow(row).size()));
  BoolResult result = archive.beginSection(key);
  if (result) result = ormix::writeItem(archive, "startRow", rows.getStartRow());
  if (result) result = ormix::writeItem(archive, "nbRunsColl", nbRunsColl);
  if (result) result = ormix::writeItem(archive, "runColl", rows.getRunColl());
  return result ? archive.endSection() : result;
}

BoolResult readItem(BaseIArchive& archive, std::string_view key, RowIntersections& rows) {
  omUInt64 startRow = 0;
  std::vector<omUInt32> nbRunsColl;
  RowIntersections::RunColl runColl;
  BoolResult result = archive.beginSection(key);
  if (result) result = ormix::readItem(archive, "startRow", startRow);
  if (result) result = ormix::readItem(archive, "nbRunsColl", nbRunsColl);
  if (result) result = ormix::readItem(archive, "runColl", runColl);
  if (result) result = archive.endSection();
  if (!result) return result;
  result = rows.setRows(startRow, nbRunsColl, std::move(runColl));
  return result ? result : failure("Key \"" + std::string(key) + "\": " + result.getMessage());
}

}  // namespace ormix::geom
