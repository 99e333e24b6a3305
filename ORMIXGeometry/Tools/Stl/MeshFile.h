#pragma once

#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXGeometry/Tools/Stl/StlTriangles.h>
#include <ORMIXGeometry/Tools/Stl/TriangleDefects.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>

namespace ormix::geom {

/// The two formats of STL files.
enum eMeshFileFormat { eMFF_StlAscii, eMFF_StlBinary };

/// What becomes of triangles that add nothing to a surface; by default all stay.
struct MeshReadOptions {
  bool removesDegenerate = false;  ///< leave out triangles with equal corners
  bool removesDuplicate = false;   ///< leave out triangles whose corners an earlier one has in the same cyclic order
};

/// What a file of a mesh holds and what is wrong with it.
struct MeshReport {
  eMeshFileFormat format = eMFF_StlAscii;
  omUInt64 nbBytes = 0;  ///< length of the file
  omUInt64 nbSolids = 0;
  std::size_t nbTriangles = 0;       ///< in the file
  std::size_t nbKept = 0;            ///< in the mesh
  std::size_t nbVertices = 0;        ///< different corners
  std::size_t nbMergedVertices = 0;  ///< corners that were found equal to an earlier one
  std::size_t nbSeparated = 0;       ///< kept triangles that got vertices of their own, see `StlLoad.h`
  TriangleDefects defects;           ///< of the triangles in the file
  eStlStop stop = eSS_EndOfFile;
  omUInt64 stopOffset = 0;  ///< byte at which reading stopped
  omUInt64 stopLine = 0;    ///< its line, counted from 1; 0 for a binary file
  std::string message;      ///< why the file could not be read as a whole; empty when it was
};

/// Reads an STL file as programs write them. It is binary when its length is that of the triangles that it declares, or
/// when it does not begin as a text would; then a declared count of 0 means all triangles that are there. An ASCII file
/// is read by `readTolerantAsciiTriangles`. Vertices are merged and triangles kept as `readFromStLFile` does.
/// \param report filled whatever happens
/// \return an empty mesh, logged as an error, when the file cannot be read at all
template <class T>
boost::shared_ptr<Mesh3d<T>> readMesh(const std::string& path, const MeshReadOptions& options, MeshReport& report);
template <class T>
boost::shared_ptr<Mesh3d<T>> readMesh(const std::string& path);

/// How `writeMesh` writes: by default binary, coordinates as they are.
struct MeshWriteOptions {
  eMeshFileFormat format = eMFF_StlBinary;
  std::string name = "mesh";           ///< of an ASCII file; one word, for readers that are as strict as `readStLAscii`
  bool movesToPositiveOctant = false;  ///< as `saveToStLAscii` does; otherwise coordinates stay
  /// Write the fewest digits that read back as the same coordinate, not six decimals. A coordinate of an omReal64 mesh
  /// has then up to 17 digits, of which STL readers take omReal32.
  bool hasShortestDigits = true;
};

/// Writes a mesh as an STL file; fails as `saveToStLAscii` does.
template <class T>
BoolResult writeMesh(const std::string& path, const Mesh3d<T>& mesh, const MeshWriteOptions& options = {});

}  // namespace ormix::geom

namespace ormix {

template <>
struct EnumerationNames<geom::eMeshFileFormat> {
  static constexpr std::string_view typeName = "eMeshFileFormat";
  static constexpr std::array<std::string_view, 2> names{"eMFF_StlAscii", "eMFF_StlBinary"};
};

}  // namespace ormix
