#pragma once

#include <ORMIXMath/Skeleton/SnappedBoundary.h>

/// \file
/// How the edges of a snapped boundary meet at its vertices; not installed.

namespace ormix::detail {

/// The vertices of a boundary and the sectors of the region around them. Each sector lies between an edge that ends at
/// the vertex and one that starts there, the next in clockwise order, and has the index of the latter.
struct BoundaryGraph {
  std::vector<omUInt32> startVertex;   ///< of each edge
  std::vector<omUInt32> endVertex;     ///< of each edge
  std::vector<omUInt32> faceNext;      ///< of each edge, the one that starts behind it in the same sector
  std::vector<omUInt32> vertexToEdge;  ///< of each vertex, an edge that starts there, a vertex of the caller if it can
  std::vector<char> isReflex;          ///< of each vertex, whether a sector has more than half a turn
  omReal64 area = 0;                   ///< of the region, in units of the grid
  std::size_t nbFaces = 0;             ///< connected parts of the interior
  std::size_t nbWalks = 0;             ///< closed walks along the boundary in order of the sectors
};

/// Linear but for sorting.
/// \return a failure that names a vertex around which inside and outside do not alternate
BoolResult buildBoundaryGraph(const SnappedBoundary& boundary, BoundaryGraph& graph);

}  // namespace ormix::detail
