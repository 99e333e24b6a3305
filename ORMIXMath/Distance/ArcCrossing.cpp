#include <ORMIXMath/Distance/ArcCrossing.h>
#include <ORMIXMath/Distance/PolynomialRoots.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace ormix::detail {

namespace {

/// Coefficients of 1, u and u^2.
using Quadratic = std::array<omReal64, 3>;

/// A piece of a curve as (x(u) / w(u), y(u) / w(u)), -1 <= u <= 1, in the frame of another and in units in which that
/// is x^2 + y^2 = 1, or y = x^2 / 2.
struct RationalPiece {
  Quadratic x;
  Quadratic y;
  Quadratic w;
};

/// Adds factor p q.
void addProduct(std::array<omReal64, 5>& sum, omReal64 factor, const Quadratic& p, const Quadratic& q) {
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t k = 0; k < 3; ++k) sum[i + k] += factor * p[i] * q[k];
}

/// What the equation of the curve is along the piece.
PolynomialRoots crossingsOf(const ConvexArc& curve, const RationalPiece& piece) {
  std::array<omReal64, 5> polynomial{};
  addProduct(polynomial, curve.isParabola ? 0.5 : 1, piece.x, piece.x);
  if (curve.isParabola) {
    addProduct(polynomial, -1, piece.y, piece.w);
  } else {
    addProduct(polynomial, 1, piece.y, piece.y);
    addProduct(polynomial, -1, piece.w, piece.w);
  }
  return {polynomial, -1, 1};
}

/// A vector of the plane, or a point, in the frame of a curve and in its units.
PlanarPoint toUnits(const ConvexArc& curve, const PlanarPoint& local) {
  if (curve.isParabola) return {local.x / (2 * curve.a), local.y / (2 * curve.a)};
  return {local.x / curve.a, local.y / curve.b};
}
PlanarPoint vectorToUnits(const ConvexArc& curve, const PlanarPoint& v) {
  return toUnits(curve, {v.x * curve.axis.x + v.y * curve.axis.y, v.y * curve.axis.x - v.x * curve.axis.y});
}

/// The coefficients of center w + p P(u) + q Q(u) for one coordinate.
Quadratic combined(omReal64 center, const Quadratic& w, omReal64 p, const Quadratic& ofP, omReal64 q,
                   const Quadratic& ofQ) {
  Quadratic sum{};
  for (std::size_t i = 0; i < 3; ++i) sum[i] = center * w[i] + p * ofP[i] + q * ofQ[i];
  return sum;
}

/// The parametrisation of an arc along its axes: cos and sin of a half turn times w = 1 + u^2, or x / s and its square.
struct Parametrisation {
  Quadratic w;
  Quadratic along;
  Quadratic across;
  omReal64 alongFactor;
  omReal64 acrossFactor;
};
Parametrisation parametrisation(const ConvexArc& arc, bool isOtherHalf) {
  if (arc.isParabola) {
    const omReal64 largest = std::max(std::abs(arc.from), std::abs(arc.to));
    return {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, largest, largest * (largest / (4 * arc.a))};
  }
  const omReal64 side = isOtherHalf ? -1 : 1;
  return {{1, 0, 1}, {1, 0, -1}, {0, 2, 0}, side * arc.a, side * arc.b};
}

/// Leaves of the part of a line from p0 to p1 what lies between two bounds, a little wider.
bool clip(Interval& part, omReal64 p0, omReal64 p1, omReal64 low, omReal64 high) {
  const omReal64 slack = 4e-16 * (std::abs(p0) + std::abs(p1) + std::abs(low) + std::abs(high));
  low -= slack;
  high += slack;
  if (p0 == p1) return p0 >= low && p0 <= high;
  const omReal64 atLow = (low - p0) / (p1 - p0);
  const omReal64 atHigh = (high - p0) / (p1 - p0);
  part = {std::max(part.low, std::min(atLow, atHigh)), std::min(part.high, std::max(atLow, atHigh))};
  return part.low <= part.high;
}

bool isOnParabolaArc(const ConvexArc& arc, const PlanarPoint& point) {
  const omReal64 x = toFrame(arc, point).x;
  const omReal64 slack = 4e-16 * (std::abs(arc.from) + std::abs(arc.to));
  return x >= arc.from - slack && x <= arc.to + slack;
}

/// A crossing as a root of the equation of b along a.
bool findCrossingAlong(const ConvexArc& a, const ConvexArc& b, PlanarPoint& common) {
  const PlanarPoint c = toUnits(b, toFrame(b, a.origin));
  const PlanarPoint along = vectorToUnits(b, a.axis);
  const PlanarPoint across = vectorToUnits(b, {-a.axis.y, a.axis.x});
  for (const bool isOtherHalf : {false, true}) {
    if (a.isParabola && isOtherHalf) break;
    const Parametrisation of = parametrisation(a, isOtherHalf);
    const omReal64 p = of.alongFactor;
    const omReal64 q = of.acrossFactor;
    const PolynomialRoots roots =
        crossingsOf(b, {combined(c.x, of.w, p * along.x, of.along, q * across.x, of.across),
                        combined(c.y, of.w, p * along.y, of.along, q * across.y, of.across), of.w});
    for (const omReal64 u : roots) {
      const omReal64 w = of.w[0] + of.w[2] * u * u;
      const omReal64 ofAlong = of.along[0] + of.along[1] * u + of.along[2] * u * u;
      const omReal64 ofAcross = of.across[0] + of.across[1] * u + of.across[2] * u * u;
      common = fromFrame(a, {p * (ofAlong / w), q * (ofAcross / w)});
      if ((!a.isParabola || isOnParabolaArc(a, common)) && (!b.isParabola || isOnParabolaArc(b, common))) return true;
    }
  }
  return false;
}

/// A measure of how large the arc is in the units of another.
omReal64 sizeInUnits(const ConvexArc& arc, const ConvexArc& units) {
  const PlanarPoint along = vectorToUnits(units, arc.axis);
  const PlanarPoint across = vectorToUnits(units, {-arc.axis.y, arc.axis.x});
  const Parametrisation of = parametrisation(arc, false);
  return of.alongFactor * std::hypot(along.x, along.y) + of.acrossFactor * std::hypot(across.x, across.y);
}

}  // namespace

bool findCrossing(const ConvexArc& arc, const PlanarSegment& segment, PlanarPoint& common) {
  const PlanarPoint p0 = toFrame(arc, segment.p0);
  const PlanarPoint p1 = toFrame(arc, segment.p1);
  const auto at = [&](omReal64 t) { return PlanarPoint{(1 - t) * p0.x + t * p1.x, (1 - t) * p0.y + t * p1.y}; };
  // Only the part near the arc: the equation has rounding errors of its largest value.
  Interval part{0, 1};
  if (arc.isParabola) {
    const omReal64 top = parabolaPoint(arc, std::max(-arc.from, arc.to)).y;
    if (!clip(part, p0.x, p1.x, arc.from, arc.to) || !clip(part, p0.y, p1.y, 0, top)) return false;
  } else if (!clip(part, p0.x, p1.x, -arc.a, arc.a) || !clip(part, p0.y, p1.y, -arc.b, arc.b)) {
    return false;
  }
  const PlanarPoint c = toUnits(arc, at(0.5 * (part.low + part.high)));
  const PlanarPoint end = toUnits(arc, at(part.high));
  const PolynomialRoots roots = crossingsOf(arc, {{c.x, end.x - c.x, 0}, {c.y, end.y - c.y, 0}, {1, 0, 0}});
  if (roots.begin() == roots.end()) return false;
  const omReal64 t = 0.5 * (part.low + part.high) + 0.5 * (part.high - part.low) * *roots.begin();
  const omReal64 s = std::clamp(t, 0.0, 1.0);
  common = {(1 - s) * segment.p0.x + s * segment.p1.x, (1 - s) * segment.p0.y + s * segment.p1.y};
  return true;
}

bool findCrossing(const ConvexArc& a, const ConvexArc& b, PlanarPoint& common) {
  // The equation of the larger curve along the smaller one has the smaller errors.
  if (a.isParabola != b.isParabola)
    return b.isParabola ? findCrossingAlong(a, b, common) : findCrossingAlong(b, a, common);
  return sizeInUnits(a, b) <= sizeInUnits(b, a) ? findCrossingAlong(a, b, common) : findCrossingAlong(b, a, common);
}

}  // namespace ormix::detail
