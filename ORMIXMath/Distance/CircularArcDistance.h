#pragma once

#include <ORMIXMath/Distance/NearestPair.h>
#include <ORMIXMath/Distance/PlanarSegment.h>
#include <ORMIXMath/Shape/CircularArc.h>

/// \file
/// Distances of arcs of circles. Constant time, no allocation; coordinates and radii should be within 2^-400 and 2^500
/// in size. Errors are some units in the last place of the largest coordinate and radius.

namespace ormix {

/// The nearest points of an arc and a segment, or a point as one with equal ends: a common point, the foot of the
/// centre on the segment with the point of the arc in that direction, or an end of one of them with its nearest point
/// on the other. Exactly 0 where they cross.
ORMIX_MATH_API PlanarNearestPair nearestPair(const CircularArc& arc, const PlanarSegment& segment);

/// The nearest points of two arcs: a common point of their circles, points on the line through both centres, or an end
/// of one of them with its nearest point on the other. Exactly 0 where they cross.
ORMIX_MATH_API PlanarNearestPair nearestPair(const CircularArc& a, const CircularArc& b);

}  // namespace ormix
