#pragma once

#include <ORMIXGeometry/Enumeration.h>

#include <array>
#include <string_view>

namespace ormix::geom {

/// Role of a ring: the outer boundary of a region (a new polygon's role), or the boundary of a hole.
enum ePolygon2dType { eP2DT_Exterior, eP2DT_Interior };

}  // namespace ormix::geom

namespace ormix {

template <>
struct EnumerationNames<geom::ePolygon2dType> {
  static constexpr std::string_view typeName = "ePolygon2dType";
  static constexpr std::array<std::string_view, 2> names{"eP2DT_Exterior", "eP2DT_Interior"};
};

}  // namespace ormix
