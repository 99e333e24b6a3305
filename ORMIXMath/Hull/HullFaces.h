#pragma once

#include <ORMIXMath/Hull/ConvexHull3d.h>

#include <vector>

#include "HullConstruction.h"

namespace ormix::detail {

/// The triangles of a finished hull with only the extreme points as vertices: adjacent facets in one plane are joined
/// to a face, and faces with more than three corners are cut into fans. O(facets).
std::vector<IndexTriangle> trianglesOfFaces(const std::vector<HullFacet>& facets,
                                            const std::vector<SpatialPoint>& points);

}  // namespace ormix::detail
