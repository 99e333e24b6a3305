#pragma once

#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <iosfwd>
#include <string>
#include <vector>

// Writes meshes as STL files. A triangle is written with its unit normal, computed in omReal64 before offsets are added
// (the zero vector for a triangle without area), and its three vertices in order of its half-edges. The offset of the
// axis is added to each coordinate, in omReal32 for an integer mesh and in the coordinate type of a floating mesh.
// Linear in the triangles; one buffer is allocated.
//
// Texts are written as under the classic locale, whatever the locale, padding and signs of the stream. Lines end with a
// line feed; the stream is flushed once, at the end of each call. Failures show in the state of the stream.

namespace ormix::geom {

/// Writes "solid " and the name, unchanged, on a line.
ORMIX_GEOMETRY_API void writeStLAsciiHeader(std::ostream& stream, const std::string& name);
/// Writes "endsolid " and the name, unchanged, on a line.
ORMIX_GEOMETRY_API void writeStLAsciiFooter(std::ostream& stream, const std::string& name);

/// Writes the facets, with numbers in scientific notation and the precision of the stream (`scientificPrecision`). If a
/// number was written, the flag `scientific` of the stream stays set (intended).
template <class T>
void writeStLAscii(std::ostream& stream, const Mesh3d<T>& mesh, omReal32 offsetX, omReal32 offsetY, omReal32 offsetZ);

/// Writes the 80 bytes "exported from ORMIX <version>-----..." and the low 32 bits of the number of triangles in
/// little-endian order.
ORMIX_GEOMETRY_API void writeStLBinaryHeader(std::ostream& stream, std::size_t nbTriangles);

/// Writes a record of 50 bytes for each triangle: twelve omReal32 in little-endian order and two zero bytes.
template <class T>
void writeStLBinary(std::ostream& stream, const Mesh3d<T>& mesh, omReal32 offsetX, omReal32 offsetY, omReal32 offsetZ);

/// Writes the exterior mesh and then, if `withHoles`, each hole with its own holes, in order.
/// @{
template <class T>
void writeStLAscii(std::ostream& stream, const MeshWithHoles3d<T>& mesh, bool withHoles, omReal32 offsetX,
                   omReal32 offsetY, omReal32 offsetZ);
template <class T>
void writeStLBinary(std::ostream& stream, const MeshWithHoles3d<T>& mesh, bool withHoles, omReal32 offsetX,
                    omReal32 offsetY, omReal32 offsetZ);
/// @}

/// Writes a file of one mesh, of a tree of meshes, or of all surfaces of one or more shapes one after the other; null
/// meshes and null shapes are omitted.
///
/// All meshes together are translated to the positive octant, which the format originally required: on each axis on
/// which the smallest coordinate is 0 or less, the offset is 1.0f minus that coordinate as an omReal32, otherwise 0.
///
/// An existing file is replaced only after everything has been written, as by `save` of an archive. Fails with message
/// eEM_MeshFileNotWritten when the file cannot be opened or not everything can be written. Of a shape with voxels but
/// without a triangle the faces of the voxels are written, see voxelSurfaces() with eVC_26; it fails as well where
/// these have coordinates that omReal32 does not hold. `name` is the name of the solid, written unchanged; `withHoles`
/// says whether holes are written too.
/// @{
template <class T>
BoolResult saveToStLAscii(const std::string& path, const Mesh3d<T>& mesh, const std::string& name);
template <class T>
BoolResult saveToStLBinary(const std::string& path, const Mesh3d<T>& mesh);
template <class T>
BoolResult saveToStLAscii(const std::string& path, const MeshWithHoles3d<T>& mesh, bool withHoles,
                          const std::string& name);
template <class T>
BoolResult saveToStLBinary(const std::string& path, const MeshWithHoles3d<T>& mesh, bool withHoles);

ORMIX_GEOMETRY_API BoolResult saveToStLAscii(const std::string& path, const Shape3d& shape, bool withHoles,
                                             const std::string& name);
ORMIX_GEOMETRY_API BoolResult saveToStLBinary(const std::string& path, const Shape3d& shape, bool withHoles);
ORMIX_GEOMETRY_API BoolResult saveToStLAscii(const std::string& path,
                                             const std::vector<boost::shared_ptr<Shape3d>>& shapes, bool withHoles,
                                             const std::string& name);
ORMIX_GEOMETRY_API BoolResult saveToStLBinary(const std::string& path,
                                              const std::vector<boost::shared_ptr<Shape3d>>& shapes, bool withHoles);
/// @}

}  // namespace ormix::geom
