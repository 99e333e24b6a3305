#pragma once

#include <ORMIXUtil/ProcessingResult.h>

#include <array>
#include <cstddef>

// What the sources of MeshTopology share; not installed.
namespace ormix::geom {

/// Good when the indices are below `nbVertices`, fit the storage and differ.
BoolResult checkCorners(const std::array<std::size_t, 3>& corners, std::size_t nbVertices);

/// \name What a mesh refuses.
/// @{
BoolResult invalidVertex(std::size_t vertexIdx, std::size_t nbVertices);
BoolResult tooManyTriangles();
BoolResult tooManyVertices();
/// @}

}  // namespace ormix::geom
