#include <ORMIXMath/Distance/PolynomialRoots.h>
#include <ORMIXMath/Distance/RoundParts.h>
#include <ORMIXMath/Distance/TrianglesDistance.h>

// Distances of tori from segments and triangles.

namespace ormix::detail {

namespace {

RoundSolid middleOf(const RoundSolid& torus) {
  RoundSolid circle = torus;
  circle.radius1 = 0;
  return circle;
}

/// The two points at which the tube meets itself on the axis, of a torus that has no hole.
bool hasTips(const RoundSolid& torus) { return torus.radius1 > torus.radius0; }
SpatialPoint tipOf(const RoundSolid& torus, omReal64 side) {
  const omReal64 r = torus.radius1, height = std::sqrt((r - torus.radius0) * (r + torus.radius0));
  return torus.origin + torus.axis * (side * height);
}

/// Places along a run among which its distance from the circle of a torus is least and greatest, and that from its
/// surface, too.
class Stations {
 public:
  Stations(const Run& run, const RoundSolid& torus) : _run(run) {
    add(run.low);
    add(run.high);
    const SpatialPoint v = run.from - torus.origin;
    const omReal64 nearest = -dot(v, run.direction);
    const SpatialPoint q = v + run.direction * nearest;
    const omReal64 unit = std::max(torus.radius0, lengthOf(q));
    add(nearest);
    if (hasTips(torus))
      for (const omReal64 side : {1.0, -1.0}) add(dot(tipOf(torus, side) - run.from, run.direction));
    if (!(unit > 0)) return;
    // At s from the nearest point the squared distance from the circle is s² + q² + R² − 2 R ρ with
    // ρ² = α s² + 2 β s + γ: it is stationary where s ρ = R (α s + β), squared a quartic.
    const SpatialPoint u = cross(run.direction, torus.axis), w = cross(q, torus.axis) * (1 / unit);
    const omReal64 alpha = dot(u, u), beta = dot(u, w), gamma = dot(w, w);
    const omReal64 square = torus.radius0 / unit * (torus.radius0 / unit);
    if (alpha > 0) add(nearest - unit * (beta / alpha));
    const PolynomialRoots roots(
        {-square * beta * beta, -2 * square * alpha * beta, gamma - square * alpha * alpha, 2 * beta, alpha},
        (run.low - nearest) / unit, (run.high - nearest) / unit);
    for (const omReal64 s : roots) add(nearest + unit * s);
  }

  const omReal64* begin() const { return _places.data(); }
  const omReal64* end() const { return _places.data() + _nbPlaces; }

 private:
  void add(omReal64 place) { _places[_nbPlaces++] = std::clamp(place, _run.low, _run.high); }

  const Run& _run;
  std::array<omReal64, 6 + PolynomialRoots::s_degree> _places{};
  std::size_t _nbPlaces = 0;
};

/// Where the surface is between a point inside and one outside.
SpatialNearestPair crossingOf(const SpatialPoint& inside, const SpatialPoint& outside, const RoundSolid& torus) {
  const auto at = [&](omReal64 t) { return inside + (outside - inside) * t; };
  return pairAt(at(halved(0, 1, [&](omReal64 t) { return signedDistance(torus, at(t)) <= 0; })));
}

}  // namespace

SpatialNearestPair segmentToTorus(const SpatialPoint& p, const SpatialPoint& q, const RoundSolid& torus,
                                  bool isFilled) {
  const omReal64 length = lengthOf(q - p);
  if (!(length > 0)) return pointToRound(p, torus, isFilled);
  const Run run = runBetween(p, q, length);
  omReal64 least = std::numeric_limits<omReal64>::infinity(), most = -least, atLeast = 0, atMost = 0;
  const auto look = [&](omReal64 place) {
    const omReal64 distance = signedDistance(torus, run.at(place));
    if (distance < least) {
      least = distance;
      atLeast = place;
    }
    if (distance > most) {
      most = distance;
      atMost = place;
    }
  };
  for (const omReal64 place : Stations(run, torus)) look(place);
  // To and fro, which is what roots that are nearly double lack.
  const RoundSolid circle = middleOf(torus);
  for (int turn = 0; turn < 3; ++turn) {
    const SpatialPoint onCircle = nearestOn(circle, run.at(atLeast), false);
    look(std::clamp(dot(onCircle - run.from, run.direction), run.low, run.high));
  }
  if (isFilled || least >= 0) return pointToRound(run.at(atLeast), torus, isFilled);
  return most >= 0 ? crossingOf(run.at(atLeast), run.at(atMost), torus) : pointToRound(run.at(atMost), torus, false);
}

/// In a plane the distance from a circle has no greatest value inside of what it is looked for in, but on the axis:
/// along a half-plane of that it is convex. Inside the tube the edges therefore tell, the axis, and the points next to
/// tips.
SpatialNearestPair triangleToTorus(const std::array<SpatialPoint, 3>& t, const RoundSolid& torus, bool isFilled) {
  SpatialNearestPair best = s_noPair;
  for (std::size_t i = 0; i < 3 && best.distance > 0; ++i)
    take(best, segmentToTorus(t[i], t[(i + 1) % 3], torus, isFilled));
  const SpatialPoint across = cross(t[1] - t[0], t[2] - t[0]);
  if (!(best.distance > 0) || !(dot(across, across) > 0)) return best;
  const SpatialPoint normal = unitVector(across);
  const auto isIn = [&](const SpatialPoint& p) { return isInTriangle(t, normal, p); };
  const bool isInside = signedDistance(torus, t[0]) < 0;
  if (isInside) {
    if (SpatialPoint onAxis; findOnPlane(torus, t[0], normal, onAxis) && isIn(onAxis)) {
      if (signedDistance(torus, onAxis) > 0) return crossingOf(t[0], onAxis, torus);
      take(best, pointToRound(onAxis, torus, false));
    }
    for (const omReal64 side : {1.0, -1.0})
      if (hasTips(torus))
        take(best, pointToRound(pointTriangleNearestPair(tipOf(torus, side), {t[0], t[1], t[2]}).onB, torus, false));
    return best;
  }
  // Beside the edges the nearest point is on the circle, or a foot of the points where this is outermost.
  const RoundSolid circle = middleOf(torus);
  std::array<SpatialPoint, 2> feet{};
  const SpatialPoint top = supportPoint(circle, normal), bottom = supportPoint(circle, normal * -1);
  const omReal64 highest = dot(normal, top - t[0]), lowest = dot(normal, bottom - t[0]);
  if (lowest > 0 || highest < 0) {
    feet[0] = feet[1] = lowest > 0 ? bottom - normal * lowest : top - normal * highest;
  } else {
    feet[0] = pointOnPlane(circle, normal, dot(normal, t[0]));
    const SpatialPoint along = cross(torus.axis, normal), d = feet[0] - torus.origin;
    const omReal64 square = dot(along, along);
    feet[1] = square > 0 ? feet[0] - along * (2 * dot(d, along) / square) : feet[0];
  }
  for (const SpatialPoint& foot : feet) {
    if (!isIn(foot)) continue;
    if (!isFilled && signedDistance(torus, foot) < 0) return crossingOf(foot, t[0], torus);
    take(best, pointToRound(foot, torus, isFilled));
  }
  return best;
}

}  // namespace ormix::detail
