#pragma once

#include <ORMIXMath/Distance/ConvexArc.h>
#include <ORMIXMath/Distance/PlanarSegment.h>

/// \file
/// Crossings of smooth convex curves; not installed. Where two are as near as rounding errors, either answer is given.

namespace ormix::detail {

/// A common point of an arc, without the area of an ellipse, and a segment.
/// \return false, `common` of no meaning, where there is none
bool findCrossing(const ConvexArc& arc, const PlanarSegment& segment, PlanarPoint& common);

/// A common point of two arcs.
/// \return false, `common` of no meaning, where there is none
bool findCrossing(const ConvexArc& a, const ConvexArc& b, PlanarPoint& common);

}  // namespace ormix::detail
