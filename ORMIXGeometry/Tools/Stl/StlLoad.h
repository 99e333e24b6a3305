#pragma once

#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>
#include <ORMIXGeometry/Export.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>

// STL files as meshes, read as this library and its predecessors always did: the grammar is `readAsciiTriangles`'s and
// `readBinaryTriangles`'s. For files of other programs see `readMesh`.
//
// Coordinates are read as omReal32, also for omReal64 meshes. Corners whose coordinates are exactly equal become one
// vertex; vertices stand in ascending order of (x, y, z), see `removeDoubles`, and then become coordinates of the mesh
// as casts do. Triangles keep their order, and each is there: one with equal corners, or with an edge that an earlier
// triangle runs along in the same direction, gets vertices of its own behind the others, so that area and volume are
// those of the file.
//
// No reader fails: of a file that is cut or malformed the triangles before that place are kept. What cannot be read at
// all (a folder, a pipe, a device, a missing or an empty file) gives an empty mesh, logged as an error with the path.
// Linear in the bytes; memory grows with the triangles that arrive, not with those that a file declares.

namespace ormix::geom {

/// See `hasStlAsciiFormat`; false, silently, for what is no regular file or cannot be read.
ORMIX_GEOMETRY_API bool stlFileHasASCIIFormat(const std::string& path);

/// Reads either kind, as `stlFileHasASCIIFormat` says.
template <class T>
boost::shared_ptr<Mesh3d<T>> readFromStLFile(const std::string& path);

template <class T>
boost::shared_ptr<Mesh3d<T>> readStLAscii(const std::string& path);
template <class T>
boost::shared_ptr<Mesh3d<T>> readStLBinary(const std::string& path);

}  // namespace ormix::geom
