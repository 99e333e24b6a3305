#include <ORMIXGeometry/Entity/2d/Shape/OpenComponents.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersectionsBuilder.h>
#include <ORMIXGeometry/Entity/2d/Shape/RunChecks.h>
#include <ORMIXGeometry/Entity/2d/Shape/RunNeighbours.h>
#include <ORMIXGeometry/Message/EntityMessage.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

namespace ormix::geom::detail {

BoolResult OpenComponents::addRow(omUInt64 y, const RowIntersections::Row& runs) {
  if (_hasRows && y <= _lastRow)
    return failure(formatMessage<eEntityMessage>(eEntityMessage::eEM_RowIndexMismatch, _lastRow, y));
  if (y == std::numeric_limits<omUInt64>::max()) return tooManyRows();
  if (BoolResult sound = checkRuns(runs); !sound) return sound;
  if (_hasRows && y - _lastRow > 1) {
    closeUntouched(y);
    _lastRuns.clear();
  }
  if (_connectivity == ePC_4)
    linkRow<ePC_4>(y, runs);
  else
    linkRow<ePC_8>(y, runs);
  closeUntouched(y);
  for (OpenRun& open : _newRuns) open.part = rootOf(open.part);
  _freeParts.insert(_freeParts.end(), _joinedParts.begin(), _joinedParts.end());
  _joinedParts.clear();
  _lastRuns.swap(_newRuns);
  _newRuns.clear();
  _lastRow = y;
  _hasRows = true;
  return {};
}

std::vector<RowIntersections> OpenComponents::takeFinished() {
  std::sort(_finished.begin(), _finished.end(),
            [](const Finished& a, const Finished& b) { return isBefore(a.first, b.first); });
  std::vector<RowIntersections> result;
  result.reserve(_finished.size());
  for (Finished& component : _finished) result.push_back(std::move(component.rows));
  _finished.clear();
  return result;
}

std::vector<RowIntersections> OpenComponents::finish() {
  closeUntouched(std::numeric_limits<omUInt64>::max());
  _hasRows = false;
  _lastRuns.clear();
  return takeFinished();
}

bool OpenComponents::isBefore(const PlacedRun& a, const PlacedRun& b) {
  return a.row != b.row ? a.row < b.row : a.run.begin < b.run.begin;
}

/// Gives each run of the row its component, made of all components above that it touches.
template <ePixelConnectivity Connectivity>
void OpenComponents::linkRow(omUInt64 y, const RowIntersections::Row& runs) {
  using Neighbours = RunNeighbours<Connectivity>;
  auto above = _lastRuns.begin();
  for (const PixelRun& run : runs) {
    const bool isAdjacent = !_newRuns.empty() && _newRuns.back().run.end == run.begin;
    std::size_t part = isAdjacent ? rootOf(_newRuns.back().part) : s_none;
    while (above != _lastRuns.end() && Neighbours::isLeftOf(above->run, run)) ++above;
    for (auto touched = above; touched != _lastRuns.end() && !Neighbours::isLeftOf(run, touched->run); ++touched) {
      const std::size_t other = rootOf(touched->part);
      part = part == s_none ? other : join(part, other);
      above = touched;
    }
    const PlacedRun placed{y, run};
    if (part == s_none) part = newPart(placed);
    _parts[part].runs.push_back(placed);
    _parts[part].lastRow = y;
    _newRuns.push_back({run, part});
  }
}

std::size_t OpenComponents::rootOf(std::size_t part) {
  while (_parts[part].parent != part) part = _parts[part].parent = _parts[_parts[part].parent].parent;
  return part;
}

std::size_t OpenComponents::newPart(const PlacedRun& run) {
  if (_freeParts.empty()) {
    _parts.emplace_back();
    _freeParts.push_back(_parts.size() - 1);
  }
  const std::size_t index = _freeParts.back();
  _freeParts.pop_back();
  _parts[index] = {index, {}, run, run.row, true};
  return index;
}

/// Moves the runs of the smaller part to the larger one: each run moves as often as the logarithm of their number says
/// at most. They are put in order when the component is closed.
std::size_t OpenComponents::join(std::size_t a, std::size_t b) {
  if (a == b) return a;
  if (_parts[a].runs.size() < _parts[b].runs.size()) std::swap(a, b);
  Part& kept = _parts[a];
  Part& joined = _parts[b];
  kept.runs.insert(kept.runs.end(), joined.runs.begin(), joined.runs.end());
  kept.isSorted = false;
  if (isBefore(joined.first, kept.first)) kept.first = joined.first;
  kept.lastRow = std::max(kept.lastRow, joined.lastRow);
  joined.runs = {};
  joined.parent = a;
  _joinedParts.push_back(b);
  return a;
}

/// Makes the set of a component's pixels; its index may be used again.
void OpenComponents::close(std::size_t index) {
  Part& part = _parts[index];
  const auto nbRows = static_cast<std::size_t>(part.lastRow - part.first.row) + 1;
  if (!part.isSorted) sortByRow(part.runs, part.first.row, nbRows);
  RowIntersectionsBuilder builder;
  builder.reserve(nbRows, part.runs.size());
  for (const PlacedRun& placed : part.runs) builder.addRun(placed.row, placed.run);
  _finished.push_back({part.first, builder.take()});
  part.runs = {};
  _freeParts.push_back(index);
}

/// Puts the runs in order, of rows none of which is without runs: row by row in linear time, then in each row.
void OpenComponents::sortByRow(std::vector<PlacedRun>& runs, omUInt64 firstRow, std::size_t nbRows) {
  std::vector<std::size_t> ends(nbRows + 1);
  for (const PlacedRun& placed : runs) ++ends[static_cast<std::size_t>(placed.row - firstRow) + 1];
  std::partial_sum(ends.begin(), ends.end(), ends.begin());
  std::vector<PlacedRun> sorted(runs.size());
  for (const PlacedRun& placed : runs) sorted[ends[static_cast<std::size_t>(placed.row - firstRow)]++] = placed;
  for (std::size_t row = 0, begin = 0; row < nbRows; begin = ends[row++])
    std::sort(sorted.begin() + static_cast<std::ptrdiff_t>(begin),
              sorted.begin() + static_cast<std::ptrdiff_t>(ends[row]), isBefore);
  runs.swap(sorted);
}

/// Closes the components with pixels in the last row that have none in the row y.
void OpenComponents::closeUntouched(omUInt64 y) {
  for (const OpenRun& open : _lastRuns) {
    const std::size_t root = rootOf(open.part);
    if (_parts[root].lastRow == y) continue;
    close(root);
    _parts[root].lastRow = y;  // closed once, however many runs it has
  }
}

}  // namespace ormix::geom::detail
