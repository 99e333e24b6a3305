#include <ORMIXGeometry/Entity/2d/Shape/CombinedRuns.h>
#include <ORMIXGeometry/Entity/2d/Shape/RunForest.h>
#include <ORMIXGeometry/Entity/3d/Shape/OpenVoxelComponents.h>

#include <limits>
#include <string>

namespace ormix::geom::detail {

BoolResult OpenVoxelComponents::addSlice(omUInt64 z, const RowIntersections& slice) {
  if (_hasSlices && z <= _lastZ)
    return failure("Slice " + std::to_string(z) + " cannot be added behind slice " + std::to_string(_lastZ) +
                   ": slices are added in ascending order");
  if (z == std::numeric_limits<omUInt64>::max())
    return failure("Slice " + std::to_string(z) + " cannot be added: there is no number behind it");
  if (_hasSlices && z - _lastZ > 1) {
    _parts.closeUntouched(z, _lastParts);
    _lastSlice.clear();
    _lastParts.clear();
  }
  if (_connectivity == eVC_6)
    linkSlice<ePC_4>(z, slice);
  else
    linkSlice<ePC_8>(z, slice);
  _parts.endLayer(z, _lastParts, _newParts);
  _lastSlice = slice;
  _lastParts.swap(_newParts);
  _newParts.clear();
  _lastZ = z;
  _hasSlices = true;
  return {};
}

std::vector<RowIntersections3d> OpenVoxelComponents::finish() {
  _parts.closeUntouched(std::numeric_limits<omUInt64>::max(), _lastParts);
  _hasSlices = false;
  _lastSlice.clear();
  _lastParts.clear();
  return takeFinished();
}

template <ePixelConnectivity InSlice>
void OpenVoxelComponents::linkSlice(omUInt64 z, const RowIntersections& slice) {
  for (omUInt64 y = slice.getStartRow(); y < slice.getEndRow(); ++y) {
    const RowIntersections::Row row = slice.getRow(y);
    _rowParts.assign(row.size(), _parts.s_none);
    joinRow<InSlice>(slice, _newParts, y - 1, row);
    for (omUInt64 k = InSlice == ePC_4 ? 1 : 0; k < (InSlice == ePC_4 ? 2u : 3u); ++k)
      joinRow<InSlice>(_lastSlice, _lastParts, y + k - 1, row);
    addRow(z, y, row);
  }
}

/// Joins the parts of the runs that they touch in the row y of a slice.
/// \param parts those of the runs of that slice
template <ePixelConnectivity InSlice>
void OpenVoxelComponents::joinRow(const RowIntersections& slice, const PartColl& parts, omUInt64 y,
                                  const RowIntersections::Row& row) {
  const auto join = [&](const PixelRun& run, const PixelRun& touched) {
    std::size_t& part = _rowParts[static_cast<std::size_t>(&run - row.begin())];
    const std::size_t former = part == _parts.s_none ? part : _parts.rootOf(part);
    part = _parts.join(former, _parts.rootOf(parts[static_cast<std::size_t>(&touched - slice.getRunColl().data())]));
  };
  matchRuns<InSlice>(
      rowOrNone(slice, y), row,
      [&join](const PixelRun& run, const PixelRun* touched) {
        if (touched != nullptr) join(run, *touched);
      },
      join);
}

/// Adds the runs to the parts that they were joined to, or to new ones.
void OpenVoxelComponents::addRow(omUInt64 z, omUInt64 y, const RowIntersections::Row& row) {
  for (std::size_t index = 0; index < row.size(); ++index) {
    const VoxelRun run{z, y, row[index]};
    std::size_t part = _rowParts[index] == _parts.s_none ? _parts.s_none : _parts.rootOf(_rowParts[index]);
    if (index > 0 && row[index - 1].end == row[index].begin) part = _parts.join(part, _parts.rootOf(_newParts.back()));
    if (part == _parts.s_none) part = _parts.open(run);
    _parts.add(part, run);
    _newParts.push_back(part);
  }
}

}  // namespace ormix::geom::detail
