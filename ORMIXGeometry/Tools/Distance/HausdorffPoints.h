#pragma once

#include <ORMIXUtil/ScalarTypes.h>

namespace ormix::geom {

/// A Hausdorff distance of two entities, a and b, and the points where it is taken.
/// \tparam Point Point2dData<omReal64> or Point3dData<omReal64>
template <class Point>
struct HausdorffPoints {
  omReal64 distance;    ///< at least 0
  Point onA;            ///< the farthest point of a, or of a the nearest one to the farthest of b
  Point onB;            ///< the nearest point of b to that, or the farthest one of b
  bool isFromA = true;  ///< whether the point on a is the one that is farthest from the other entity
  omReal64 excess = 0;  ///< the distance may be larger by this much
};

}  // namespace ormix::geom
