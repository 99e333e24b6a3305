#pragma once

#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <iosfwd>
#include <string>
#include <vector>

// Meshes as STL files. A triangle is written with its unit normal, computed in omReal64 before offsets are added (the
// zero vector for a triangle without area), and its three vertices in order of its half-edges, each coordinate plus the
// axis's offset: a coordinate of an integer mesh is converted to omReal32 first, one of a floating mesh is added in its
// own type. Linear in the triangles; no allocation but one block.
//
// Texts are written under the classic locale whatever that of the stream, without its padding and signs. Lines end with
// a line feed; the stream is flushed once, at the end of each call. Failures show in the stream's state.

namespace ormix::geom {

/// \name Writing to a stream.
/// @{

/// "solid " and the name, as it is, on a line.
ORMIX_GEOMETRY_API void writeStLAsciiHeader(std::ostream& stream, const std::string& name);
/// "endsolid " and the name on a line.
ORMIX_GEOMETRY_API void writeStLAsciiFooter(std::ostream& stream, const std::string& name);

/// The facets, numbers in scientific notation with the stream's precision (`scientificPrecision`). Where a number was
/// written, the stream's flag `scientific` stays set (intended).
template <class T>
void writeStLAscii(std::ostream& stream, const Mesh3d<T>& mesh, omReal32 offsetX, omReal32 offsetY, omReal32 offsetZ);

/// The 80 bytes "exported from ORMIX <version>-----..." and the low 32 bits of the count, little-endian.
ORMIX_GEOMETRY_API void writeStLBinaryHeader(std::ostream& stream, std::size_t nbTriangles);

/// The records of 50 bytes: twelve omReal32, little-endian, and two zero bytes.
template <class T>
void writeStLBinary(std::ostream& stream, const Mesh3d<T>& mesh, omReal32 offsetX, omReal32 offsetY, omReal32 offsetZ);

/// The exterior mesh, then, when `withHoles`, each hole with its own holes, in order.
template <class T>
void writeStLAscii(std::ostream& stream, const MeshWithHoles3d<T>& mesh, bool withHoles, omReal32 offsetX,
                   omReal32 offsetY, omReal32 offsetZ);
template <class T>
void writeStLBinary(std::ostream& stream, const MeshWithHoles3d<T>& mesh, bool withHoles, omReal32 offsetX,
                    omReal32 offsetY, omReal32 offsetZ);
/// @}

/// \name Writing to a file.
/// What is written, all of it together, is moved so that it lies in the positive octant, as the format once asked for:
/// on each axis where its smallest coordinate is 0 or less, the offset is 1.0f minus that coordinate as an omReal32;
/// otherwise 0.
///
/// An older file is replaced when all is written, and kept otherwise. False, with message eEM_MeshFileNotWritten, when
/// the file cannot be opened or not all of it can be written.
/// A shape is written by its surfaces, one behind the other; null meshes and null shapes are left out.
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
