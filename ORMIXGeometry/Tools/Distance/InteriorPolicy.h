#pragma once

#include <ORMIXGeometry/Enumeration.h>

#include <array>
#include <string_view>

namespace ormix::geom {

/// What a distance to an entity with an area or a volume is measured to. Holes and cavities are outside in both cases.
enum eInteriorPolicy {
  eIP_Filled = 0,   ///< to all of its points: the distance is 0 inside
  eIP_Boundary = 1  ///< to its boundary only
};

}  // namespace ormix::geom

namespace ormix {

/// The texts of eInteriorPolicy.
template <>
struct EnumerationNames<geom::eInteriorPolicy> {
  static constexpr std::string_view typeName = "eInteriorPolicy";                        ///< name of the enumeration
  static constexpr std::array<std::string_view, 2> names{"eIP_Filled", "eIP_Boundary"};  ///< its enumerators, in order
};

}  // namespace ormix
