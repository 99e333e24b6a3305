#pragma once

#include <ORMIXMath/Hull/ConvexHull3d.h>

#include <vector>

#include "HullConstruction.h"

namespace ormix::detail {

/// The triangles of a finished hull with its extreme points as only vertices: facets in one plane are joined to the
/// face they make, and faces with more than three corners cut into fans. O(facets).
std::vector<IndexTriangle> trianglesOfFaces(const std::vector<HullFacet>& facets,
                                            const std::vector<SpatialPoint>& points);

}  // namespace ormix::detail
