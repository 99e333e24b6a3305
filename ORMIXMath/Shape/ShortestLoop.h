#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Export.h>

#include <vector>

namespace ormix {

/// A segment that a path crosses, from its left side as seen along the path to its right side.
struct PathGate {
  PlanarPoint left;   ///< end on the left
  PlanarPoint right;  ///< end on the right
};

/// The length of the shortest closed path that crosses the gates in their order and runs counter-clockwise, the left
/// ends inside it or on it: that of a thread pulled tight in the corridor that the gates make. From one gate to the
/// next the corridor is the quadrangle between both. Lengths along x and y are multiplied by `scaleX` and `scaleY`.
///
/// Each gate is added once to the funnel between the paths to its ends (LeePreparata1984), and leaves it at most once:
/// linear in the gates. The thread turns where exact orientations say so. Coordinates are finite; 0 without gates.
ORMIX_MATH_API omReal64 shortestLoopLength(const std::vector<PathGate>& gates, omReal64 scaleX = 1,
                                           omReal64 scaleY = 1);

}  // namespace ormix
