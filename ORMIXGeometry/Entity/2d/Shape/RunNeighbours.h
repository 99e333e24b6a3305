#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/PixelConnectivity.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>

/// \file
/// Which runs of consecutive rows are neighbours; not installed.

namespace ormix::geom::detail {

/// Two runs of consecutive rows have neighbouring pixels if neither is left of the other.
template <ePixelConnectivity Connectivity>
struct RunNeighbours {
  /// Whether all of a, and of its neighbours in the row of b, is left of b.
  static bool isLeftOf(const PixelRun& a, const PixelRun& b) {
    return Connectivity == ePC_4 ? a.end <= b.begin : a.end < b.begin;
  }
};

}  // namespace ormix::geom::detail
