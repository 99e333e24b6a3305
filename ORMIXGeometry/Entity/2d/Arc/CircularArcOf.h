#pragma once

#include <ORMIXGeometry/Entity/2d/Arc/Arc2d.h>
#include <ORMIXMath/Shape/CircularArc.h>

#include <cmath>

/// \file
/// Arcs as what they are to computations; not installed.

namespace ormix::geom::detail {

/// The same set of points: with a negative radius, that of its absolute value.
template <class T>
CircularArc circularArcOf(const Arc2d<T>& arc) {
  return {toPlanarPoint(arc.centerX(), arc.centerY()), std::abs(static_cast<omReal64>(arc.getRadius())),
          arc.getStartAngle(), arc.getSweep()};
}

}  // namespace ormix::geom::detail
