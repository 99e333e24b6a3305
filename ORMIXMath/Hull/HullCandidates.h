#pragma once

#include <ORMIXMath/Distance/SpatialSegment.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>
#include <vector>

/// \file
/// Dropping points that are plainly inside before their hull is built; not installed.

namespace ormix::detail {

/// Smallest box around points, with sides along the axes.
struct SpatialBox {
  SpatialPoint low;
  SpatialPoint high;
};

/// Indices of points among which are all vertices of the convex hull: the others are inside the hull of a few hundred
/// of the points, proven with bounds of all rounding errors. Points in similar directions from the middle come
/// together, as then what is handled together lies together in memory. All points in their order where there are few,
/// where the box is flat, or where nothing can be proven. `box` is that of the points, which are finite. O(nbPoints).
template <class T>
std::vector<omUInt32> hullCandidates(const T* xyz, std::size_t nbPoints, const SpatialBox& box);

// clang-format off
extern template std::vector<omUInt32> hullCandidates(const omInt32*, std::size_t, const SpatialBox&);
extern template std::vector<omUInt32> hullCandidates(const omUInt32*, std::size_t, const SpatialBox&);
extern template std::vector<omUInt32> hullCandidates(const omReal32*, std::size_t, const SpatialBox&);
extern template std::vector<omUInt32> hullCandidates(const omReal64*, std::size_t, const SpatialBox&);
// clang-format on

}  // namespace ormix::detail
