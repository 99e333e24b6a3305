#include <ORMIXGeometry/Entity/2d/Shape/Shape2d.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Region/RegionRings.h>
#include <ORMIXGeometry/Tools/Skeleton/ComputeSkeleton.h>
#include <ORMIXGeometry/Tools/Skeleton/PruneSkeleton.h>

#include <algorithm>
#include <utility>

namespace ormix::geom {

namespace {

/// Appends the axis of a polygon whose first ring has this index among all rings.
void append(const MedialAxis& axis, omUInt32 firstRingIdx, MedialAxis& all) {
  const auto firstVertex = static_cast<omUInt32>(all.vertices.size()),
             firstPart = static_cast<omUInt32>(all.parts.size());
  all.vertices.insert(all.vertices.end(), axis.vertices.begin(), axis.vertices.end());
  for (AxisPart part : axis.parts) {
    part.ringIdx += firstRingIdx;
    all.parts.push_back(part);
  }
  for (AxisEdge edge : axis.edges) {
    for (omUInt32& vertex : edge.vertices) vertex += firstVertex;
    for (omUInt32& part : edge.parts) part += firstPart;
    all.edges.push_back(edge);
  }
}
void append(const SkeletonReport& report, omUInt32 firstRingIdx, SkeletonReport& all) {
  for (const auto places : {&SkeletonReport::mergedPoints, &SkeletonReport::lostEdges})
    for (const BoundaryPlace& place : report.*places)
      (all.*places).push_back({place.ringIdx + firstRingIdx, place.pointIdx});
  for (const auto sum : {&SkeletonReport::nbMovedPoints, &SkeletonReport::nbSplitEdges, &SkeletonReport::nbMergedEdges,
                         &SkeletonReport::nbComponents, &SkeletonReport::nbCycles})
    all.*sum += report.*sum;
  for (const auto greatest : {&SkeletonReport::gridUnit, &SkeletonReport::greatestMove, &SkeletonReport::areaError})
    all.*greatest = std::max(all.*greatest, report.*greatest);
  all.nbAttempts = std::max(all.nbAttempts, report.nbAttempts);
}

/// Polygon by polygon: each has a grid of its own, and the memory of a diagram is that of one polygon.
BoolResult skeletonOf(const detail::RegionRings& region, const SkeletonOptions& options, Skeleton2d& skeleton,
                      SkeletonReport* report) {
  if (!(options.pruning >= 0)) return failure("The threshold of pruning is not a number of at least 0");
  const std::vector<RingView> views = region.views();
  SkeletonReport all;
  MedialAxis axis;
  std::vector<BoundaryRing> rings;
  BoolResult found = failure("Failed to compute the skeleton: The rings bound no area");
  for (std::size_t first = 0, last = 0; first < views.size(); first = last) {
    rings.clear();
    for (; last < views.size() && (last == first || !region.rings[last].isOutermost); ++last)
      rings.push_back({views[last], region.rings[last].isHole});
    MedialAxis ofPolygon;
    SkeletonReport done;
    found = medialAxis(rings, options.axis, ofPolygon, &done);
    append(done, static_cast<omUInt32>(first), all);
    if (!found) {
      const std::string from = first > 0 ? "from ring " + std::to_string(first) + " on: " : "";
      found = failure("Failed to compute the skeleton: " + from + found.getMessage());
      break;
    }
    append(ofPolygon, static_cast<omUInt32>(first), axis);
  }
  if (report) *report = std::move(all);
  if (found) skeleton = options.pruning > 0 ? pruneSkeleton(Skeleton2d(axis), options.pruning) : Skeleton2d(axis);
  return found;
}

/// The rings of contours polygon by polygon: contours are in order of their first corners, so that the holes of one
/// polygon may stand behind another polygon.
detail::RegionRings ringsByPolygon(const detail::ContourRings& contours) {
  detail::RegionRings region = detail::ringsOf(contours, PixelSpacing());
  std::vector<std::pair<std::size_t, detail::RegionRings::Ring>> rings;  // with the outermost ring around each
  rings.reserve(region.rings.size());
  for (std::size_t r = 0; r < region.rings.size(); ++r) {
    const std::size_t parent = contours.rings[r].parent;
    rings.emplace_back(region.rings[r].isOutermost ? r : rings[parent].first, region.rings[r]);
  }
  std::stable_sort(rings.begin(), rings.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  for (std::size_t r = 0; r < rings.size(); ++r) region.rings[r] = rings[r].second;
  return region;
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
  return skeletonOf(ringsByPolygon(detail::traceRings(pixels, options.connectivity)), options, skeleton, report);
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
