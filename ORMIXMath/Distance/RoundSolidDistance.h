#pragma once

#include <ORMIXMath/Distance/EllipsoidDistance.h>
#include <ORMIXMath/Distance/NearestPair.h>
#include <ORMIXMath/Distance/SpatialSegment.h>
#include <ORMIXMath/Distance/SpatialTriangle.h>
#include <ORMIXMath/Export.h>
#include <ORMIXMath/Shape/RoundSolid.h>

/// \file
/// Distances of frustums and tori, filled or of their surfaces, with the nearest points. 0 where they have a point in
/// common, which both points then are, up to rounding. Sizes and coordinates between 2^-200 and 2^200 in size; callers
/// scale others. Circles of space are tori with a tube of radius 0.

namespace ormix {

/// From a segment, or a point (two equal ends), to a round solid, with its inside or to its surface only: to some units
/// in the last place of the largest coordinate. Along a segment the distance from a frustum is convex outside and
/// concave inside; that from the circle of a torus has its extremes at the roots of a quartic. Constant time, no
/// allocation.
ORMIX_MATH_API SpatialNearestPair segmentRoundNearestPair(const SpatialSegment& segment, const RoundSolid& solid,
                                                          bool isFilled);

/// From a triangle, as from a segment: the extremes are on edges or, beside them, where the frustum or the circle of
/// the torus is outermost towards the plane. Corners may be equal. Constant time, no allocation.
ORMIX_MATH_API SpatialNearestPair triangleRoundNearestPair(const SpatialTriangle& triangle, const RoundSolid& solid,
                                                           bool isFilled);

/// From an ellipsoid to a round solid.
///
/// Frustums that are apart from it, to 1e-12 of the sizes: both are convex, and a plane that separates them by the
/// distance proves it (Gilbert1988). Tori by a search over the angle of their circle, certain to 1e-12 of the sizes;
/// where the distance hardly changes along the circle, as of nearly coaxial ones, to 1e-9 of its radius. Surfaces in
/// one another by the same search over rims and normals; a surface in the tube of a torus by one over that surface,
/// certain to 1e-9 of the tube. The distance is 0 where the surfaces cross. Searches end at 2^16 cells with the best
/// pair seen, which is not certain then: of surfaces in a tube that are nearly parallel to it all over. Some
/// microseconds, up to a few tenths of a second at that end.
ORMIX_MATH_API SpatialNearestPair ellipsoidRoundNearestPair(const SpatialEllipsoid& ellipsoid, const RoundSolid& solid,
                                                            bool isFilled);

/// From one round solid to another, as ellipsoidRoundNearestPair().
ORMIX_MATH_API SpatialNearestPair roundsNearestPair(const RoundSolid& a, const RoundSolid& b, bool isFilled);

}  // namespace ormix
