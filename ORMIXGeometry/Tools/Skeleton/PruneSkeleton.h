#pragma once

#include <ORMIXGeometry/Entity/2d/Skeleton/Skeleton2d.h>

#include <vector>

/// \file
/// Pruning of skeletons by erosion thickness (Liu2011): a fire starts at each end point at the time of its radius, runs
/// along the edges with speed 1, and passes a vertex when all edges but one have burnt. The erosion thickness of a
/// place is the time when the fire passes less the radius there: how far the branch behind it reaches beyond the circle
/// around the place. Unlike the length of a branch it hardly grows with the width of the region: a step of one pixel in
/// the straight boundary of a mask has ln(8 R) / 4 pixels where the region is 2 R wide, 1.5 at a width of 100 pixels
/// and 2.3 at 2,000.

namespace ormix::geom {

/// What pruneSkeleton() did.
struct PruningReport {
  std::size_t nbPrunedEdges = 0;  ///< edges that were removed
  /// No point of a removed edge, nor of the circles around its points, is farther from the circles that stay. At most
  /// the threshold.
  omReal64 distanceBound = 0;
};

/// The greatest erosion thickness on each edge, in the unit of the region; infinite on cycles and between them, which
/// never burn. It never falls on the way of the fire. O(n log n).
ORMIX_GEOMETRY_API std::vector<omReal64> erosionThickness(const Skeleton2d& skeleton);

/// The skeleton without the edges whose erosion thickness is at most the threshold. Cycles stay, and of each component
/// at least a vertex; components stay connected. Every removed point lies within the threshold of a point that stays:
/// the fire that came to a vertex q from a point c took d + R(c) at least, where d is their distance, and this is at
/// most R(q) plus the threshold; so the circle around c lies in the one around q, widened by the threshold.
/// \param threshold in the unit of the region, at least 0
/// \throw ORMIXGeometryException, logged first, for a threshold that is negative or NaN
ORMIX_GEOMETRY_API Skeleton2d pruneSkeleton(const Skeleton2d& skeleton, omReal64 threshold,
                                            PruningReport* report = nullptr);

}  // namespace ormix::geom
