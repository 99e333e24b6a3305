#include <ORMIXMath/Distance/PointSegmentDistance.h>
#include <ORMIXMath/Location/NearestOnRing.h>
#include <ORMIXMath/Transform/CoordinateVectors.h>

#include <cmath>
#include <limits>

namespace ormix {

namespace {

using namespace detail;

constexpr omReal64 s_infinity = std::numeric_limits<omReal64>::infinity();
constexpr omReal64 s_nan = std::numeric_limits<omReal64>::quiet_NaN();

// Squares below this may have lost digits to underflow.
constexpr omReal64 s_leastSafeSquare = 0x1p-900;
// Where no edge is longer than 2^500 and the least distance is below that, no product of an edge overflows that could
// be nearest: its ends are at most 2^501 away.
constexpr omReal64 s_largestSafeSquare = 0x1p1000;

constexpr std::size_t s_nbLanes = 4;
constexpr std::size_t s_lanesInOrder[s_nbLanes] = {0, 2, 1, 3};
using Reals4 = Reals<s_nbLanes>;

/// The squared distance from the origin to the segments from a to b; of one of length 0 to a. Adds their squared
/// lengths to `lengths`.
template <class Real>
[[gnu::always_inline]] inline Real squaredDistance(const Real& ax, const Real& ay, const Real& bx, const Real& by,
                                                   Real& lengths) {
  const Real dx = bx - ax;
  const Real dy = by - ay;
  const Real length = dx * dx + dy * dy;
  lengths += length;
  Real t = -(ax * dx + ay * dy) / length;
  t = t > 0.0 ? t : Real{};
  t = t < 1.0 ? t : Real{} + 1.0;
  const Real x = ax + t * dx;
  const Real y = ay + t * dy;
  return x * x + y * y;
}

/// The index of the edge, or of the point, with the least squared distance, and that; infinite when none is finite.
struct Least {
  omReal64 square;
  std::size_t index;
  omReal64 lengths = 0;  // the sum of the squared lengths of all edges
};

/// Four points, x and y apart, in the order 0, 2, 1, 3, relative to p.
template <class T>
struct FourPoints {
  [[gnu::always_inline]] inline FourPoints(const T* xy, const PlanarPoint& p) {
    const Vector<T, s_nbLanes> stored[2] = {*reinterpret_cast<const StoredVector<T, s_nbLanes>*>(xy),
                                            *reinterpret_cast<const StoredVector<T, s_nbLanes>*>(xy + s_nbLanes)};
    const Reals4 low = toReals<T, s_nbLanes>(stored[0]);
    const Reals4 high = toReals<T, s_nbLanes>(stored[1]);
    x = __builtin_shufflevector(low, high, 0, 4, 2, 6) - p.x;
    y = __builtin_shufflevector(low, high, 1, 5, 3, 7) - p.y;
  }
  Reals4 x;
  Reals4 y;
};

/// \tparam areEdges whether from each point to the next one, or points
template <bool areEdges, class T>
[[gnu::always_inline]] inline Least leastSquare(const T* xy, std::size_t nbPoints, const PlanarPoint& p) {
  const std::size_t nbItems = areEdges ? nbPoints - 1 : nbPoints;
  Least least{s_infinity, 0};
  Reals4 smallest = Reals4{} + s_infinity;
  Reals4 steps{};
  Reals4 step{};
  Reals4 lengths{};
  std::size_t i = 0;
  for (; i + s_nbLanes <= nbItems; i += s_nbLanes) {
    const FourPoints<T> from(xy + 2 * i, p);
    Reals4 square;
    if constexpr (areEdges) {
      const FourPoints<T> to(xy + 2 * i + 2, p);
      square = squaredDistance<Reals4>(from.x, from.y, to.x, to.y, lengths);
    } else {
      square = from.x * from.x + from.y * from.y;
    }
    const auto isSmaller = square < smallest;
    smallest = isSmaller ? square : smallest;
    steps = isSmaller ? step : steps;
    step += 1.0;
  }
  for (std::size_t lane = 0; lane < s_nbLanes; ++lane) {
    const std::size_t index = static_cast<std::size_t>(steps[lane]) * s_nbLanes + s_lanesInOrder[lane];
    if (smallest[lane] < least.square || (smallest[lane] == least.square && index < least.index))
      least = {smallest[lane], index};
  }
  least.lengths = (lengths[0] + lengths[1]) + (lengths[2] + lengths[3]);
  const auto add = [&](std::size_t a, std::size_t b) {
    const PlanarPoint from = toPlanarPoint(xy[2 * a], xy[2 * a + 1]);
    const PlanarPoint to = toPlanarPoint(xy[2 * b], xy[2 * b + 1]);
    const omReal64 square = squaredDistance(from.x - p.x, from.y - p.y, to.x - p.x, to.y - p.y, least.lengths);
    if (square < least.square) least = {square, a, least.lengths};
  };
  for (; i < nbItems; ++i) add(i, areEdges ? i + 1 : i);
  if (areEdges) add(nbPoints - 1, 0);
  return least;
}

#if defined(__x86_64__)
template <bool areEdges, class T>
[[gnu::target("avx2")]] Least leastSquareAvx2(const T* xy, std::size_t nbPoints, const PlanarPoint& p) {
  return leastSquare<areEdges>(xy, nbPoints, p);
}
#endif

template <bool areEdges, class T>
NearestOnRing nearest(const T* xy, std::size_t nbPoints, const PlanarPoint& p) {
  NearestOnRing result{{s_nan, s_nan}, s_infinity, 0};
  if (nbPoints == 0) return result;
  const auto consider = [&](std::size_t a) {
    const std::size_t b = !areEdges ? a : a + 1 < nbPoints ? a + 1 : 0;
    PlanarPoint point;
    const omReal64 distance = pointSegmentDistance(p.x, p.y, omReal64(xy[2 * a]), omReal64(xy[2 * a + 1]),
                                                   omReal64(xy[2 * b]), omReal64(xy[2 * b + 1]), point);
    if (distance < result.distance) result = {point, distance, a};
  };
  Least least{s_infinity, 0};
#if defined(__x86_64__)
  if (__builtin_cpu_supports("avx2"))
    least = leastSquareAvx2<areEdges>(xy, nbPoints, p);
  else
#endif
    least = leastSquare<areEdges>(xy, nbPoints, p);
  consider(least.index);
  const bool isSafe = least.square >= s_leastSafeSquare && least.square < s_largestSafeSquare;
  const bool areShort = least.lengths < s_largestSafeSquare;
  if (areShort && (isSafe || result.distance == 0)) return result;
  for (std::size_t at = 0; at < 2 * nbPoints; ++at)
    if (!std::isfinite(static_cast<omReal64>(xy[at]))) return {{s_nan, s_nan}, s_infinity, 0};
  for (std::size_t i = 0; i < nbPoints; ++i) consider(i);
  return result;
}

}  // namespace

template <class T>
NearestOnRing nearestOnRing(const T* xy, std::size_t nbPoints, omReal64 x, omReal64 y) {
  return nearest<true>(xy, nbPoints, {x, y});
}
template <class T>
NearestOnRing nearestOfPoints(const T* xy, std::size_t nbPoints, omReal64 x, omReal64 y) {
  return nearest<false>(xy, nbPoints, {x, y});
}

// clang-format off
template ORMIX_MATH_API NearestOnRing nearestOnRing(const omInt32*, std::size_t, omReal64, omReal64);
template ORMIX_MATH_API NearestOnRing nearestOnRing(const omUInt32*, std::size_t, omReal64, omReal64);
template ORMIX_MATH_API NearestOnRing nearestOnRing(const omReal32*, std::size_t, omReal64, omReal64);
template ORMIX_MATH_API NearestOnRing nearestOnRing(const omReal64*, std::size_t, omReal64, omReal64);
template ORMIX_MATH_API NearestOnRing nearestOfPoints(const omInt32*, std::size_t, omReal64, omReal64);
template ORMIX_MATH_API NearestOnRing nearestOfPoints(const omUInt32*, std::size_t, omReal64, omReal64);
template ORMIX_MATH_API NearestOnRing nearestOfPoints(const omReal32*, std::size_t, omReal64, omReal64);
template ORMIX_MATH_API NearestOnRing nearestOfPoints(const omReal64*, std::size_t, omReal64, omReal64);
// clang-format on

}  // namespace ormix
