#pragma once

#include <ORMIXGeometry/Enumeration.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <string_view>
#include <vector>

namespace ormix::geom {

/// Why a reader of a file of a mesh stopped. What is said of triangles holds for vertices and faces of formats that
/// have these, too.
enum eStlStop {
  eSS_EndOfSolid,      ///< the word "endsolid", or the last of the records declared
  eSS_EndOfFile,       ///< the file ended between two triangles
  eSS_InsideTriangle,  ///< the file ended inside a triangle, which is not counted
  eSS_NoNumber,        ///< a word where a coordinate was expected
  eSS_UnexpectedWord,  ///< a word that the format does not allow there
  eSS_TooMany,         ///< more corners than 32 bits can count
  eSS_ReadError        ///< the file could not be opened, or reading from it failed
};

/// The triangles of an STL file in order of the file, and where and why reading stopped.
struct StlTriangles {
  /// Most triangles that are read, so that indices of corners have 32 bits.
  static constexpr std::size_t s_maxTriangles = 0xFFFFFFFEu / 3;

  std::vector<omReal32> coordColl;  ///< nine numbers a triangle: its three corners
  omUInt64 nbSolids = 0;            ///< solids begun; 1 for a binary file
  eStlStop stop = eSS_EndOfFile;    ///< why reading stopped
  omUInt64 stopOffset = 0;          ///< byte at which reading stopped
  omUInt64 stopLine = 0;            ///< its line, counted from 1; 0 for a binary file

  /// The number of complete triangles.
  std::size_t getNbTriangles() const { return coordColl.size() / 9; }
};

}  // namespace ormix::geom

namespace ormix {

/// The texts of eStlStop.
template <>
struct EnumerationNames<geom::eStlStop> {
  static constexpr std::string_view typeName = "eStlStop";  ///< name of the enumeration
  /// Names of the enumerators, in order.
  static constexpr std::array<std::string_view, 7> names{"eSS_EndOfSolid", "eSS_EndOfFile",      "eSS_InsideTriangle",
                                                         "eSS_NoNumber",   "eSS_UnexpectedWord", "eSS_TooMany",
                                                         "eSS_ReadError"};
};

}  // namespace ormix
