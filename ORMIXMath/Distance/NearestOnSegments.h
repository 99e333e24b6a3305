#pragma once

#include <ORMIXMath/Distance/NearestPair.h>
#include <ORMIXMath/Distance/PlanarSegment.h>
#include <ORMIXMath/Distance/SpatialSegment.h>
#include <ORMIXMath/Export.h>

/// \file
/// The distances of points and closed segments with the points where they are taken, as values. They are those of
/// pointSegmentDistance() and segmentsDistance(), which say how exact they are: exactly 0 where the two have a point in
/// common, coordinates up to the largest finite number, NaN when a coordinate is not finite. Constant time, no
/// allocation.

namespace ormix {

/// Of a point and a segment: the point itself and the segment's nearest one.
/// @{
ORMIX_MATH_API PlanarNearestPair nearestOnSegments(const PlanarPoint& a, const PlanarSegment& b);
ORMIX_MATH_API SpatialNearestPair nearestOnSegments(const SpatialPoint& a, const SpatialSegment& b);
/// @}

/// Of two segments.
/// @{
ORMIX_MATH_API PlanarNearestPair nearestOnSegments(const PlanarSegment& a, const PlanarSegment& b);
ORMIX_MATH_API SpatialNearestPair nearestOnSegments(const SpatialSegment& a, const SpatialSegment& b);
/// @}

}  // namespace ormix
