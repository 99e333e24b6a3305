#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Shape/IndexTriangle.h>

#include <functional>
#include <vector>

/// \file
/// Antipodal parts of convex hulls; not installed.

namespace ormix::detail {

/// Two points of a hull between parallel planes across `direction`, which touch it there and in a pair of features:
/// a facet and a vertex, or two edges.
struct AntipodalPair {
  SpatialPoint direction;  ///< from the lower to the upper plane; of any length
  omUInt32 upper;
  omUInt32 lower;
};

/// Calls `visit` for all pairs of a facet and a vertex and of two edges of a convex hull that lie in parallel planes
/// which hold the hull between them; for two edges twice.
///
/// These are the vertices of the spherical diagram of the hull's normals laid over its reflection. The vertex opposite
/// to a facet is found by climbing from that of its neighbour; along the turn from a facet to the next one the vertex
/// opposite changes edge by edge. O(facets + pairs) for hulls of bounded degree; there are at most facets² pairs, and
/// few times the number of facets for hulls that are no adversary's. Directions of narrow facets are as wrong as
/// rounding makes them: compare what you compute with all points.
void visitAntipodalPairs(const std::vector<SpatialPoint>& points, const std::vector<IndexTriangle>& facets,
                         const std::function<void(const AntipodalPair&)>& visit);

}  // namespace ormix::detail
