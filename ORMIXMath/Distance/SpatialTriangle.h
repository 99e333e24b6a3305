#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>

namespace ormix {

/// The closed triangle with the corners p0, p1 and p2: all points between them. A segment when they are collinear, a
/// single point when they are equal.
struct SpatialTriangle {
  SpatialPoint p0;  ///< First corner.
  SpatialPoint p1;  ///< Second corner.
  SpatialPoint p2;  ///< Third corner.
};

}  // namespace ormix
