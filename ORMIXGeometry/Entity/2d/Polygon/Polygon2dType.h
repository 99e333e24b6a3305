#pragma once

#include <ORMIXGeometry/Enumeration.h>

#include <array>
#include <string_view>

namespace ormix::geom {

/// Role of a ring. It decides the sign of the area, see AreaMsr2d.
enum ePolygon2dType {
  eP2DT_Exterior,  ///< outer boundary of a region; the role of a new polygon
  eP2DT_Interior   ///< boundary of a hole
};

}  // namespace ormix::geom

namespace ormix {

/// Texts of ePolygon2dType.
template <>
struct EnumerationNames<geom::ePolygon2dType> {
  static constexpr std::string_view typeName = "ePolygon2dType";  ///< name of the enumeration
  /// Names of the enumerators, in order of their values.
  static constexpr std::array<std::string_view, 2> names{"eP2DT_Exterior", "eP2DT_Interior"};
};

}  // namespace ormix
