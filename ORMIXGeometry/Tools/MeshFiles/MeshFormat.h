#pragma once

#include <ORMIXGeometry/Enumeration.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXGeometry/Tools/Stl/StlInput.h>

#include <array>
#include <string>
#include <string_view>

namespace ormix::geom {

/// The formats of files of meshes.
enum eMeshFileFormat {
  eMFF_StlAscii,         ///< STL as text
  eMFF_StlBinary,        ///< STL in records of 50 bytes
  eMFF_Obj,              ///< OBJ: statements `v` and `f`
  eMFF_PlyAscii,         ///< PLY as text
  eMFF_PlyLittleEndian,  ///< PLY with the least significant byte of a number first
  eMFF_PlyBigEndian,     ///< PLY with the most significant byte of a number first
  eMFF_Off               ///< OFF as text
};

/// The format that the contents of a file have, from its beginning: a binary STL file when its length agrees with the
/// number of triangles that it declares; PLY after the word "ply"; binary STL after other bytes that no text has; a
/// text of STL, OFF or OBJ by its first word, comments aside. What says nothing is a file of the format that the
/// extension of its path names, else binary STL.
/// \param input at its first byte; some are read. Which of the PLY formats it is, the header tells later.
ORMIX_GEOMETRY_API eMeshFileFormat findMeshFormat(StlInput& input, std::string_view path);

/// The format for writing that the extension of a path names, in upper or lower case: .obj, .ply (little-endian), .off;
/// binary STL for every other path.
ORMIX_GEOMETRY_API eMeshFileFormat meshFormatOf(std::string_view path);

}  // namespace ormix::geom

namespace ormix {

/// The texts of eMeshFileFormat.
template <>
struct EnumerationNames<geom::eMeshFileFormat> {
  static constexpr std::string_view typeName = "eMeshFileFormat";  ///< name of the enumeration
  /// Names of the enumerators, in order.
  static constexpr std::array<std::string_view, 7> names{"eMFF_StlAscii", "eMFF_StlBinary",       "eMFF_Obj",
                                                         "eMFF_PlyAscii", "eMFF_PlyLittleEndian", "eMFF_PlyBigEndian",
                                                         "eMFF_Off"};
};

}  // namespace ormix
