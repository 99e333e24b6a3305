#include <ORMIXMath/Distance/Orientation.h>
#include <ORMIXMath/Distance/PlanarFrame.h>
#include <ORMIXMath/Distance/PointSegmentDistance.h>

#include <algorithm>
#include <cmath>

namespace ormix {

namespace {

using namespace detail;

// Share of its products' magnitudes above which a rounded cross product of rounded differences surely has the right
// sign; six roundings of 2^-53 each go into a product, and this is more than twice their sum.
constexpr omReal64 s_crossBound = 0x1p-49;

// Between these the sum of the sizes of six coordinates needs no scaling, as safeScale() decides it; one that is not
// finite has no such sum.
constexpr omReal64 s_smallestOrdinary = 0x1p-397;
constexpr omReal64 s_largestOrdinary = 0x1p+500;

omReal64 square(const PlanarPoint& vector) { return vector.x * vector.x + vector.y * vector.y; }

omReal64 sumOfSizes(const PlanarPoint& point) { return std::abs(point.x) + std::abs(point.y); }

/// The distance for coordinates that need no scaling.
omReal64 scaledPointSegmentDistance(const PlanarPoint& point, const PlanarSegment& segment, PlanarPoint& nearest) {
  // The frame stands at the nearer end: what is rounded is then as small as the configuration allows.
  // Which one it is cannot be foreseen: looked up, not branched upon.
  const PlanarPoint* const ends[] = {&segment.p0, &segment.p1};
  const bool isSwapped = square(point - segment.p1) < square(point - segment.p0);
  const PlanarPoint origin = *ends[isSwapped ? 1 : 0];
  const PlanarPoint other = *ends[isSwapped ? 0 : 1];
  const PlanarPoint toPoint = point - origin;
  const PlanarPoint toOther = other - origin;

  // Dividing by the larger component first keeps squares of the shortest segments from underflowing.
  const omReal64 size = std::max(std::abs(toOther.x), std::abs(toOther.y));
  const PlanarPoint direction = size > 0 ? toOther / size : PlanarPoint{0, 0};
  const omReal64 along = direction.x * toPoint.x + direction.y * toPoint.y;
  if (!(along > 0)) {
    nearest = origin;
    return length(toPoint);
  }
  // The squares of the two distances may round to the same number, and the nearer end then be the other one.
  const omReal64 step = along / square(direction);
  if (!(step < size)) {
    nearest = other;
    return length(point - other);
  }

  const omReal64 left = direction.x * toPoint.y;
  const omReal64 right = direction.y * toPoint.x;
  omReal64 cross = left - right;
  // Only the exact determinant can tell a point on the segment from one beside it.
  if (std::abs(cross) <= s_crossBound * (std::abs(left) + std::abs(right))) {
    cross = orientationDeterminant(origin, other, point) / size;
  }
  const PlanarPoint foot{origin.x + step * direction.x, origin.y + step * direction.y};
  nearest = clampToBox(cross == 0 ? point : foot, segment);
  return std::abs(cross) / std::sqrt(square(direction));
}

}  // namespace

omReal64 pointSegmentDistance(const PlanarPoint& point, const PlanarSegment& segment, PlanarPoint& nearest) {
  const omReal64 sizes = sumOfSizes(point) + (sumOfSizes(segment.p0) + sumOfSizes(segment.p1));
  if (sizes >= s_smallestOrdinary && sizes <= s_largestOrdinary)
    return scaledPointSegmentDistance(point, segment, nearest);
  const omReal64 scale = safeScale(point, segment);
  const omReal64 distance = scaledPointSegmentDistance(point * scale, segment * scale, nearest);
  nearest = nearest / scale;
  return distance / scale;
}

}  // namespace ormix
