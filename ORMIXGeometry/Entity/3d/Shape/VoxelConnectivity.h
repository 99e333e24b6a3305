#pragma once

#include <ORMIXGeometry/Enumeration.h>

#include <array>
#include <string_view>

namespace ormix::geom {

/// Which voxels are neighbours. Where the voxels of a region are 26-connected, those of its background are 6-connected,
/// and the reverse: so a closed surface of voxels separates what is inside from what is outside.
enum eVoxelConnectivity {
  eVC_6,  ///< the six voxels that share a face
  eVC_26  ///< the 26 voxels that share a face, an edge or a corner
};

/// The connectivity of the background of regions with this one.
constexpr eVoxelConnectivity backgroundConnectivity(eVoxelConnectivity connectivity) {
  return connectivity == eVC_6 ? eVC_26 : eVC_6;
}

}  // namespace ormix::geom

namespace ormix {

/// Texts of eVoxelConnectivity.
template <>
struct EnumerationNames<geom::eVoxelConnectivity> {
  static constexpr std::string_view typeName = "eVoxelConnectivity";  ///< name of the enumeration
  /// Names of the enumerators, in order of their values.
  static constexpr std::array<std::string_view, 2> names{"eVC_6", "eVC_26"};
};

}  // namespace ormix
