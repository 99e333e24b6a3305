#include <ORMIXMath/Distance/CircleSearch.h>
#include <ORMIXMath/Distance/EllipsoidFrame.h>

// Distances of frustums from ellipsoids and from frustums.

namespace ormix::detail {

namespace {

/// \name The nearest points of two convex bodies
/// The point nearest to the origin of a − b, by the hull of at most four points of it that are outermost in directions
/// of which the last is the way to the origin (Gilbert1988).
/// @{

/// A point of a − b with the points that it is of.
struct Difference {
  SpatialPoint onA;
  SpatialPoint onB;
  SpatialPoint between;
};

using Shares = std::array<omReal64, 4>;

/// The shares of the corners in the point nearest to the origin of the flat that they span; false where it is not
/// between them, or where they have none.
bool findShares(const std::vector<Difference>& w, const std::array<std::size_t, 4>& at, std::size_t nb,
                Shares& shares) {
  const SpatialPoint& p = w[at[0]].between;
  if (nb == 1) {
    shares[0] = 1;
    return true;
  }
  const SpatialPoint a = w[at[1]].between - p;
  const omReal64 aa = dot(a, a);
  if (nb == 2) {
    shares[1] = -dot(p, a) / aa;
  } else {
    const SpatialPoint b = w[at[2]].between - p;
    if (nb == 3) {
      const SpatialPoint n = cross(a, b);
      const omReal64 nn = dot(n, n);
      shares[1] = dot(cross(b, p), n) / nn;
      shares[2] = dot(cross(p, a), n) / nn;
    } else {
      const SpatialPoint c = w[at[3]].between - p;
      const omReal64 volume = dot(a, cross(b, c));
      shares[1] = -dot(p, cross(b, c)) / volume;
      shares[2] = -dot(a, cross(p, c)) / volume;
      shares[3] = -dot(a, cross(b, p)) / volume;
    }
  }
  shares[0] = 1;
  for (std::size_t i = 1; i < nb; ++i) {
    if (!(shares[i] >= 0)) return false;
    shares[0] -= shares[i];
  }
  return shares[0] >= 0;
}

/// The point of the hull of up to four points that is nearest to the origin; those that it is not of are removed.
Difference nearestOfHull(std::vector<Difference>& w) {
  omReal64 least = std::numeric_limits<omReal64>::infinity();
  Difference best{};
  std::vector<Difference> kept;
  for (unsigned subset = 1; subset < 1U << w.size(); ++subset) {
    std::array<std::size_t, 4> at{};
    std::size_t nb = 0;
    for (std::size_t i = 0; i < w.size(); ++i)
      if ((subset >> i & 1) != 0) at[nb++] = i;
    Shares shares{};
    if (!findShares(w, at, nb, shares)) continue;
    Difference found{};
    for (std::size_t i = 0; i < nb; ++i) {
      found.onA = found.onA + w[at[i]].onA * shares[i];
      found.onB = found.onB + w[at[i]].onB * shares[i];
      found.between = found.between + w[at[i]].between * shares[i];
    }
    // The hull of four points contains the origin.
    const omReal64 square = nb == 4 ? 0 : dot(found.between, found.between);
    if (!(square < least)) continue;
    least = square;
    best = found;
    if (nb == 4) best.between = {0, 0, 0};
    kept.clear();
    for (std::size_t i = 0; i < nb; ++i) kept.push_back(w[at[i]]);
  }
  w = std::move(kept);
  return best;
}
/// @}

/// By turns to a pair that is perpendicular to both surfaces.
SpatialNearestPair settled(SpatialNearestPair best, const ConvexBody& a, const ConvexBody& b) {
  constexpr int maxNbTurns = 50;
  for (int turn = 0; turn < maxNbTurns; ++turn) {
    const SpatialPoint onA = a.nearestOnSurface(best.onB);
    const SpatialNearestPair pair = pairOf(onA, b.nearestOnSurface(onA));
    if (!(pair.distance < best.distance)) break;
    best = pair;
  }
  return best;
}

/// \name Of surfaces that meet or are in one another
/// @{

std::array<TurnedCircle, 2> rimsOf(const RoundSolid& f) {
  return {TurnedCircle(f.origin, f.axis, f.radius0), TurnedCircle(f.origin + f.axis * f.height, f.axis, f.radius1)};
}

/// Both rims of a frustum with the surface of another body.
struct Rims {
  SpatialNearestPair nearest = s_noPair;
  std::array<bool, 2> areInside{};

  Rims(const RoundSolid& frustum, const ConvexBody& body) {
    for (std::size_t i = 0; i < 2; ++i) take(nearest, circleToConvex(rimsOf(frustum)[i], body, false, areInside[i]));
  }
  bool isInside() const { return areInside[0] && areInside[1]; }
};

/// The least height of the sides of a frustum over an ellipsoid, along their normals; negative where that is outside.
struct SideOver {
  omReal64 height = std::numeric_limits<omReal64>::infinity();
  SpatialPoint normal{};
};
SideOver leastHeight(const RoundSolid& f, const SpatialEllipsoid& e) {
  const auto heightOver = [&](const SpatialPoint& n, omReal64 offset) {
    return dot(n, f.origin - e.center) + offset -
           std::hypot(e.radii[0] * dot(n, e.axes[0]), e.radii[1] * dot(n, e.axes[1]), e.radii[2] * dot(n, e.axes[2]));
  };
  SideOver best;
  const auto offer = [&](omReal64 height, const SpatialPoint& normal) {
    if (height < best.height) best = {height, normal};
  };
  offer(heightOver(f.axis * -1, 0), f.axis * -1);
  offer(heightOver(f.axis, f.height), f.axis);
  const omReal64 side = std::hypot(f.height, f.radius1 - f.radius0);
  if (!(side > 0)) return best;
  // A concave function of the normals, which are a circle for the side around the axis.
  const omReal64 outward = f.height / side, offset = outward * f.radius0;
  const TurnedCircle normals(f.axis * ((f.radius0 - f.radius1) / side), f.axis, outward);
  const bool isAround = ConvexBody(e).isAround(f.origin, f.axis);
  const auto look = [&](omReal64 angle, omReal64 half) -> CellValue {
    omReal64 bound = heightOver(normals.at(angle), offset);
    const omReal64 value = bound;
    if (isAround) return {value, value};
    for (const SpatialPoint& corner : normals.corners(angle, half)) bound = std::min(bound, heightOver(corner, offset));
    return {value, bound};
  };
  const omReal64 largest = std::max({e.radii[0], e.radii[1], e.radii[2]});
  const LeastOfTurn found = leastOfTurn(look, 1e-13 * largest, -std::numeric_limits<omReal64>::infinity());
  offer(found.value, normals.at(found.angle));
  return best;
}

/// A common point of the surfaces of two bodies that meet, none of which contains the other; all of both rims of a are
/// outside of b.
SpatialNearestPair crossingOf(const ConvexBody& a, const ConvexBody& b, const SpatialPoint& common,
                              const SpatialPoint& ofBOutsideA) {
  const auto at = [&](omReal64 t) { return common + (ofBOutsideA - common) * t; };
  const SpatialPoint inB = at(halved(0, 1, [&](omReal64 t) { return a.signedDistance(at(t)) <= 0; }));
  const SpatialPoint outside = rimsOf(*a.frustum())[0].at(0);
  return pairAt(whereZero(a, inB, outside, [&b](const SpatialPoint& p) { return b.signedDistance(p); }));
}

/// Where one rim of a frustum is inside of a body and the other outside: along the side between.
SpatialNearestPair crossingOfSide(const RoundSolid& frustum, const Rims& rims, const ConvexBody& body) {
  const std::array<TurnedCircle, 2> circles = rimsOf(frustum);
  const std::size_t inner = rims.areInside[0] ? 0 : 1;
  const SpatialPoint from = circles[inner].at(0), to = circles[1 - inner].at(0);
  const auto at = [&](omReal64 t) { return from + (to - from) * t; };
  return pairAt(at(halved(0, 1, [&](omReal64 t) { return body.signedDistance(at(t)) <= 0; })));
}
/// @}

}  // namespace

SpatialNearestPair convexNearestPair(const ConvexBody& a, const ConvexBody& b) {
  constexpr omReal64 epsilon = std::numeric_limits<omReal64>::epsilon();
  constexpr int maxNbSteps = 300;
  const SpatialPoint ofA = a.middle(), ofB = b.middle();
  const omReal64 size = a.reach() + b.reach() + lengthOf(ofA) + lengthOf(ofB);
  std::vector<Difference> hull{{ofA, ofB, ofA - ofB}};
  Difference nearest = hull[0];
  omReal64 least = std::numeric_limits<omReal64>::infinity();
  int nbWithoutGain = 0;
  for (int step = 0; step < maxNbSteps && nbWithoutGain < 3; ++step) {
    const omReal64 distance = lengthOf(nearest.between);
    if (distance <= 4 * epsilon * size) return pairAt(nearest.onA);
    // Rounding may keep it from coming nearer.
    nbWithoutGain = distance < least ? 0 : nbWithoutGain + 1;
    least = std::min(least, distance);
    const SpatialPoint direction = nearest.between * (-1 / distance);
    const SpatialPoint onA = a.support(direction), onB = b.support(direction * -1);
    const SpatialPoint w = onA - onB;
    // No point of a − b is beyond the plane there.
    if (distance + dot(w, direction) <= epsilon * size) break;
    hull.push_back({onA, onB, w});
    nearest = nearestOfHull(hull);
  }
  return settled(pairOf(a.nearestOnSurface(nearest.onB), nearest.onB), a, b);
}

SpatialNearestPair convexSurfacesNearestPair(const ConvexBody& a, const ConvexBody& b) {
  const SpatialNearestPair filled = convexNearestPair(a, b);
  if (filled.distance > 0) return filled;
  const RoundSolid& f = *a.frustum();
  const Rims ofA(f, b);
  if (!(ofA.nearest.distance > 0) || ofA.isInside()) return ofA.nearest;
  if (ofA.areInside[0] != ofA.areInside[1]) return crossingOfSide(f, ofA, b);
  if (b.frustum()) {
    const Rims ofB(*b.frustum(), a);
    if (!(ofB.nearest.distance > 0) || ofB.isInside()) return exchanged(ofB.nearest);
    if (ofB.areInside[0] != ofB.areInside[1]) return crossingOfSide(*b.frustum(), ofB, a);
    return crossingOf(a, b, filled.onA, rimsOf(*b.frustum())[0].at(0));
  }
  const SideOver side = leastHeight(f, *b.ellipsoid());
  const SpatialPoint outermost = b.support(side.normal);
  if (side.height > 0) return pairOf(a.nearestOnSurface(outermost), outermost);
  return crossingOf(a, b, filled.onA, outermost);
}

}  // namespace ormix::detail
