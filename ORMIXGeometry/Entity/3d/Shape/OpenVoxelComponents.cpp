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
    _parts.closeAll(z);
    _lastSlice.clear();
  }
  if (_connectivity == eVC_6)
    linkSlice<ePC_4>(z, slice);
  else
    linkSlice<ePC_8>(z, slice);
  _parts.endLayer(z);
  _lastSlice = slice;
  _lastZ = z;
  _hasSlices = true;
  return {};
}

std::vector<RowIntersections3d> OpenVoxelComponents::finish() {
  _parts.closeAll(std::numeric_limits<omUInt64>::max());
  _hasSlices = false;
  _lastSlice.clear();
  return takeFinished();
}

template <ePixelConnectivity InSlice>
void OpenVoxelComponents::linkSlice(omUInt64 z, const RowIntersections& slice) {
  for (omUInt64 y = slice.getStartRow(); y < slice.getEndRow(); ++y) {
    const RowIntersections::Row row = slice.getRow(y);
    _rowParts.assign(row.size(), _parts.s_none);
    joinRow<InSlice>(slice, y - 1, row, [this](std::size_t run) { return _parts.partOfNew(run); });
    for (omUInt64 k = InSlice == ePC_4 ? 1 : 0; k < (InSlice == ePC_4 ? 2u : 3u); ++k)
      joinRow<InSlice>(_lastSlice, y + k - 1, row, [this](std::size_t run) { return _parts.partOfLast(run); });
    addRow(z, y, slice);
  }
}

/// Joins the parts of the runs that those of the row touch in the row y of a slice.
/// \param partOf that of a run of the slice, by its index
template <ePixelConnectivity InSlice, class PartOf>
void OpenVoxelComponents::joinRow(const RowIntersections& slice, omUInt64 y, const RowIntersections::Row& row,
                                  PartOf partOf) {
  visitTouching<InSlice>(rowOrNone(slice, y), row, [&](const PixelRun& run, const PixelRun& touched) {
    std::size_t& part = _rowParts[static_cast<std::size_t>(&run - row.begin())];
    part = _parts.join(part, partOf(static_cast<std::size_t>(&touched - slice.getRunColl().data())));
  });
}

/// Adds the runs to the parts that they were joined to, or to new ones.
void OpenVoxelComponents::addRow(omUInt64 z, omUInt64 y, const RowIntersections& slice) {
  const RowIntersections::Row row = slice.getRow(y);
  for (const PixelRun& run : row) {
    std::size_t part = _rowParts[static_cast<std::size_t>(&run - row.begin())];
    const auto index = static_cast<std::size_t>(&run - slice.getRunColl().data());
    if (&run != row.begin() && (&run)[-1].end == run.begin) part = _parts.join(part, _parts.partOfNew(index - 1));
    _parts.add(part, {z, y, run});
  }
}

}  // namespace ormix::geom::detail
