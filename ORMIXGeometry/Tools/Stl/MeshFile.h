#pragma once

#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXGeometry/Tools/Stl/StlTriangles.h>
#include <ORMIXGeometry/Tools/Stl/TriangleDefects.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>

namespace ormix::geom {

/// The formats of files of meshes.
enum eMeshFileFormat {
  eMFF_StlAscii,  ///< STL as text
  eMFF_StlBinary  ///< STL in records of 50 bytes
};

/// Which triangles of a file are omitted; by default none.
struct MeshReadOptions {
  bool removesDegenerate = false;  ///< omit triangles with equal corners
  bool removesDuplicate = false;   ///< omit triangles whose corners an earlier one has in the same cyclic order
};

/// The contents of a file of a mesh, and its defects.
struct MeshReport {
  eMeshFileFormat format = eMFF_StlAscii;  ///< the format that was recognised
  omUInt64 nbBytes = 0;                    ///< length of the file
  omUInt64 nbSolids = 0;                   ///< solids begun; 1 for a binary file
  std::size_t nbTriangles = 0;             ///< in the file
  std::size_t nbKept = 0;                  ///< in the mesh
  std::size_t nbVertices = 0;              ///< different corners
  std::size_t nbMergedVertices = 0;        ///< corners that were found equal to an earlier one
  std::size_t nbSeparated = 0;             ///< kept triangles that got vertices of their own, see `StlLoad.h`
  TriangleDefects defects;                 ///< of the triangles in the file
  eStlStop stop = eSS_EndOfFile;           ///< why reading stopped
  omUInt64 stopOffset = 0;                 ///< byte at which reading stopped
  omUInt64 stopLine = 0;                   ///< its line, counted from 1; 0 for a binary file
  std::string message;                     ///< why the file could not be read as a whole; empty when it was
};

/// Reads an STL file, tolerant of the deviations from the format that are common in practice. The file is binary when
/// its length agrees with the number of triangles that it declares, or when it does not begin as a text would; a
/// declared number of 0 then means all complete records. An ASCII file is read by `readTolerantAsciiTriangles`.
/// Vertices are merged and triangles kept as by `readFromStLFile`.
/// \param report filled in every case, also on failure
/// \return an empty mesh when the file cannot be read at all, the part before a read error; both are logged as errors
template <class T>
boost::shared_ptr<Mesh3d<T>> readMesh(const std::string& path, const MeshReadOptions& options, MeshReport& report);
/// The same with default options and without a report.
template <class T>
boost::shared_ptr<Mesh3d<T>> readMesh(const std::string& path);

/// How `writeMesh` writes: by default binary, with unchanged coordinates.
struct MeshWriteOptions {
  eMeshFileFormat format = eMFF_StlBinary;  ///< the format of the file
  std::string name = "mesh";                ///< of the solid in an ASCII file; `readStLAscii` can read one word only
  bool movesToPositiveOctant = false;       ///< whether to translate the mesh as `saveToStLAscii` does
  /// Whether ASCII files have the fewest digits that read back as the same coordinate instead of six decimals. Those of
  /// an omReal64 mesh then have up to 17 digits, which STL readers round to omReal32.
  bool hasShortestDigits = true;
};

/// Writes a mesh as an STL file; fails as `saveToStLAscii` does.
template <class T>
BoolResult writeMesh(const std::string& path, const Mesh3d<T>& mesh, const MeshWriteOptions& options = {});

}  // namespace ormix::geom

namespace ormix {

/// The texts of eMeshFileFormat.
template <>
struct EnumerationNames<geom::eMeshFileFormat> {
  static constexpr std::string_view typeName = "eMeshFileFormat";  ///< name of the enumeration
  /// Names of the enumerators, in order.
  static constexpr std::array<std::string_view, 2> names{"eMFF_StlAscii", "eMFF_StlBinary"};
};

}  // namespace ormix
