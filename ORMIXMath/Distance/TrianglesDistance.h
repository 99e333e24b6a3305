#pragma once

#include <ORMIXMath/Distance/NearestPair.h>
#include <ORMIXMath/Distance/SpatialSegment.h>
#include <ORMIXMath/Distance/SpatialTriangle.h>
#include <ORMIXMath/Export.h>

#include <limits>

/// \file
/// Distances of points, segments and triangles in space, with the nearest points.
///
/// The distance is exactly 0 where the two meet, as pointMeetsTriangle(), segmentMeetsTriangle() and trianglesMeet()
/// decide it, and only there; both points are then one common point, right to 2^-48 of the largest difference of
/// coordinates. Else it is right to 2^-40 of that difference, however thin the triangles are, and to 2^-40 of itself
/// where it is below that. A nearest point that is a corner is the corner, others lie in the box of their triangle.
/// Triangles may be degenerate. Distance and points are NaN when a coordinate is not finite; the distance is infinite
/// when it exceeds the largest finite number. Which of several equally near pairs is answered is not specified.
/// Constant time, no allocation.

namespace ormix {

/// From a point to a triangle.
ORMIX_MATH_API SpatialNearestPair pointTriangleNearestPair(const SpatialPoint& point, const SpatialTriangle& triangle);

/// From a segment to a triangle.
ORMIX_MATH_API SpatialNearestPair segmentTriangleNearestPair(const SpatialSegment& segment,
                                                             const SpatialTriangle& triangle);

/// From triangle a to triangle b. What is not nearer than the root of `squareBound` may be answered early, with an
/// infinite distance and without points, so that a search pays little for what cannot improve it.
ORMIX_MATH_API SpatialNearestPair
trianglesNearestPair(const SpatialTriangle& a, const SpatialTriangle& b,
                     omReal64 squareBound = std::numeric_limits<omReal64>::infinity());

}  // namespace ormix
