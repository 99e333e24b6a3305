#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Distance/PlanarFrame.h>
#include <ORMIXMath/Distance/SpatialFrame.h>
#include <ORMIXMath/Distance/TrianglesDistance.h>
#include <ORMIXMath/Distance/TrianglesMeet.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <type_traits>

namespace ormix {

namespace detail {

// Operators that Twofold and TwofoldVector need for what is written once for them and for omReal64 and SpatialPoint.
static Twofold operator-(const Twofold& x, const Twofold& y) { return difference(x, y); }
static Twofold operator/(const Twofold& x, const Twofold& y) { return quotient(x, y); }
static TwofoldVector operator+(const TwofoldVector& a, const TwofoldVector& b) {
  return {sum(a.x, b.x), sum(a.y, b.y), sum(a.z, b.z)};
}
static TwofoldVector operator-(const TwofoldVector& a, const TwofoldVector& b) { return difference(a, b); }
static TwofoldVector operator*(const TwofoldVector& a, const Twofold& factor) { return times(factor, a); }

}  // namespace detail

namespace {

using namespace detail;

omReal64 rounded(omReal64 value) { return value; }
omReal64 rounded(const Twofold& value) { return value.high; }
template <class Vector>
SpatialPoint toPoint(const Vector& a) {
  return {rounded(a.x), rounded(a.y), rounded(a.z)};
}
omReal64 lengthOf(const SpatialPoint& a) { return std::sqrt(dot(a, a)); }
omReal64 lengthOf(const TwofoldVector& a) { return length(a); }

void assignDifference(SpatialPoint& result, const SpatialPoint& p, const SpatialPoint& origin) { result = p - origin; }
void assignDifference(TwofoldVector& result, const SpatialPoint& p, const SpatialPoint& origin) {
  result = between(origin, p);
}

/// A point, a segment or a triangle, by its corners.
template <class Vector, std::size_t N>
using Simplex = std::array<Vector, N>;
template <std::size_t N>
using Corners = Simplex<SpatialPoint, N>;

constexpr omReal64 s_infinity = std::numeric_limits<omReal64>::infinity();
constexpr omReal64 s_nan = std::numeric_limits<omReal64>::quiet_NaN();
constexpr SpatialNearestPair s_noPair{s_infinity, {s_nan, s_nan, s_nan}, {s_nan, s_nan, s_nan}};

// Extents in this range have powers up to the eighth, of parts of 2^-50 too, that are normal numbers.
constexpr omReal64 s_smallestExtent = 0x1p-50;
constexpr omReal64 s_largestExtent = 0x1p100;

// Bound of the error of a corner's height above a plane times the length of the plane's normal, relative to the third
// power of the extent: six products with fewer than eight roundings each.
constexpr omReal64 s_sideBound = 0x1p-46;

// Square of the sine of the angle between segments below which their common perpendicular is not looked for: their
// distance changes by less than 2^-50 of their length from end to end.
constexpr omReal64 s_parallel = 0x1p-100;

// Square of the ratio of the double area of a triangle and the square of its extent below which its normal, whose error
// grows with the inverse ratio, is computed with twice the precision.
constexpr omReal64 s_thin = 0x1p-16;

// Part of the extent below which distances are computed with twice the precision.
constexpr omReal64 s_close = 0x1p-40;

// Relative loss of a computed bound by its roundings; a little more than those.
constexpr omReal64 s_boundLoss = 1 - 0x1p-40;

bool meet(const Corners<1>& a, const Corners<3>& b) { return pointMeetsTriangle(a[0], {b[0], b[1], b[2]}); }
bool meet(const Corners<2>& a, const Corners<3>& b) { return segmentMeetsTriangle({a[0], a[1]}, {b[0], b[1], b[2]}); }
bool meet(const Corners<3>& a, const Corners<3>& b) { return trianglesMeet({a[0], a[1], a[2]}, {b[0], b[1], b[2]}); }

/// The pair with the least square of the distance until now.
template <class Vector>
struct BestPair {
  decltype(Vector::x) square{};
  Vector onA{};
  Vector onB{};
  bool isEmpty = true;

  void update(const Vector& a, const Vector& b) {
    const Vector across = b - a;
    const auto candidate = dot(across, across);
    if (!isEmpty && !(rounded(candidate - square) < 0)) return;
    *this = {candidate, a, b, false};
  }
};

template <class Real>
Real one() {
  if constexpr (std::is_same_v<Real, Twofold>)
    return {1, 0};
  else
    return 1;
}
template <class Real>
bool isBelowOne(const Real& value) {
  return rounded(value - one<Real>()) < 0;
}

/// The value of [0, 1] next to a value.
template <class Real>
Real clamped(const Real& value) {
  if (!(rounded(value) > 0)) return Real{};
  return isBelowOne(value) ? value : one<Real>();
}

/// The parameter of the point of p + t u nearest to q, in [0, 1].
template <class Vector>
auto projected(const Vector& p, const Vector& u, const Vector& q) {
  const auto square = dot(u, u);
  return rounded(square) > 0 ? clamped(dot(u, q - p) / square) : decltype(square){};
}

/// The nearest points of the segments from p along u and from q along v. The parameter of the common perpendicular
/// comes from the cross product of the directions, whose error grows with the inverse sine of the angle and is made
/// along both; the normal equations lose that square.
template <class Vector>
void updateByEdges(const Vector& p, const Vector& u, const Vector& q, const Vector& v, BestPair<Vector>& best) {
  using Real = decltype(Vector::x);
  const Vector across = cross(u, v);
  const Real square = dot(across, across);
  Real s{};
  if (rounded(square) > s_parallel * rounded(dot(u, u)) * rounded(dot(v, v)))
    s = clamped(dot(cross(q - p, v), across) / square);
  Vector onA = p + u * s;
  const Real t = projected(q, v, onA);
  const Vector onB = q + v * t;
  if (!(rounded(t) > 0) || !isBelowOne(t)) onA = p + u * projected(p, u, onB);
  best.update(onA, onB);
}

/// The plane of a triangle.
template <class Vector>
struct Face {
  explicit Face(const Simplex<Vector, 3>& t) : normal(cross(t[1] - t[0], t[2] - t[0])), square(dot(normal, normal)) {}

  Vector normal;
  decltype(Vector::x) square;
};

/// The foot of the perpendicular from a point to the triangle's plane where it is inside; the edges have the others.
template <class Vector, class Update>
void updateByFace(const Simplex<Vector, 3>& t, const Face<Vector>& face, const Vector& point, Update&& update) {
  if (!(rounded(face.square) > 0)) return;
  for (std::size_t i = 0; i < 3; ++i) {
    const Vector& from = t[i];
    if (!(rounded(dot(cross(t[(i + 1) % 3] - from, point - from), face.normal)) > 0)) return;
  }
  update(point - face.normal * (dot(face.normal, point - t[0]) / face.square));
}

/// All pairs of an edge of each, and of a corner and a face.
template <class Vector, std::size_t N>
BestPair<Vector> nearestOf(const Simplex<Vector, N>& a, const Simplex<Vector, 3>& b) {
  BestPair<Vector> best;
  for (std::size_t k = 0; k < 3; ++k) {
    const Vector along = b[(k + 1) % 3] - b[k];
    for (std::size_t i = 0; i < (N == 3 ? 3 : 1); ++i) updateByEdges(a[i], a[(i + 1) % N] - a[i], b[k], along, best);
  }
  const Face<Vector> faceB(b);
  for (const Vector& corner : a) updateByFace(b, faceB, corner, [&](const Vector& foot) { best.update(corner, foot); });
  if constexpr (N == 3) {
    const Face<Vector> faceA(a);
    for (const Vector& corner : b)
      updateByFace(a, faceA, corner, [&](const Vector& foot) { best.update(foot, corner); });
  }
  return best;
}

/// Relative to an origin.
template <class Vector, std::size_t N>
Simplex<Vector, N> relative(const Corners<N>& corners, const SpatialPoint& origin) {
  Simplex<Vector, N> result;
  for (std::size_t i = 0; i < N; ++i) assignDifference(result[i], corners[i], origin);
  return result;
}

template <std::size_t N>
omReal64 extentOf(const Corners<N>& local) {
  omReal64 sum = 0;
  for (const SpatialPoint& p : local) sum += std::abs(p.x) + std::abs(p.y) + std::abs(p.z);
  return sum;
}

/// The point at a place relative to the origin: a corner itself, others within the box of the corners.
template <class Vector, std::size_t N>
SpatialPoint placed(const Vector& place, const Simplex<Vector, N>& local, const Corners<N>& corners,
                    const SpatialPoint& origin) {
  const SpatialPoint offset = toPoint(place);
  for (std::size_t i = 0; i < N; ++i) {
    const SpatialPoint corner = toPoint(local[i]);
    if (corner.x == offset.x && corner.y == offset.y && corner.z == offset.z) return corners[i];
  }
  SpatialPoint result = offset + origin;
  for (omReal64 SpatialPoint::*axis : {&SpatialPoint::x, &SpatialPoint::y, &SpatialPoint::z}) {
    omReal64 least = corners[0].*axis, largest = least;
    for (const SpatialPoint& corner : corners) {
      least = std::min(least, corner.*axis);
      largest = std::max(largest, corner.*axis);
    }
    result.*axis = std::clamp(result.*axis, least, largest);
  }
  return result;
}

/// The square of a lower bound of the distance: that of the plane of b from a where all corners of a lie surely on one
/// side; 0 where they do not.
template <std::size_t N>
omReal64 squareFromPlane(const Corners<N>& a, const Corners<3>& b, const Face<SpatialPoint>& face, omReal64 error) {
  omReal64 least = s_infinity, largest = -s_infinity;
  for (const SpatialPoint& corner : a) {
    const omReal64 height = dot(face.normal, corner - b[0]);
    least = std::min(least, height);
    largest = std::max(largest, height);
  }
  const omReal64 gap = std::max(least, -largest) - error;
  return gap > 0 ? gap * gap / face.square : 0;
}

/// With twice the precision; two that do not meet are never at distance 0.
template <std::size_t N>
SpatialNearestPair nearestClosely(const Corners<N>& a, const Corners<3>& b, bool doMeet) {
  const SpatialPoint origin = b[0];
  const auto localA = relative<TwofoldVector>(a, origin);
  const auto localB = relative<TwofoldVector>(b, origin);
  const BestPair<TwofoldVector> best = nearestOf(localA, localB);
  SpatialNearestPair result{lengthOf(best.onB - best.onA), placed(best.onA, localA, a, origin),
                            placed(best.onB, localB, b, origin)};
  if (!doMeet) result.distance = std::max(result.distance, std::numeric_limits<omReal64>::min());
  return result;
}

/// A common point of two that meet: where an edge of the one crosses the plane of the other, a corner of the one on the
/// other, or where edges cross; of all candidates the one with the least distance to both.
template <std::size_t N>
SpatialNearestPair commonPoint(const Corners<N>& a, const Corners<3>& b) {
  const SpatialPoint origin = b[0];
  const auto localA = relative<TwofoldVector>(a, origin);
  const auto localB = relative<TwofoldVector>(b, origin);
  BestPair<TwofoldVector> best = nearestOf(localA, localB);
  const auto tryEdges = [&](const auto& edges, const Simplex<TwofoldVector, 3>& t) {
    const Face<TwofoldVector> face(t);
    const std::size_t nbEdges = edges.size() == 3 ? 3 : edges.size() - 1;
    for (std::size_t i = 0; i < nbEdges; ++i) {
      const TwofoldVector& from = edges[i];
      const TwofoldVector along = edges[(i + 1) % edges.size()] - from;
      const Twofold rise = dot(face.normal, along);
      if (rise.high == 0) continue;
      const TwofoldVector crossing = from + along * clamped(dot(face.normal, t[0] - from) / rise);
      updateByFace(t, face, crossing, [&](const TwofoldVector& foot) { best.update(crossing, foot); });
    }
  };
  tryEdges(localA, localB);
  if constexpr (N == 3) tryEdges(localB, localA);
  const SpatialPoint common = placed(best.onA, localB, b, origin);
  return {0, common, common};
}

/// For extents in the safe range; the exact decision is made on the corners as they were given.
template <std::size_t N>
SpatialNearestPair nearestInRange(const Corners<N>& a, const Corners<3>& b, const Corners<N>& givenA,
                                  const Corners<3>& givenB, omReal64 extent, omReal64 squareBound) {
  const SpatialPoint origin = b[0];
  const auto localA = relative<SpatialPoint>(a, origin);
  const auto localB = relative<SpatialPoint>(b, origin);
  const omReal64 error = s_sideBound * extent * extent * extent;
  const auto isThin = [](const Corners<3>& t, const Face<SpatialPoint>& face) {
    const SpatialPoint u = t[1] - t[0], v = t[2] - t[0];
    const omReal64 size = std::max(dot(u, u), dot(v, v));
    return !(face.square > s_thin * size * size);
  };
  const Face<SpatialPoint> faceB(localB);
  bool isHard = isThin(localB, faceB);
  omReal64 squareGap = squareFromPlane(localA, localB, faceB, error);
  if constexpr (N == 3) {
    const Face<SpatialPoint> faceA(localA);
    isHard = isHard || isThin(localA, faceA);
    squareGap = std::max(squareGap, squareFromPlane(localB, localA, faceA, error));
  }
  if (squareGap * s_boundLoss >= squareBound) return s_noPair;
  if (!(squareGap > 0) && meet(givenA, givenB)) return commonPoint(a, b);
  if (isHard) return nearestClosely(a, b, false);
  const BestPair<SpatialPoint> best = nearestOf(localA, localB);
  const omReal64 distance = lengthOf(best.onB - best.onA);
  if (!(distance > s_close * extent)) return nearestClosely(a, b, false);
  return {distance, placed(best.onA, localA, a, origin), placed(best.onB, localB, b, origin)};
}

template <std::size_t N>
Corners<N> scaled(const Corners<N>& corners, int exponent) {
  Corners<N> result;
  for (std::size_t i = 0; i < N; ++i)
    result[i] = {std::ldexp(corners[i].x, exponent), std::ldexp(corners[i].y, exponent),
                 std::ldexp(corners[i].z, exponent)};
  return result;
}

/// For extents whose powers would overflow or underflow: the corners are scaled to an extent of about 1. Coordinates
/// that are lost to underflow are far below the precision of the answer.
template <std::size_t N>
__attribute__((noinline)) SpatialNearestPair nearestScaled(const Corners<N>& a, const Corners<3>& b,
                                                           omReal64 squareBound) {
  // Of 18 differences the sum does not overflow.
  constexpr int headroom = 6;
  const Corners<N> smallA = scaled(a, -headroom);
  const Corners<3> smallB = scaled(b, -headroom);
  omReal64 extent =
      extentOf(relative<SpatialPoint>(smallA, smallB[0])) + extentOf(relative<SpatialPoint>(smallB, smallB[0]));
  int exponent = headroom;
  if (!std::isfinite(extent)) return {s_nan, s_noPair.onA, s_noPair.onB};
  if (extent < s_smallestExtent) {
    exponent = 0;
    extent = extentOf(relative<SpatialPoint>(a, b[0])) + extentOf(relative<SpatialPoint>(b, b[0]));
    if (extent == 0) return {0, a[0], b[0]};
  }
  exponent += std::ilogb(extent);
  const Corners<N> scaledA = scaled(a, -exponent);
  const Corners<3> scaledB = scaled(b, -exponent);
  const omReal64 scaledExtent =
      extentOf(relative<SpatialPoint>(scaledA, scaledB[0])) + extentOf(relative<SpatialPoint>(scaledB, scaledB[0]));
  SpatialNearestPair result =
      nearestInRange(scaledA, scaledB, a, b, scaledExtent, std::ldexp(std::ldexp(squareBound, -exponent), -exponent));
  result.distance = std::ldexp(result.distance, exponent);
  result.onA = scaled(Corners<1>{result.onA}, exponent)[0];
  result.onB = scaled(Corners<1>{result.onB}, exponent)[0];
  return result;
}

template <std::size_t N>
SpatialNearestPair nearestPair(const Corners<N>& a, const Corners<3>& b, omReal64 squareBound) {
  const omReal64 extent = extentOf(relative<SpatialPoint>(a, b[0])) + extentOf(relative<SpatialPoint>(b, b[0]));
  if (!(extent > s_smallestExtent && extent < s_largestExtent)) return nearestScaled(a, b, squareBound);
  return nearestInRange(a, b, a, b, extent, squareBound);
}

}  // namespace

SpatialNearestPair pointTriangleNearestPair(const SpatialPoint& point, const SpatialTriangle& t) {
  return nearestPair(Corners<1>{point}, Corners<3>{t.p0, t.p1, t.p2}, s_infinity);
}

SpatialNearestPair segmentTriangleNearestPair(const SpatialSegment& segment, const SpatialTriangle& t) {
  return nearestPair(Corners<2>{segment.p0, segment.p1}, Corners<3>{t.p0, t.p1, t.p2}, s_infinity);
}

SpatialNearestPair trianglesNearestPair(const SpatialTriangle& a, const SpatialTriangle& b, omReal64 squareBound) {
  return nearestPair(Corners<3>{a.p0, a.p1, a.p2}, Corners<3>{b.p0, b.p1, b.p2}, squareBound);
}

}  // namespace ormix
