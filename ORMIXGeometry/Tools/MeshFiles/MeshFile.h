#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexTriMesh3d.h>
#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXGeometry/Tools/MeshFiles/MeshFormat.h>
#include <ORMIXGeometry/Tools/Stl/StlTriangles.h>
#include <ORMIXGeometry/Tools/Stl/TriangleDefects.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <optional>
#include <string>

namespace ormix::geom {

/// Which triangles of a file are omitted; by default none.
struct MeshReadOptions {
  bool removesDegenerate = false;  ///< omit triangles with equal corners
  bool removesDuplicate = false;   ///< omit triangles whose corners an earlier one has in the same cyclic order
};

/// The contents of a file of a mesh, and its defects.
struct MeshReport {
  eMeshFileFormat format = eMFF_StlAscii;  ///< the format that was recognised
  omUInt64 nbBytes = 0;                    ///< length of the file
  omUInt64 nbSolids = 0;                   ///< solids begun, objects of an OBJ file; 1 for other files
  std::size_t nbTriangles = 0;             ///< in the file, after polygons were cut into triangles
  std::size_t nbPolygons = 0;              ///< faces of more than three corners
  std::size_t nbSkippedFaces = 0;          ///< faces left out: fewer than three corners, or an index without a vertex
  std::size_t nbKept = 0;                  ///< triangles in the mesh
  std::size_t nbVertices = 0;              ///< different corners of an STL file, vertices of others
  std::size_t nbMergedVertices = 0;        ///< corners that were found equal to an earlier one; 0 but for STL
  std::size_t nbSeparated = 0;             ///< kept triangles that got vertices of their own, see `StlLoad.h`
  TriangleDefects defects;                 ///< of the triangles in the file
  eStlStop stop = eSS_EndOfFile;           ///< why reading stopped
  omUInt64 stopOffset = 0;                 ///< byte at which reading stopped
  omUInt64 stopLine = 0;                   ///< its line, counted from 1; 0 for a binary file
  std::string message;                     ///< why the file could not be read as a whole; empty when it was
};

/// Reads an STL, OBJ, PLY or OFF file, whichever it is (`findMeshFormat`), tolerant of the deviations from the formats
/// that are common in practice. All triangles are kept in their order, those that a mesh cannot share with vertices of
/// their own (`eNMP_OwnVertices`). Linear in the bytes, except as polygons are cut (`detail::cutFaces`); memory grows
/// with what is read, not with the numbers that a file declares.
///
/// STL: coordinates are read as omReal32 and vertices merged as by `readFromStLFile`. The file is binary when its
/// length agrees with the number of triangles that it declares, or when it does not begin as a text would; a declared
/// number of 0 then means all complete records. An ASCII file is read by `readTolerantAsciiTriangles`.
///
/// OBJ, PLY in its three formats, OFF: coordinates are read as omReal32 for omReal32 meshes, else as omReal64; vertices
/// are those of the file. Polygons are cut into triangles, concave ones too. Normals, colours and other attributes are
/// passed over.
/// \param report filled in every case, also on failure
/// \return an empty mesh when the file cannot be read at all, the part before a read error; both are logged as errors
template <class T>
boost::shared_ptr<Mesh3d<T>> readMesh(const std::string& path, const MeshReadOptions& options, MeshReport& report);
/// The same with default options and without a report.
template <class T>
boost::shared_ptr<Mesh3d<T>> readMesh(const std::string& path);

/// The same triangles over the vertices of the file, none separated: what `repair` takes.
template <class T>
FaceVertexTriMesh3d<T> readFaceVertexTriMesh(const std::string& path, const MeshReadOptions& options,
                                             MeshReport& report);

/// How `writeMesh` writes: by default with unchanged coordinates.
struct MeshWriteOptions {
  std::optional<eMeshFileFormat> format;  ///< of the file; without one as its extension says, see `meshFormatOf`
  std::string name = "mesh";              ///< of the solid or object; `readStLAscii` can read one word only
  bool movesToPositiveOctant = false;     ///< whether to translate the mesh as `saveToStLAscii` does
  /// Whether texts have the fewest digits that read back as the same coordinate instead of six decimals. Those of
  /// an omReal64 mesh then have up to 17 digits, which STL readers round to omReal32.
  bool hasShortestDigits = true;
};

/// Writes a mesh to a file; fails as `saveToStLAscii` does. STL holds omReal32; the other formats hold every
/// coordinate, so that `readMesh` gives the same mesh again.
/// @{
template <class T>
BoolResult writeMesh(const std::string& path, const Mesh3d<T>& mesh, const MeshWriteOptions& options = {});
template <class T>
BoolResult writeMesh(const std::string& path, const FaceVertexTriMesh3d<T>& mesh, const MeshWriteOptions& options = {});
/// @}

}  // namespace ormix::geom
