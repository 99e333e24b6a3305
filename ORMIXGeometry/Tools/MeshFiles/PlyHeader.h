#pragma once

#include <ORMIXGeometry/Tools/MeshFiles/MeshFormat.h>
#include <ORMIXGeometry/Tools/MeshFiles/TextLines.h>

#include <string>
#include <vector>

// Not installed.
namespace ormix::geom::detail {

/// The types of numbers in PLY files.
enum class PlyType { Int8, UInt8, Int16, UInt16, Int32, UInt32, Int64, UInt64, Real32, Real64, None };

/// The number of bytes of a type.
std::size_t sizeOf(PlyType type);

/// What a property is to a mesh.
enum class PlyRole { X, Y, Z, Corners, Other };

/// One number, or a list of numbers, of each record of an element.
struct PlyProperty {
  PlyType countType = PlyType::None;  ///< of the length of a list; none where it is one number
  PlyType type = PlyType::None;       ///< of the number, or of those of the list
  PlyRole role = PlyRole::Other;      ///< what it is
  /// Whether it is a list.
  bool isList() const { return countType != PlyType::None; }
};

/// A run of records.
struct PlyElement {
  std::string name;                     ///< "vertex", "face" or another one
  omUInt64 nbRecords = 0;               ///< as declared
  std::vector<PlyProperty> properties;  ///< in order of a record
  /// Whether a property has this role.
  bool has(PlyRole role) const;
  /// The bytes of a record with empty lists.
  std::size_t getSmallestSize() const;
};

/// The header of a PLY file.
struct PlyHeader {
  eMeshFileFormat format = eMFF_PlyAscii;  ///< one of the three of PLY
  std::vector<PlyElement> elements;        ///< in order of the file
};

/// Reads the header up to the line "end_header". Comments and lines of unknown words are passed over.
/// \return what is wrong; empty when it was read
std::string readPlyHeader(TextLines& lines, PlyHeader& header);

}  // namespace ormix::geom::detail
