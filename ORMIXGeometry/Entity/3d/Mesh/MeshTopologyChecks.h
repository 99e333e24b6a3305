#pragma once

#include <ORMIXUtil/ProcessingResult.h>

#include <array>
#include <cstddef>

// Checks and failures that several sources of MeshTopology use; not installed.
namespace ormix::geom {

/// Success when the three vertex indices are below `nbVertices` and below the largest that is stored, and differ.
BoolResult checkCorners(const std::array<std::size_t, 3>& corners, std::size_t nbVertices);

/// The failure with the message for this cause.
/// @{
BoolResult invalidVertex(std::size_t vertexIdx, std::size_t nbVertices);
BoolResult tooManyTriangles();
BoolResult tooManyVertices();
/// @}

}  // namespace ormix::geom
