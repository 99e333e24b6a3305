#pragma once

#include <ORMIXGeometry/Enumeration.h>

#include <array>
#include <string_view>

namespace ormix::geom {

/// Which pixels are neighbours. Where the pixels of a region are 8-connected, those of its background are 4-connected,
/// and the reverse: so a closed curve of pixels separates what is inside from what is outside.
enum ePixelConnectivity {
  ePC_4,  ///< the four pixels that share an edge
  ePC_8   ///< the eight pixels that share an edge or a corner
};

/// The connectivity of the background of regions with this one.
constexpr ePixelConnectivity backgroundConnectivity(ePixelConnectivity connectivity) {
  return connectivity == ePC_4 ? ePC_8 : ePC_4;
}

}  // namespace ormix::geom

namespace ormix {

/// Texts of ePixelConnectivity.
template <>
struct EnumerationNames<geom::ePixelConnectivity> {
  static constexpr std::string_view typeName = "ePixelConnectivity";  ///< name of the enumeration
  /// Names of the enumerators, in order of their values.
  static constexpr std::array<std::string_view, 2> names{"ePC_4", "ePC_8"};
};

}  // namespace ormix
