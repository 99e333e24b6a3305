#include <ORMIXGeometry/Entity/2d/Shape/RunForest.h>
#include <ORMIXGeometry/Entity/3d/Shape/ConnectedVoxels.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelRuns.h>

#include <algorithm>

namespace ormix::geom {

namespace {

using detail::NumberedRow;
using detail::NumberedRows;
using detail::VoxelRun;

/// Joins the trees of the runs of two rows that touch.
template <ePixelConnectivity Connectivity>
void joinRows(const NumberedRow& former, const NumberedRow& row, detail::RunForest& forest) {
  detail::visitTouching<Connectivity>(former.runs, row.runs, [&](const PixelRun& run, const PixelRun& touched) {
    forest.join(former.indexOf(touched), row.indexOf(run));
  });
}

template <eVoxelConnectivity Connectivity>
RunComponents componentsIn(const NumberedRows& rows) {
  constexpr ePixelConnectivity inSlice = Connectivity == eVC_6 ? ePC_4 : ePC_8;
  detail::RunForest forest(rows.nbRuns());
  for (std::size_t slice = 0; slice < rows.nbSlices(); ++slice) {
    NumberedRow above{{nullptr, nullptr}, 0};
    for (omUInt64 y = rows.slice(slice).getStartRow(); y < rows.slice(slice).getEndRow(); ++y) {
      const NumberedRow row = rows.row(slice, y);
      const auto indexOf = [&row](const PixelRun* run) {
        // Both rows are of one slice, whose runs are contiguous.
        return static_cast<omUInt32>(row.first + (run - row.runs.begin()));
      };
      detail::addRow<inSlice>(above.runs, row.runs, indexOf, forest);
      above = row;
      if (slice == 0) continue;
      for (omUInt64 k = Connectivity == eVC_6 ? 1 : 0; k < (Connectivity == eVC_6 ? 2u : 3u); ++k)
        joinRows<inSlice>(rows.row(slice - 1, y + k - 1), row, forest);
    }
  }
  return forest.take();
}

/// Calls visit(z, y, run, component) with every run in order.
template <class Visit>
void visitRuns(const RowIntersections3d& voxels, const RunComponents& components, Visit visit) {
  const omUInt32* component = components.componentOfRun.data();
  for (std::size_t slice = 0; slice < voxels.rowIntersectionsColl.size(); ++slice) {
    const RowIntersections& rows = voxels.rowIntersectionsColl[slice];
    for (omUInt64 y = rows.getStartRow(); y < rows.getEndRow(); ++y)
      for (const PixelRun& run : rows.getRow(y)) visit(voxels.zOffset + slice, y, run, *component++);
  }
}

// Of extents up to 2^32 and as many runs: none overflows.
__extension__ using WideSum = __int128;

/// Twice the sums of the centres, relative to the first run.
struct Sums {
  omUInt64 firstY = 0;
  WideSum x = 0, y = 0, z = 0;
};

void addRun(omUInt64 z, omUInt64 y, const PixelRun& run, VoxelComponent& component, Sums& sums) {
  if (component.nbVoxels == 0) {
    component = {0, {}, run.begin, run.end, y, y + 1, z, z + 1};
    sums.firstY = y;
  }
  const omUInt64 nbVoxels = run.end - run.begin;
  component.nbVoxels += nbVoxels;
  component.xBegin = std::min(component.xBegin, run.begin);
  component.xEnd = std::max(component.xEnd, run.end);
  component.yBegin = std::min(component.yBegin, y);
  component.yEnd = std::max(component.yEnd, y + 1);
  component.zEnd = z + 1;
  sums.x += static_cast<WideSum>(omUInt64{run.begin} + run.end) * nbVoxels;
  sums.y += (2 * (static_cast<WideSum>(y) - sums.firstY) + 1) * nbVoxels;
  sums.z += (2 * static_cast<WideSum>(z - component.zBegin) + 1) * nbVoxels;
}

}  // namespace

RunComponents componentsOf(const RowIntersections3d& voxels, eVoxelConnectivity connectivity) {
  const NumberedRows rows(voxels);
  return connectivity == eVC_6 ? componentsIn<eVC_6>(rows) : componentsIn<eVC_26>(rows);
}

std::vector<RowIntersections3d> connectedComponents(const RowIntersections3d& voxels, eVoxelConnectivity connectivity) {
  const RunComponents components = componentsOf(voxels, connectivity);
  std::vector<std::size_t> ends(components.nbComponents + 1);
  for (const omUInt32 component : components.componentOfRun) ++ends[component + 1];
  for (std::size_t component = 0; component < components.nbComponents; ++component)
    ends[component + 1] += ends[component];
  std::vector<VoxelRun> runs(components.componentOfRun.size());
  visitRuns(voxels, components, [&](omUInt64 z, omUInt64 y, const PixelRun& run, omUInt32 component) {
    runs[ends[component]++] = {z, y, run};
  });
  std::vector<RowIntersections3d> result;
  result.reserve(components.nbComponents);
  for (std::size_t component = 0; component < components.nbComponents; ++component)
    result.push_back(
        detail::makeVoxels(runs.data() + (component == 0 ? 0 : ends[component - 1]), runs.data() + ends[component]));
  return result;
}

std::vector<VoxelComponent> measureComponents(const RowIntersections3d& voxels, const RunComponents& components) {
  const auto& numbers = components.componentOfRun;
  const bool isSound =
      numbers.size() == NumberedRows(voxels).nbRuns() &&
      std::all_of(numbers.begin(), numbers.end(), [&](omUInt32 number) { return number < components.nbComponents; });
  if (!isSound)
    logAndThrow("Components of voxels: their numbers are not those of the runs", __PRETTY_FUNCTION__, __FILE__,
                __LINE__);
  std::vector<VoxelComponent> result(components.nbComponents);
  std::vector<Sums> sums(components.nbComponents);
  visitRuns(voxels, components, [&](omUInt64 z, omUInt64 y, const PixelRun& run, omUInt32 component) {
    addRun(z, y, run, result[component], sums[component]);
  });
  for (std::size_t index = 0; index < result.size(); ++index) {
    const auto mean = [nbVoxels = result[index].nbVoxels](WideSum sum) {
      return static_cast<omReal64>(sum) / (2 * static_cast<omReal64>(nbVoxels));
    };
    result[index].centroid = {mean(sums[index].x), static_cast<omReal64>(sums[index].firstY) + mean(sums[index].y),
                              static_cast<omReal64>(result[index].zBegin) + mean(sums[index].z)};
  }
  return result;
}

}  // namespace ormix::geom
