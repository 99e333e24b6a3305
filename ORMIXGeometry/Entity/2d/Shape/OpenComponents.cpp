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
    _parts.closeUntouched(y, _lastParts);
    _lastRuns.clear();
    _lastParts.clear();
  }
  if (_connectivity == ePC_4)
    linkRow<ePC_4>(y, runs);
  else
    linkRow<ePC_8>(y, runs);
  _parts.endLayer(y, _lastParts, _newParts);
  _lastRuns.assign(runs.begin(), runs.end());
  _lastParts.swap(_newParts);
  _newParts.clear();
  _lastRow = y;
  _hasRows = true;
  return {};
}

std::vector<RowIntersections> OpenComponents::takeFinished() { return _parts.takeClosed(); }

std::vector<RowIntersections> OpenComponents::finish() {
  _parts.closeUntouched(std::numeric_limits<omUInt64>::max(), _lastParts);
  _hasRows = false;
  _lastRuns.clear();
  _lastParts.clear();
  return takeFinished();
}

/// Gives each run of the row its component, made of all components above that it touches.
template <ePixelConnectivity Connectivity>
void OpenComponents::linkRow(omUInt64 y, const RowIntersections::Row& runs) {
  const auto partOf = [this](const PixelRun& run) {
    return _parts.rootOf(_lastParts[static_cast<std::size_t>(&run - _lastRuns.data())]);
  };
  matchRuns<Connectivity>(
      {_lastRuns.data(), _lastRuns.data() + _lastRuns.size()}, runs,
      [&](const PixelRun& run, const PixelRun* touched) {
        const bool isAdjacent = &run != runs.begin() && (&run)[-1].end == run.begin;
        std::size_t part = isAdjacent ? _parts.rootOf(_newParts.back()) : _parts.s_none;
        if (touched != nullptr) part = _parts.join(part, partOf(*touched));
        if (part == _parts.s_none) part = _parts.open({y, run});
        _parts.add(part, {y, run});
        _newParts.push_back(part);
      },
      [&](const PixelRun&, const PixelRun& further) {
        _newParts.back() = _parts.join(_newParts.back(), partOf(further));
      });
}

}  // namespace ormix::geom::detail
