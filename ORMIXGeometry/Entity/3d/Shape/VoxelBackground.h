#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/ConnectedComponents.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelConnectivity.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelRuns.h>

#include <vector>

/// \file
/// The background of a set of voxels, and what lies inside what; not installed.

namespace ormix::geom::detail {

/// The components of the background, as those of the gaps behind runs. Component 0 is what reaches infinity; each other
/// one is a cavity, enclosed by one component of voxels.
struct VoxelBackground {
  std::size_t nbComponents = 1;
  std::vector<omUInt32> componentOfGap;  ///< by run: of the gap behind it, 0 behind the last run of a row

  /// The component of the gap before a run, of a row that begins with the run `firstOfRow`.
  omUInt32 before(omUInt32 run, omUInt32 firstOfRow) const { return run == firstOfRow ? 0 : componentOfGap[run - 1]; }
};

/// The background of voxels without adjacent runs. Nearly linear in the runs and linear in the rows.
VoxelBackground backgroundOf(const NumberedRows& rows, eVoxelConnectivity connectivity);

/// For each component of voxels that of the background around it.
std::vector<omUInt32> surroundings(const NumberedRows& rows, const RunComponents& components,
                                   const VoxelBackground& background);

/// For each component of the background that of the voxels around it; without meaning for component 0.
std::vector<omUInt32> enclosing(const RunComponents& components, const VoxelBackground& background);

}  // namespace ormix::geom::detail
