#include <ORMIXMath/Distance/Orientation.h>
#include <ORMIXMath/Distance/PlanarFrame.h>
#include <ORMIXMath/Distance/PointSegmentDistance.h>

#include <algorithm>
#include <cmath>
#include <limits>

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

/// ordinaryDistance() without the nearest point, of two points at a time from a segment of ordinary length, the same
/// operations in the same order.
class OrdinarySegment {
 public:
  explicit OrdinarySegment(const PlanarSegment& segment)
      : _p0(segment.p0),
        _p1(segment.p1),
        _size(std::max(std::abs(_p1.x - _p0.x), std::abs(_p1.y - _p0.y))),
        _forth{(_p1.x - _p0.x) / _size, (_p1.y - _p0.y) / _size},
        _back{0 - _forth.x, 0 - _forth.y},
        _sum(_forth.x * _forth.x + _forth.y * _forth.y),
        _root(std::sqrt(_sum)) {}

  bool isOrdinary() const { return _size >= s_smallestLength && _size + _sum <= s_largestSquare; }

  /// The distances of two points; NaN where ordinaryDistance() may be false.
  Lanes distances(const PlanarPoint& a, const PlanarPoint& b) const {
    const Lanes x{a.x, b.x};
    const Lanes y{a.y, b.y};
    const Lanes x0 = x - _p0.x;
    const Lanes y0 = y - _p0.y;
    const Lanes x1 = x - _p1.x;
    const Lanes y1 = y - _p1.y;
    const Lanes square0 = x0 * x0 + y0 * y0;
    const Lanes square1 = x1 * x1 + y1 * y1;
    const auto isSwapped = square1 < square0;
    const Lanes toEnd = square0 < square1 ? square0 : square1;
    const Lanes toX = isSwapped ? x1 : x0;
    const Lanes toY = isSwapped ? y1 : y0;
    const Lanes directionX = isSwapped ? both(_back.x) : both(_forth.x);
    const Lanes directionY = isSwapped ? both(_back.y) : both(_forth.y);
    const Lanes along = directionX * toX + directionY * toY;
    const Lanes left = directionX * toY;
    const Lanes right = directionY * toX;
    const Lanes cross = magnitudes(left - right);
    const auto isInside = along > 0;
    // A foot that may be rounded to the farther end is left to others, without a division.
    const auto isFootOrdinary = along < _size * _sum * (1 - 0x1p-50);
    const auto isSure = (cross > s_crossBound * (magnitudes(left) + magnitudes(right))) | (along <= 0);
    const auto isOrdinary = (toEnd >= s_smallestSquare) & (toEnd + (_size + _sum) <= s_largestSquare);
    const Lanes toSegment = isInside ? cross / _root : Lanes{std::sqrt(toEnd[0]), std::sqrt(toEnd[1])};
    return isFootOrdinary & isSure & isOrdinary ? toSegment : both(std::numeric_limits<omReal64>::quiet_NaN());
  }

 private:
  static Lanes both(omReal64 number) { return Lanes{number, number}; }
  static Lanes magnitudes(const Lanes& lanes) { return lanes < -lanes ? -lanes : lanes; }

  PlanarPoint _p0;
  PlanarPoint _p1;
  omReal64 _size;
  PlanarPoint _forth;
  PlanarPoint _back;
  omReal64 _sum;   // the square of _forth
  omReal64 _root;  // of _sum
};

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

void pointSegmentDistances(const PlanarPoint* points, std::size_t nbPoints, const PlanarSegment& segment,
                           omReal64* distances) {
  const OrdinarySegment ordinary(segment);
  const std::size_t nbOrdinary = ordinary.isOrdinary() ? nbPoints / 2 * 2 : 0;
  constexpr std::size_t nbBlock = 512;
  for (std::size_t begin = 0; begin < nbPoints; begin += nbBlock) {
    const std::size_t end = std::min(begin + nbBlock, nbPoints);
    for (std::size_t i = begin; i < std::min(end, nbOrdinary); i += 2) {
      const Lanes found = ordinary.distances(points[i], points[i + 1]);
      distances[i] = found[0];
      distances[i + 1] = found[1];
    }
    PlanarPoint nearest;
    for (std::size_t i = begin; i < end; ++i)
      if (i >= nbOrdinary || std::isnan(distances[i])) distances[i] = pointSegmentDistance(points[i], segment, nearest);
  }
}

}  // namespace ormix
