#pragma once

#include <ORMIXMath/Distance/NearestPair.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <utility>

namespace ormix::geom {

/// The distance of two entities and a point of each at which it is taken. Where the entities have a point in common,
/// the distance is exactly 0 and both points are the same.
/// \tparam Point Point2dData<omReal64> or Point3dData<omReal64>
template <class Point>
struct NearestPoints {
  omReal64 distance;  ///< least distance, at least 0
  Point onA;          ///< a nearest point of the first entity
  Point onB;          ///< a nearest point of the second entity

  /// The same with the entities exchanged.
  NearestPoints exchanged() const { return {distance, onB, onA}; }
};

}  // namespace ormix::geom
