#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>
#include <vector>

namespace ormix::geom {

/// Properties of a set of triangles with merged vertices as a surface. All but the first are counted without the
/// triangles that have equal corners.
struct TriangleDefects {
  std::size_t nbDegenerate = 0;         ///< triangles with equal corners
  std::size_t nbDuplicate = 0;          ///< triangles whose corners, in whatever order, an earlier one has as well
  std::size_t nbEdges = 0;              ///< undirected edges
  std::size_t nbBoundaryEdges = 0;      ///< edges of one triangle
  std::size_t nbNonManifoldEdges = 0;   ///< edges of three triangles and more
  std::size_t nbFlippedNeighbours = 0;  ///< edges of two triangles that have them in the same direction
  std::size_t nbBoundaryLoops = 0;      ///< chains of boundary edges; loops that touch in a vertex are one
  std::size_t nbComponents = 0;         ///< sets of triangles that are connected by edges
};

/// Counts the properties of triangles over `nbVertices` vertices. Linear in vertices and triangles, except that the
/// edges of a vertex with many are sorted.
/// \param vertexIndexColl three indices below `nbVertices` for each triangle
ORMIX_GEOMETRY_API TriangleDefects findDefects(std::size_t nbVertices, const std::vector<omUInt32>& vertexIndexColl);

}  // namespace ormix::geom
