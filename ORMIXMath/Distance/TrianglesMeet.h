#pragma once

#include <ORMIXMath/Distance/SpatialSegment.h>
#include <ORMIXMath/Distance/SpatialTriangle.h>
#include <ORMIXMath/Export.h>

#include <array>

/// \file
/// Whether points, segments and triangles of space have points in common: decided without rounding, by orientation3d()
/// and orientation(), for all finite coordinates. All of them are closed: to touch is to meet. Segments of zero length,
/// triangles with collinear or equal corners and coplanar pairs are decided as the sets of points that they are. False
/// when a coordinate is not finite. Constant time, no allocation.

namespace ormix {

/// Whether the corners are collinear or equal, so that the triangle has no plane.
ORMIX_MATH_API bool isDegenerate(const SpatialTriangle& triangle);

/// Whether a point lies on a segment.
ORMIX_MATH_API bool pointMeetsSegment(const SpatialPoint& point, const SpatialSegment& segment);

/// Whether two segments meet.
ORMIX_MATH_API bool segmentsMeet(const SpatialSegment& first, const SpatialSegment& second);

/// Whether a point lies on a triangle.
ORMIX_MATH_API bool pointMeetsTriangle(const SpatialPoint& point, const SpatialTriangle& triangle);

/// Whether a segment meets a triangle.
ORMIX_MATH_API bool segmentMeetsTriangle(const SpatialSegment& segment, const SpatialTriangle& triangle);

/// Whether two triangles meet. Two that are not coplanar cut each other's planes in intervals of one line, whose ends
/// two determinants compare (GuigueDevillers2003).
ORMIX_MATH_API bool trianglesMeet(const SpatialTriangle& a, const SpatialTriangle& b);

/// The corners p0, p1 and p2 of a triangle as numbers of the vertices of a mesh.
using TriangleCorners = std::array<omUInt32, 3>;

/// Whether two triangles of a mesh meet in more than the corner or the edge that they share: what a surface does where
/// it intersects itself. Corners are shared where their numbers are equal, whose points must then be equal too; other
/// corners at the same place are met like any point. Triangles without a common corner do as in trianglesMeet();
/// coplanar ones on the same side of a common edge overlap; two with the same three corners always do.
ORMIX_MATH_API bool trianglesCrossBeyondShared(const SpatialTriangle& a, const TriangleCorners& cornersOfA,
                                               const SpatialTriangle& b, const TriangleCorners& cornersOfB);

}  // namespace ormix
