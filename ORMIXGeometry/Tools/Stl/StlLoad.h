#pragma once

#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>
#include <ORMIXGeometry/Export.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>

// Reads STL files as meshes with the fixed grammar of `readAsciiTriangles` and `readBinaryTriangles`, on which existing
// programs rely. For files of other programs see `readMesh`.
//
// Coordinates are read as omReal32, also for omReal64 meshes. Corners whose coordinates are exactly equal become one
// vertex; vertices are in ascending order of (x, y, z), see `removeDoubles`, and are converted to the coordinate type
// by cast(). All triangles are kept, in their order: one with equal corners, or with an edge that an earlier triangle
// has in the same direction, gets vertices of its own after the others, so that area and volume are those of the file.
//
// Readers return what they can read: of a truncated or malformed file the triangles before the defect. What cannot be
// read at all (a directory, a pipe, a device, a missing or an empty file) gives an empty mesh and an error in the log
// with the path; a read error on the way is logged as well. Linear in the bytes; memory grows with the triangles that
// are read, not with the number that a file declares.

namespace ormix::geom {

/// Whether the beginning of the file is that of an ASCII file, see `hasStlAsciiFormat`. False, without a log entry,
/// when it is not a regular file or cannot be read.
ORMIX_GEOMETRY_API bool stlFileHasASCIIFormat(const std::string& path);

/// Reads a file of either format, which `stlFileHasASCIIFormat` determines.
template <class T>
boost::shared_ptr<Mesh3d<T>> readFromStLFile(const std::string& path);

/// Reads a file of the format of the name without determining it first.
/// @{
template <class T>
boost::shared_ptr<Mesh3d<T>> readStLAscii(const std::string& path);
template <class T>
boost::shared_ptr<Mesh3d<T>> readStLBinary(const std::string& path);
/// @}

}  // namespace ormix::geom
