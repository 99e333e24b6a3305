#include <ORMIXGeometry/Entity/2d/Shape/OpenComponents.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersectionsBuilder.h>
#include <ORMIXGeometry/Entity/2d/Shape/RunChecks.h>
#include <ORMIXGeometry/Entity/2d/Shape/RunForest.h>
#include <ORMIXGeometry/Message/EntityMessage.h>

#include <limits>

namespace ormix::geom::detail {

RowIntersections makeSet(const std::vector<RowRun>& runs) {
  RowIntersectionsBuilder builder;
  builder.reserve(static_cast<std::size_t>(runs.back().row - runs.front().row) + 1, runs.size());
  for (const RowRun& placed : runs) builder.addRun(placed.row, placed.run);
  return builder.take();
}

BoolResult OpenComponents::addRow(omUInt64 y, const RowIntersections::Row& runs) {
  if (_hasRows && y <= _lastRow)
    return failure(formatMessage<eEntityMessage>(eEntityMessage::eEM_RowIndexMismatch, _lastRow, y));
  if (y == std::numeric_limits<omUInt64>::max()) return tooManyRows();
  if (BoolResult sound = checkRuns(runs); !sound) return sound;
  if (_hasRows && y - _lastRow > 1) {
    _parts.closeAll(y);
    _lastRuns.clear();
  }
  if (_connectivity == ePC_4)
    linkRow<ePC_4>(y, runs);
  else
    linkRow<ePC_8>(y, runs);
  _parts.endLayer(y);
  _lastRuns.assign(runs.begin(), runs.end());
  _lastRow = y;
  _hasRows = true;
  return {};
}

std::vector<RowIntersections> OpenComponents::takeFinished() { return _parts.takeClosed(); }

std::vector<RowIntersections> OpenComponents::finish() {
  _parts.closeAll(std::numeric_limits<omUInt64>::max());
  _hasRows = false;
  _lastRuns.clear();
  return takeFinished();
}

/// Gives each run of the row its component, made of all components above that it touches.
template <ePixelConnectivity Connectivity>
void OpenComponents::linkRow(omUInt64 y, const RowIntersections::Row& runs) {
  const auto partAbove = [this](const PixelRun& run) {
    return _parts.partOfLast(static_cast<std::size_t>(&run - _lastRuns.data()));
  };
  const auto indexOf = [&runs](const PixelRun& run) { return static_cast<std::size_t>(&run - runs.begin()); };
  matchRuns<Connectivity>(
      {_lastRuns.data(), _lastRuns.data() + _lastRuns.size()}, runs,
      [&](const PixelRun& run, const PixelRun* touched) {
        const bool isAdjacent = &run != runs.begin() && (&run)[-1].end == run.begin;
        const std::size_t part = isAdjacent ? _parts.partOfNew(indexOf(run) - 1) : _parts.s_none;
        _parts.add(touched != nullptr ? _parts.join(part, partAbove(*touched)) : part, {y, run});
      },
      [&](const PixelRun& run, const PixelRun& further) {
        _parts.join(_parts.partOfNew(indexOf(run)), partAbove(further));
      });
}

}  // namespace ormix::geom::detail
