#pragma once

#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <cstddef>

// Checks and failures that several sources of MeshTopology use; not installed.
namespace ormix::geom::detail {

/// Whether two of the three vertex indices of a triangle are equal.
constexpr bool hasEqualCorners(const omUInt32* corners) {
  return corners[0] == corners[1] || corners[1] == corners[2] || corners[2] == corners[0];
}

/// Success when the three vertex indices are below `nbVertices` and below the largest that is stored, and differ.
BoolResult checkCorners(const std::array<std::size_t, 3>& corners, std::size_t nbVertices);

/// The failure with the message for this cause.
/// @{
BoolResult invalidVertex(std::size_t vertexIdx, std::size_t nbVertices);
BoolResult tooManyTriangles();
BoolResult tooManyVertices();
/// @}
/// The same as `invalidVertex`, for a vertex of the triangle with this index.
BoolResult invalidCorner(std::size_t triangleIdx, std::size_t vertexIdx, std::size_t nbVertices);

/// \throw ORMIXGeometryException, logged, with the message of invalidVertex() when there is no such vertex
void requireVertex(std::size_t vertexIdx, std::size_t nbVertices);

}  // namespace ormix::geom::detail
