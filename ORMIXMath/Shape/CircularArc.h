#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Export.h>

/// \file
/// Arcs of circles in the plane. Constant time, no allocation; errors are some units in the last place of the largest
/// coordinate.

namespace ormix {

/// The points center + radius (cos t, sin t) for t from `start` through `sweep`, in radians.
struct CircularArc {
  PlanarPoint center;
  omReal64 radius;  ///< at least 0
  omReal64 start;   ///< any angle
  omReal64 sweep;   ///< in [−2π, 2π], positive counter-clockwise
};

/// Whether the sweep is a full turn.
ORMIX_MATH_API bool isFull(const CircularArc& arc);
/// The point of the circle at an angle.
ORMIX_MATH_API PlanarPoint pointAt(const CircularArc& arc, omReal64 angle);
/// Whether the arc passes through a direction from the centre, of any length; one of length 0 is the angle 0.
ORMIX_MATH_API bool hasDirection(const CircularArc& arc, const PlanarPoint& direction);
/// The nearest point of the arc; of the centre the start.
ORMIX_MATH_API PlanarPoint nearestOn(const CircularArc& arc, const PlanarPoint& point);

}  // namespace ormix
