#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Export.h>
#include <ORMIXMath/MeshSimplification/MeshSides.h>
#include <ORMIXMath/MeshSimplification/MeshSimplificationOptions.h>
#include <ORMIXMath/Shape/IndexTriangle.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <vector>

namespace ormix {

/// Vertices, and triangles by the indices of their corners.
struct SimplifiedTriangles {
  std::vector<SpatialPoint> vertices;
  std::vector<IndexTriangle> triangles;
};

/// Simplifies a mesh by collapsing edges, each to one vertex, from the cheapest on (GarlandHeckbert1997): the cost is
/// the sum of the squared distances of the new vertex from the planes of the triangles that the edge's ends stand for.
/// It ends at the number of triangles or at the error that the options have, or when no edge can collapse.
///
/// The result has the topology of the input, each component its own, and its orientation: closed stays closed. No
/// collapse turns a triangle by more than 60 degrees. Sides without an opposite are boundaries, held by planes that are
/// perpendicular to the surface. What several fans of triangles have in common, a vertex or an edge of other than two
/// triangles, stays as it is. Vertices that do not move keep their coordinates exactly, those below 2^-900 of the
/// extent apart; vertices and triangles that remain keep their order, and vertices without triangles go. The same input
/// gives the same bits everywhere.
///
/// Planes count with the roots of their triangles' areas: with the areas themselves averages are better, and all alike
/// is better for the greatest distance where triangles are of different sizes.
///
/// O(n log n) as a rule, and about 130 bytes a triangle. Vertices where more than 1000 triangles meet take no part
/// until fewer do.
/// \tparam T type of the coordinates, whose values the result has: omInt32, omUInt32, omReal32 or omReal64
/// \param vertices with coordinates that are finite and at most 2^1020 in size
/// \param sides of triangles with three different corners, all starts below the number of vertices, opposites as
///        MeshSide has them
/// \param result set on success
/// \param report set on success, but for distances, areas and volumes
/// \return a failure that says which option is out of range, which vertex is not finite, or that the progress was
///         stopped
template <class T>
ORMIX_MATH_API BoolResult simplifyTriangles(std::vector<SpatialPoint> vertices, std::vector<MeshSide> sides,
                                            const MeshSimplificationOptions& options, SimplifiedTriangles& result,
                                            MeshSimplificationReport& report);

}  // namespace ormix
