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

// Squares of lengths in this range, and products of such lengths, neither overflow nor lose digits.
constexpr omReal64 s_smallestLength = 0x1p-100;
constexpr omReal64 s_smallestSquare = 0x1p-200;
constexpr omReal64 s_largestSquare = 0x1p+400;

// Two numbers in one register, the coordinates of a point or others.
using Lanes [[gnu::vector_size(16)]] = omReal64;

/// The sums of the lanes of each.
Lanes sumsOf(const Lanes& a, const Lanes& b) { return Lanes{a[0], b[0]} + Lanes{a[1], b[1]}; }

/// unscaledDistance() for ordinary lengths, the same operations in the same order; false, with nothing changed, where a
/// decision is near: a segment or a distance close to zero, a point on the line of the segment to rounding, a foot at
/// the farther end, a coordinate that is not finite.
///
/// Neither which end is the nearer one can be foreseen nor whether it is the nearest point: all is computed, and then
/// chosen without a branch, which takes less than half the time. In vectors, since of numbers compilers make branches.
bool ordinaryDistance(const PlanarPoint& point, const PlanarSegment& segment, PlanarPoint& nearest,
                      omReal64& distance) {
  const Lanes p{point.x, point.y};
  const Lanes p0{segment.p0.x, segment.p0.y};
  const Lanes p1{segment.p1.x, segment.p1.y};
  const Lanes from0 = p - p0;
  const Lanes from1 = p - p1;
  // The frame stands at the nearer end.
  const Lanes squares = sumsOf(from0 * from0, from1 * from1);
  const auto isSwapped = Lanes{squares[1], squares[1]} < Lanes{squares[0], squares[0]};
  const Lanes toPoint = isSwapped ? from1 : from0;
  const Lanes origin = isSwapped ? p1 : p0;
  const Lanes across = p1 - p0;
  const omReal64 size = std::max(std::abs(across[0]), std::abs(across[1]));
  const Lanes forth = across / size;
  const Lanes direction = isSwapped ? Lanes{} - forth : forth;
  const Lanes sums = sumsOf(direction * direction, direction * toPoint);
  const omReal64 along = sums[1];
  const omReal64 toEnd = (squares < Lanes{squares[1], squares[0]} ? squares : Lanes{squares[1], squares[0]})[0];
  const Lanes products = direction * Lanes{toPoint[1], toPoint[0]};
  const omReal64 cross = std::abs(products[0] - products[1]);
  // The end is nearest where the foot is not inside. Lanes: the foot's place on the segment; the distance.
  const auto isInside = Lanes{along, along} > Lanes{};
  const omReal64 root = std::sqrt((isInside ? sums : Lanes{toEnd, toEnd})[0]);
  const Lanes found = isInside ? Lanes{along, cross} / Lanes{sums[0], root} : Lanes{0, root};

  const bool isOrdinary = bool(size >= s_smallestLength) & bool(toEnd >= s_smallestSquare) &
                          bool(size + toEnd + sums[0] <= s_largestSquare) & bool(found[0] < size);
  const bool isSure = bool(cross > s_crossBound * (std::abs(products[0]) + std::abs(products[1]))) | !bool(along > 0);
  if (!(isOrdinary & isSure)) return false;
  const Lanes foot = isInside ? origin + found[0] * direction : origin;
  const Lanes lower = p0 < p1 ? p0 : p1;
  const Lanes upper = p1 < p0 ? p0 : p1;
  const Lanes bounded = upper < foot ? upper : foot;
  const Lanes clamped = bounded < lower ? lower : bounded;
  nearest = {clamped[0], clamped[1]};
  distance = found[1];
  return true;
}

omReal64 square(const PlanarPoint& vector) { return vector.x * vector.x + vector.y * vector.y; }

/// The distance for coordinates that need no scaling.
omReal64 unscaledDistance(const PlanarPoint& point, const PlanarSegment& segment, PlanarPoint& nearest) {
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

/// The distance for coordinates of any size.
[[gnu::noinline]] omReal64 carefulDistance(const PlanarPoint& point, const PlanarSegment& segment,
                                           PlanarPoint& nearest) {
  const omReal64 scale = safeScale(point, segment);
  if (scale == 1) return unscaledDistance(point, segment, nearest);
  const omReal64 distance = unscaledDistance(point * scale, segment * scale, nearest);
  nearest = nearest / scale;
  return distance / scale;
}

}  // namespace

omReal64 pointSegmentDistance(const PlanarPoint& point, const PlanarSegment& segment, PlanarPoint& nearest) {
  omReal64 distance;
  return ordinaryDistance(point, segment, nearest, distance) ? distance : carefulDistance(point, segment, nearest);
}

}  // namespace ormix
