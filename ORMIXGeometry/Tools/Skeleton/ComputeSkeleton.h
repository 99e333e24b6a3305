#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/MaskView.h>
#include <ORMIXGeometry/Entity/2d/Shape/PixelConnectivity.h>
#include <ORMIXGeometry/Entity/2d/Skeleton/Skeleton2d.h>

/// \file
/// The skeleton of a region: a polygon, with its holes where it has some, a box, a square, a rectangle, a shape or a
/// set of pixels. Indices of rings are those in order of the polygons, each before its holes. Of a shape its polygons
/// count, and where it has none, the boundary of its pixels along their edges, so that nothing depends on a raster.
///
/// The polygons of a shape are taken one by one, and are expected not to overlap. The result is exact for the boundary
/// after its vertices are rounded to a grid of at least 2^30 points across, which moves neither pixels nor integers;
/// the report says how far vertices were moved, see medialAxis(). About 30 µs and 1 KB a vertex; O(n log n).

namespace ormix::geom {

/// How computeSkeleton() works.
struct SkeletonOptions {
  MedialAxisOptions axis;  ///< see there
  /// What the edges are pruned to, see pruneSkeleton(); 0 leaves all of them.
  omReal64 pruning = 0;
  /// Whether pixels that touch at a corner only are one region, for pixels and for shapes without polygons.
  ePixelConnectivity connectivity = ePC_8;
};

/// What computeSkeleton() found and did: the sums over all polygons, the greatest grid unit, move, area error and
/// number of attempts, with the indices of rings among those of all polygons.
using SkeletonReport = MedialAxisReport;

/// The skeleton of a region.
/// \param report where given, replaced
/// \throw ORMIXGeometryException, logged first, which says what is wrong and where: an entity of another class, rings
/// that cross themselves or each other, bound no area or are not finite, and a diagram that did not pass its checks
/// @{
ORMIX_GEOMETRY_API Skeleton2d computeSkeleton(const BaseGeometryEntity2d& region, const SkeletonOptions& options = {},
                                              SkeletonReport* report = nullptr);
ORMIX_GEOMETRY_API Skeleton2d computeSkeleton(const RowIntersections& pixels, const SkeletonOptions& options = {},
                                              SkeletonReport* report = nullptr);
/// @}

/// The same without an exception.
/// \param skeleton replaced on success, unchanged otherwise
/// @{
ORMIX_GEOMETRY_API BoolResult computeSkeleton(const BaseGeometryEntity2d& region, const SkeletonOptions& options,
                                              Skeleton2d& skeleton, SkeletonReport* report = nullptr);
ORMIX_GEOMETRY_API BoolResult computeSkeleton(const RowIntersections& pixels, const SkeletonOptions& options,
                                              Skeleton2d& skeleton, SkeletonReport* report = nullptr);
/// @}

/// The skeleton of the pixels of a mask that are not 0.
/// \throw ORMIXGeometryException, logged first, as above and for a view that is not valid
template <class T>
Skeleton2d computeSkeleton(const MaskView<T>& mask, const SkeletonOptions& options = {},
                           SkeletonReport* report = nullptr) {
  return computeSkeleton(toRowIntersections(mask), options, report);
}

}  // namespace ormix::geom
