#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>

#include <vector>

/// \file
/// Where the best zones of lines, planes and circles can be, by the convex hull; not installed.
///
/// Points are about 1 in size. The answers are few, the best by all points, and exact to the rounding of the hull's
/// facets: a descent ends the rest. They may be empty where the hull has no area or volume.

namespace ormix::detail {

/// Directions across which points of the plane z = 0 are the thinnest: normals of edges of the convex hull.
std::vector<SpatialPoint> thinnestDirectionsOfPlane(const std::vector<SpatialPoint>& points);

/// Directions across which points of space are the thinnest: normals of a facet, or of two edges that lie opposite
/// (Houle1988).
std::vector<SpatialPoint> thinnestDirectionsOfSpace(const std::vector<SpatialPoint>& points);

/// Centres in the plane z = 0.
struct CircleCandidates {
  std::vector<SpatialPoint> zoneCenters;       ///< about which the farthest and nearest point differ least
  std::vector<SpatialPoint> inscribedCenters;  ///< of the largest empty circles that hold the middle, see below
};

/// The hull of the points (x, y, x² + y²) has the Delaunay triangles of the nearest and of the farthest point as its
/// lower and upper facets (Brown1979), and pairs of parts of it that lie opposite are vertices of both Voronoi diagrams
/// laid over each other. Empty circles are those that the points on them surround and that hold `middle` inside, if
/// there are such.
CircleCandidates circleCandidates(const std::vector<SpatialPoint>& points, const SpatialPoint& middle);

}  // namespace ormix::detail
