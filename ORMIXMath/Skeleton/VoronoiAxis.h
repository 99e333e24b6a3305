#pragma once

#include <ORMIXMath/Skeleton/BoundaryGraph.h>

/// \file
/// The part of the Voronoi diagram of a boundary that lies inside; not installed.

namespace ormix::detail {

/// The axis in units of the grid. Parts of its edges are indices of the boundary's edges, or the number of these plus
/// the index of a vertex.
struct GridAxis {
  std::vector<AxisVertex> vertices;
  std::vector<AxisEdge> edges;
  std::vector<omUInt32> vertexToSector;  ///< of each vertex in the corner of a sector, its index, else `s_none`
};

/// The axis of one Voronoi diagram, which may be wrong: it remains to be checked.
/// \return a failure where an edge is inside by one of its parts and outside by the other
BoolResult voronoiAxis(const SnappedBoundary& boundary, const BoundaryGraph& graph, GridAxis& axis);

/// Checks what every axis must fulfil: the regions between its edges and their parts have the area of the region, and
/// its components and cycles are those of the boundary.
/// \param areaError set to the relative difference of the areas
BoolResult checkAxis(const SnappedBoundary& boundary, const BoundaryGraph& graph, const GridAxis& axis,
                     omReal64& areaError);

}  // namespace ormix::detail
