#include <ORMIXGeometry/Entity/2d/Shape/Shape2d.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Region/RegionRings.h>
#include <ORMIXGeometry/Tools/Skeleton/ComputeSkeleton.h>
#include <ORMIXGeometry/Tools/Skeleton/PruneSkeleton.h>

#include <utility>

namespace ormix::geom {

namespace {

BoolResult skeletonOf(const detail::RegionRings& region, const SkeletonOptions& options, Skeleton2d& skeleton,
                      SkeletonReport* report) {
  if (!(options.pruning >= 0)) return failure("The threshold of pruning is not a number of at least 0");
  const std::vector<RingView> views = region.views();
  std::vector<BoundaryRing> rings;
  rings.reserve(views.size());
  for (std::size_t r = 0; r < views.size(); ++r) rings.push_back({views[r], region.rings[r].isHole});
  MedialAxis axis;
  const BoolResult found = medialAxis(rings, options.axis, axis, report);
  if (!found) return failure("Failed to compute the skeleton: " + found.getMessage());
  skeleton = options.pruning > 0 ? pruneSkeleton(Skeleton2d(axis), options.pruning) : Skeleton2d(axis);
  return true;
}

template <class Region>
Skeleton2d skeletonOrThrow(const Region& region, const SkeletonOptions& options, SkeletonReport* report,
                           const char* function) {
  Skeleton2d skeleton;
  const BoolResult found = computeSkeleton(region, options, skeleton, report);
  if (!found) logAndThrow(found.getMessage(), function, __FILE__, __LINE__);
  return skeleton;
}

}  // namespace

BoolResult computeSkeleton(const RowIntersections& pixels, const SkeletonOptions& options, Skeleton2d& skeleton,
                           SkeletonReport* report) {
  return skeletonOf(detail::ringsOf(detail::traceRings(pixels, options.connectivity), PixelSpacing()), options,
                    skeleton, report);
}

BoolResult computeSkeleton(const BaseGeometryEntity2d& region, const SkeletonOptions& options, Skeleton2d& skeleton,
                           SkeletonReport* report) {
  const auto* shape = dynamic_cast<const Shape2d*>(&region);
  if (shape && shape->getPolygonWithHolesColl().empty())
    return computeSkeleton(shape->getRowIntersections(), options, skeleton, report);
  const std::optional<detail::RegionRings> rings = detail::ringsOf(region, PixelSpacing());
  if (!rings) return failure("Failed to compute the skeleton: " + region.getClassName() + " bounds no polygon");
  return skeletonOf(*rings, options, skeleton, report);
}

Skeleton2d computeSkeleton(const BaseGeometryEntity2d& region, const SkeletonOptions& options, SkeletonReport* report) {
  return skeletonOrThrow(region, options, report, __func__);
}

Skeleton2d computeSkeleton(const RowIntersections& pixels, const SkeletonOptions& options, SkeletonReport* report) {
  return skeletonOrThrow(pixels, options, report, __func__);
}

}  // namespace ormix::geom
