#pragma once

#include <ORMIXGeometry/Entity/2d/Circle/Circle2d.h>
#include <ORMIXGeometry/Tools/Skeleton/SkeletonPaths.h>

#include <vector>

/// \file
/// Widths of a region along its skeleton: the diameters of the circles around its points that touch the boundary. The
/// distance of other points to the boundary is that of nearestBoundaryPoint().

namespace ormix::geom {

/// Widths along edges, weighted by length.
struct SkeletonWidths {
  omReal64 mean = 0;      ///< integral of the width over the length, divided by it; error below 1e-6 of it
  omReal64 least = 0;     ///< exact, also between vertices
  omReal64 greatest = 0;  ///< exact; at a vertex
  /// The length on which the width lies in each of equal intervals from `least` to `greatest`.
  std::vector<omReal64> histogram;
};
/// Of a path, or of all edges. All 0 without an edge.
/// \param nbBins number of intervals of the histogram; none for 0
/// @{
ORMIX_GEOMETRY_API SkeletonWidths widthsAlong(const Skeleton2d& skeleton, const SkeletonPath& path,
                                              std::size_t nbBins = 0);
ORMIX_GEOMETRY_API SkeletonWidths widthsAlong(const Skeleton2d& skeleton, std::size_t nbBins = 0);
/// @}

/// Points at equal distances along a path, at most `step` apart, its ends included, each with the circle around it that
/// touches the boundary. One point for a path of length 0.
/// \param step a distance above 0, in the unit of the region
/// \throw ORMIXGeometryException, logged first, for another step, and where there would be more than 2^32 points
ORMIX_GEOMETRY_API std::vector<Circle2d<omReal64>> samplePath(const Skeleton2d& skeleton, const SkeletonPath& path,
                                                              omReal64 step);

}  // namespace ormix::geom
