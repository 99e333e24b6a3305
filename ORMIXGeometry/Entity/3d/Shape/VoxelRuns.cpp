#include <ORMIXGeometry/Entity/2d/Shape/RowIntersectionsBuilder.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowSetOperations.h>
#include <ORMIXGeometry/Entity/2d/Shape/RunForest.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelRuns.h>

#include <algorithm>
#include <utility>

namespace ormix::geom::detail {

RowIntersections3d makeVoxels(const VoxelRun* first, const VoxelRun* last) {
  if (first == last) return {};
  std::vector<RowIntersections> slices;
  slices.reserve(static_cast<std::size_t>(last[-1].z - first->z) + 1);
  const omUInt64 zOffset = first->z;
  while (first != last) {
    const VoxelRun* end = first;
    while (end != last && end->z == first->z) ++end;
    RowIntersectionsBuilder builder;
    builder.reserve(static_cast<std::size_t>(end[-1].y - first->y) + 1, static_cast<std::size_t>(end - first));
    slices.resize(static_cast<std::size_t>(first->z - zOffset));
    for (; first != end; ++first) builder.addRun(first->y, first->run);
    slices.push_back(builder.take());
  }
  return {zOffset, std::move(slices)};
}

void dropEmptySlices(RowIntersections3d& voxels) {
  auto& slices = voxels.rowIntersectionsColl;
  while (!slices.empty() && slices.back().getNbRows() == 0) slices.pop_back();
  const auto first =
      std::find_if(slices.begin(), slices.end(), [](const auto& slice) { return slice.getNbRows() > 0; });
  voxels.zOffset = slices.empty() ? 0 : voxels.zOffset + static_cast<omUInt64>(first - slices.begin());
  slices.erase(slices.begin(), first);
}

RowIntersections3d normalized(const RowIntersections3d& voxels) {
  RowIntersections3d result;
  result.zOffset = voxels.zOffset;
  result.rowIntersectionsColl.reserve(voxels.rowIntersectionsColl.size());
  for (const RowIntersections& slice : voxels.rowIntersectionsColl)
    result.rowIntersectionsColl.push_back(geom::normalized(slice));
  dropEmptySlices(result);
  return result;
}

NumberedRows::NumberedRows(const RowIntersections3d& voxels) : _voxels(&voxels), _firstColl{0} {
  _firstColl.reserve(voxels.rowIntersectionsColl.size() + 1);
  for (const RowIntersections& slice : voxels.rowIntersectionsColl)
    _firstColl.push_back(_firstColl.back() + slice.getRunColl().size());
  checkNbRuns(nbRuns());
}

}  // namespace ormix::geom::detail
