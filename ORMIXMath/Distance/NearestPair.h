#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>

/// \file
/// What functions answer that look for the two nearest points of two sets.

namespace ormix {

/// The distance of two sets of points and a point of each at which it is taken. Where the sets have a point in common,
/// the distance is exactly 0 and both points are a common one, up to rounding.
template <class Point>
struct NearestPair {
  omReal64 distance;  ///< Least distance, at least 0.
  Point onA;          ///< A nearest point of the first set.
  Point onB;          ///< A nearest point of the second set.
};

using PlanarNearestPair = NearestPair<PlanarPoint>;    ///< In the plane.
using SpatialNearestPair = NearestPair<SpatialPoint>;  ///< In space.

}  // namespace ormix
