#pragma once

#include <ORMIXGeometry/Enumeration.h>

#include <array>
#include <string_view>

namespace ormix::geom {

/// Role of a surface.
enum eMesh3dType {
  eM3DT_Exterior,  ///< outer boundary of a body; the role of a new mesh
  eM3DT_Interior   ///< boundary of a cavity
};

}  // namespace ormix::geom

namespace ormix {

/// The texts of eMesh3dType.
template <>
struct EnumerationNames<geom::eMesh3dType> {
  static constexpr std::string_view typeName = "eMesh3dType";  ///< name of the enumeration
  /// Names of the enumerators, in order.
  static constexpr std::array<std::string_view, 2> names{"eM3DT_Exterior", "eM3DT_Interior"};
};

}  // namespace ormix
