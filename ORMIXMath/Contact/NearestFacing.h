#pragma once

#include <ORMIXMath/Contact/FacingIndex.h>
#include <ORMIXMath/Contact/RegionLengths.h>

#include <vector>

/// \file
/// Which of several regions is nearest to each part of a boundary; not installed.

namespace ormix::detail {

/// Gives each part of each edge within the gap of edges of other regions that face it to the nearest of these regions,
/// of equally near ones to that with the lowest number; what is left is left to nobody. About O(n log n); an edge takes
/// time for all edges that face it and are no farther than the farthest part of it is from its neighbour.
/// \param edges of all regions, those of one after the other
/// \param regions the region of each edge
ORMIX_MATH_API void divideToNearest(std::vector<BoundaryEdge> edges, const std::vector<omUInt32>& regions, omReal64 gap,
                                    RegionLengths& lengths);

}  // namespace ormix::detail
