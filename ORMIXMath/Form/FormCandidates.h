#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>

#include <vector>

/// \file
/// Where the best zones of lines and inscribed circles can be, by the convex hull; not installed.
///
/// Points are about 1 in size. The answers are few, the best by all points, and exact to the rounding of the hull: a
/// descent ends the rest. They may be empty where the hull has no area or volume.

namespace ormix::detail {

/// Directions across which points of the plane z = 0 are the thinnest: normals of edges of the convex hull.
std::vector<SpatialPoint> thinnestDirectionsOfPlane(const std::vector<SpatialPoint>& points);

/// Centres in the plane z = 0 of the largest circles that hold no point, that the points on them surround and that hold
/// `middle` inside, if there are such. The hull of the points (x, y, x² + y²) has the Delaunay triangles as its lower
/// facets (Brown1979).
std::vector<SpatialPoint> inscribedCenters(const std::vector<SpatialPoint>& points, const SpatialPoint& middle);

}  // namespace ormix::detail
