#pragma once

#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Distance/EllipsoidDistance.h>
#include <ORMIXMath/Distance/NearestPair.h>
#include <ORMIXMath/Shape/RoundSolid.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

/// \file
/// What the distances of round solids are made of; not installed.

namespace ormix::detail {

inline omReal64 lengthOf(const SpatialPoint& p) { return std::hypot(p.x, p.y, p.z); }
inline SpatialNearestPair pairAt(const SpatialPoint& p) { return {0, p, p}; }
inline SpatialNearestPair pairOf(const SpatialPoint& p, const SpatialPoint& q) { return {lengthOf(q - p), p, q}; }
inline SpatialNearestPair exchanged(const SpatialNearestPair& pair) { return {pair.distance, pair.onB, pair.onA}; }
inline void take(SpatialNearestPair& best, const SpatialNearestPair& pair) {
  if (pair.distance < best.distance) best = pair;
}
inline constexpr SpatialNearestPair s_noPair{std::numeric_limits<omReal64>::infinity(), {0, 0, 0}, {0, 0, 0}};

inline SpatialNearestPair pointToRound(const SpatialPoint& p, const RoundSolid& solid, bool isFilled) {
  const omReal64 distance = signedDistance(solid, p);
  return {isFilled ? std::max(distance, 0.0) : std::abs(distance), p, nearestOn(solid, p, isFilled)};
}

/// Halves an interval until it is two neighbours; `isLow(t)` says which half goes on.
template <class IsLow>
omReal64 halved(omReal64 low, omReal64 high, IsLow&& isLow) {
  constexpr int maxNbHalvings = 200;
  for (int i = 0; i < maxNbHalvings; ++i) {
    const omReal64 middle = low / 2 + high / 2;
    if (middle == low || middle == high) break;
    (isLow(middle) ? low : high) = middle;
  }
  return low;
}

/// The points of a line between two places along it.
struct Run {
  SpatialPoint from;
  SpatialPoint direction;  ///< of length 1
  omReal64 low;
  omReal64 high;

  SpatialPoint at(omReal64 t) const { return from + direction * t; }
};

inline Run runBetween(const SpatialPoint& p, const SpatialPoint& q, omReal64 length) {
  return {p, (q - p) * (1 / length), 0, length};
}

/// Whether a point of its plane is in a triangle with that normal.
inline bool isInTriangle(const std::array<SpatialPoint, 3>& t, const SpatialPoint& normal, const SpatialPoint& p) {
  for (std::size_t i = 0; i < 3; ++i)
    if (dot(cross(t[(i + 1) % 3] - t[i], p - t[i]), normal) < 0) return false;
  return true;
}

/// Where an axis passes a plane through a point across a normal; false where it is parallel to that.
inline bool findOnPlane(const RoundSolid& solid, const SpatialPoint& point, const SpatialPoint& normal,
                        SpatialPoint& common) {
  const omReal64 slope = dot(solid.axis, normal);
  common = solid.origin + solid.axis * (slope != 0 ? dot(point - solid.origin, normal) / slope : 0);
  return slope != 0;
}

/// \name Of one kind each
/// @{
SpatialNearestPair segmentToFrustum(const SpatialPoint& p, const SpatialPoint& q, const RoundSolid& solid,
                                    bool isFilled);
SpatialNearestPair triangleToFrustum(const std::array<SpatialPoint, 3>& corners, const RoundSolid& solid,
                                     bool isFilled);
SpatialNearestPair segmentToTorus(const SpatialPoint& p, const SpatialPoint& q, const RoundSolid& solid, bool isFilled);
SpatialNearestPair triangleToTorus(const std::array<SpatialPoint, 3>& corners, const RoundSolid& solid, bool isFilled);
/// @}

/// A frustum or an ellipsoid, which must outlive it: what convex solids can tell of themselves.
class ConvexBody {
 public:
  explicit ConvexBody(const RoundSolid& frustum) : _frustum(&frustum) {}
  explicit ConvexBody(const SpatialEllipsoid& ellipsoid) : _ellipsoid(&ellipsoid) {}

  const RoundSolid* frustum() const { return _frustum; }
  const SpatialEllipsoid* ellipsoid() const { return _ellipsoid; }

  /// Negative inside; a convex function.
  omReal64 signedDistance(const SpatialPoint& p) const {
    if (_frustum) return ormix::signedDistance(*_frustum, p);
    const omReal64 distance = lengthOf(p - nearestOnEllipsoid(*_ellipsoid, p));
    return ellipsoidLevel(*_ellipsoid, p) < 1 ? -distance : distance;
  }
  SpatialPoint nearestOnSurface(const SpatialPoint& p) const {
    return _frustum ? nearestOn(*_frustum, p, false) : nearestOnEllipsoid(*_ellipsoid, p);
  }
  /// A point that is outermost in a direction of length 1.
  SpatialPoint support(const SpatialPoint& direction) const {
    return _frustum ? supportPoint(*_frustum, direction) : supportPoint(*_ellipsoid, direction);
  }
  /// A point inside, if there is any.
  SpatialPoint middle() const { return _frustum ? centroid(*_frustum) : _ellipsoid->center; }
  /// Whether it is one of revolution about the line through a point along a unit vector, but for rounding.
  bool isAround(const SpatialPoint& p, const SpatialPoint& axis) const;
  /// The radius of a ball around the middle that contains the body.
  omReal64 reach() const {
    if (_frustum) return _frustum->height + std::max(_frustum->radius0, _frustum->radius1);
    return std::max({_ellipsoid->radii[0], _ellipsoid->radii[1], _ellipsoid->radii[2]});
  }

 private:
  const RoundSolid* _frustum = nullptr;
  const SpatialEllipsoid* _ellipsoid = nullptr;
};

/// Whether two lines, through points along unit vectors, are the same but for rounding of points and of that size.
inline bool areSameLines(const SpatialPoint& p, const SpatialPoint& u, const SpatialPoint& q, const SpatialPoint& v,
                         omReal64 size) {
  constexpr omReal64 rounding = 8 * std::numeric_limits<omReal64>::epsilon();
  return lengthOf(cross(u, v)) <= rounding &&
         lengthOf(cross(p - q, v)) <= rounding * (size + lengthOf(p) + lengthOf(q));
}

/// The point where the ray from the middle through another point leaves the body; of a body without inside the point.
SpatialPoint pushedOut(const ConvexBody& body, const SpatialPoint& p);

/// A point of the body's surface at which a continuous function is 0, which is at most 0 at the point `low` of the
/// surface and positive at the point `high`.
template <class Level>
SpatialPoint whereZero(const ConvexBody& body, SpatialPoint low, SpatialPoint high, const Level& level) {
  // By way of a point across both, so that the way does not pass the middle.
  const SpatialPoint middle = body.middle();
  const SpatialPoint a = low - middle, across = cross(a, high - middle);
  constexpr omReal64 leastSine = 1e-3;
  const bool isFound = lengthOf(across) > leastSine * lengthOf(a) * lengthOf(high - middle);
  if (const SpatialPoint unit = isFound ? unitVector(across) : directionAcross(unitVector(a));
      body.signedDistance(middle) < 0 && lengthOf(a) > 0) {
    const SpatialPoint between = pushedOut(body, middle + unit * body.reach());
    (level(between) <= 0 ? low : high) = between;
  }
  const auto at = [&](omReal64 t) { return pushedOut(body, low + (high - low) * t); };
  return at(halved(0, 1, [&](omReal64 t) { return level(at(t)) <= 0; }));
}

/// The nearest points of two convex bodies, or a common one.
SpatialNearestPair convexNearestPair(const ConvexBody& a, const ConvexBody& b);

/// The same of their surfaces, of which a is a frustum's.
SpatialNearestPair convexSurfacesNearestPair(const ConvexBody& a, const ConvexBody& b);

/// From a torus to a convex body.
SpatialNearestPair torusToConvex(const RoundSolid& torus, const ConvexBody& body, bool isFilled);

}  // namespace ormix::detail
