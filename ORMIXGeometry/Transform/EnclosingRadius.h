#pragma once

#include <ORMIXUtil/ScalarTypes.h>

/// \file
/// The radius of a circle or sphere around points; not installed.

namespace ormix::geom::detail {

/// The radius for the distance() of points, from one that holds for the root of the sum of squares: they differ, by a
/// few units in the last place, only where squares overflow or lose digits (euclideanNorm()).
inline omReal64 enclosingRadius(omReal64 radius) {
  const bool isSafe = radius == 0 || (radius > 1e-139 && radius < 1e149);
  return isSafe ? radius : radius * (1 + 0x1p-50);
}

}  // namespace ormix::geom::detail
