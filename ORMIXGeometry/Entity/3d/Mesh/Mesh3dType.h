#pragma once

#include <ORMIXGeometry/Enumeration.h>

#include <array>
#include <string_view>

namespace ormix::geom {

/// Role of a surface: the outer boundary of a body (a new mesh's role), or the boundary of a cavity.
enum eMesh3dType { eM3DT_Exterior, eM3DT_Interior };

}  // namespace ormix::geom

namespace ormix {

template <>
struct EnumerationNames<geom::eMesh3dType> {
  static constexpr std::string_view typeName = "eMesh3dType";
  static constexpr std::array<std::string_view, 2> names{"eM3DT_Exterior", "eM3DT_Interior"};
};

}  // namespace ormix
