#include <ORMIXMath/Distance/CircleSearch.h>
#include <ORMIXMath/Distance/EllipsoidFrame.h>
#include <ORMIXMath/Distance/RoundSolidDistance.h>

// Distances of tori from ellipsoids, frustums and tori.

namespace ormix {

namespace detail {

namespace {

constexpr omReal64 s_noLimit = -std::numeric_limits<omReal64>::infinity();

TurnedCircle middleOf(const RoundSolid& torus) { return {torus.origin, torus.axis, torus.radius0}; }

/// From what is nearest to the circle of a torus, farther away than the tube.
SpatialNearestPair fromTube(const RoundSolid& torus, const SpatialNearestPair& fromCircle) {
  return {fromCircle.distance - torus.radius1,
          fromCircle.onA + (fromCircle.onB - fromCircle.onA) * (torus.radius1 / fromCircle.distance), fromCircle.onB};
}

/// \name Of a surface that is in the tube
/// Branch and bound over the surface: of each part the greatest distance from one point of the torus' circle bounds
/// that from all of the circle. As distances are convex, they are greatest at the corners of what contains the part.
/// @{

/// A part of the surface: some of its points, and corners between which it is.
struct SurfacePart {
  std::array<SpatialPoint, 3> points;
  std::array<SpatialPoint, 9> corners;
};

/// A rectangle of two coordinates of a side of a surface.
struct SurfaceCell {
  omReal64 bound;
  int side;
  omReal64 u;
  omReal64 v;
  omReal64 halfU;
  omReal64 halfV;
  bool operator<(const SurfaceCell& other) const { return bound > other.bound; }
};

/// The first parts of a surface.
std::vector<SurfaceCell> firstCells(const RoundSolid& solid) {
  std::vector<SurfaceCell> cells;
  const bool isFrustum = solid.kind == eRS_Frustum;
  // A tube that meets itself is cut off there.
  const omReal64 end = solid.radius1 > solid.radius0 ? std::acos(-solid.radius0 / solid.radius1) : s_pi;
  const int nbV = isFrustum ? 1 : 4;
  for (int u = 0; u < 8; ++u)
    for (int v = 0; v < nbV; ++v)
      cells.push_back(
          {0, 0, s_pi * (0.25 + u) / 4, isFrustum ? 0.5 : end * (v - 1.5) / 2, s_pi / 8, isFrustum ? 0.5 : end / 4});
  return cells;
}
std::vector<SurfaceCell> firstCells(const SpatialEllipsoid&) {
  std::vector<SurfaceCell> cells;
  for (int side = 0; side < 6; ++side) cells.push_back({0, side, 0, 0, 1, 1});
  return cells;
}

/// Angles around the axis and about the middle of the tube.
SurfacePart partOfTorus(const RoundSolid& torus, const SurfaceCell& cell) {
  SurfacePart part{};
  const auto circleAt = [&torus](omReal64 angle, omReal64 share) {
    return TurnedCircle(torus.origin + torus.axis * (torus.radius1 * share * std::sin(angle)), torus.axis,
                        torus.radius0 + torus.radius1 * share * std::cos(angle));
  };
  part.points.fill(circleAt(cell.v, 1).at(cell.u));
  for (std::size_t i = 0; i < 3; ++i) {
    const TurnedCircle circle =
        i == 1 ? circleAt(cell.v, 1 / std::cos(cell.halfV)) : circleAt(cell.v + (omReal64(i) - 1) * cell.halfV, 1);
    const std::array<SpatialPoint, 3> corners = circle.corners(cell.u, cell.halfU);
    std::copy(corners.begin(), corners.end(), part.corners.begin() + std::ptrdiff_t(3 * i));
  }
  return part;
}

/// The same, or of a frustum an angle around the axis and a height: of the points of a disc one of the rim is farthest
/// from the torus' circle, or that on its axis.
SurfacePart partOf(const RoundSolid& f, const SurfaceCell& cell) {
  if (f.kind == eRS_Torus) return partOfTorus(f, cell);
  SurfacePart part{};
  const auto circleAt = [&f](omReal64 share) {
    return TurnedCircle(f.origin + f.axis * (f.height * share), f.axis, f.radius0 + (f.radius1 - f.radius0) * share);
  };
  for (std::size_t i = 0; i < 3; ++i) {
    const TurnedCircle circle = circleAt(cell.v + (omReal64(i) - 1) * cell.halfV);
    part.points[i] = circle.at(cell.u);
    if (i == 1) continue;
    const std::array<SpatialPoint, 3> corners = circle.corners(cell.u, cell.halfU);
    std::copy(corners.begin(), corners.end(), part.corners.begin() + std::ptrdiff_t(3 * i / 2));
  }
  std::fill(part.corners.begin() + 6, part.corners.end(), part.corners[0]);
  return part;
}

/// A part of the sphere seen from the centre through a rectangle on the side of a cube, stretched.
SurfacePart partOf(const SpatialEllipsoid& e, const SurfaceCell& cell) {
  const auto directionOf = [&cell](omReal64 u, omReal64 v) {
    const omReal64 w = cell.side % 2 == 0 ? 1 : -1;
    const SpatialPoint d =
        cell.side < 2 ? SpatialPoint{w, u, v} : (cell.side < 4 ? SpatialPoint{u, w, v} : SpatialPoint{u, v, w});
    return d * (1 / lengthOf(d));
  };
  const SpatialPoint middle = directionOf(cell.u, cell.v);
  std::array<SpatialPoint, 4> ends{};
  omReal64 cosine = 1;
  for (std::size_t k = 0; k < 4; ++k) {
    ends[k] = directionOf(cell.u + ((k & 1) != 0 ? cell.halfU : -cell.halfU),
                          cell.v + ((k & 2) != 0 ? cell.halfV : -cell.halfV));
    cosine = std::min(cosine, dot(middle, ends[k]));
  }
  SurfacePart part{};
  part.points.fill(fromUnitSphere(e, middle));
  // Between the plane that touches the sphere in the middle and one through its farthest end.
  for (std::size_t k = 0; k < 4; ++k) {
    const omReal64 along = dot(middle, ends[k]);
    part.corners[k] = fromUnitSphere(e, ends[k] * (1 / along));
    part.corners[4 + k] = fromUnitSphere(e, ends[k] * (cosine / along));
  }
  part.corners[8] = part.corners[0];
  return part;
}

/// What is found: the nearest pair of both surfaces, or a point of the body outside of the torus.
struct InTube {
  SpatialNearestPair nearest = s_noPair;
  bool hasOutside = false;
  SpatialPoint outside{};
};

/// The points of the discs of a frustum on the axis of a torus.
std::vector<SpatialPoint> pointsOnAxis(const RoundSolid& f, const RoundSolid& torus) {
  std::vector<SpatialPoint> points;
  for (const omReal64 share : {0.0, 1.0}) {
    const SpatialPoint center = f.origin + f.axis * (f.height * share);
    const omReal64 radius = share > 0 ? f.radius1 : f.radius0;
    SpatialPoint p{};
    if (f.kind == eRS_Frustum && findOnPlane(torus, center, f.axis, p) && lengthOf(p - center) <= radius)
      points.push_back(p);
  }
  return points;
}
std::vector<SpatialPoint> pointsOnAxis(const SpatialEllipsoid&, const RoundSolid&) { return {}; }

SpatialPoint nearestOnSurface(const RoundSolid& solid, const SpatialPoint& p) { return nearestOn(solid, p, false); }
SpatialPoint nearestOnSurface(const SpatialEllipsoid& e, const SpatialPoint& p) { return nearestOnEllipsoid(e, p); }

template <class Body>
InTube surfaceInTube(const RoundSolid& torus, const Body& body) {
  constexpr omReal64 relativeTolerance = 1e-9;
  const omReal64 tolerance = relativeTolerance * torus.radius1;
  RoundSolid circle = torus;
  circle.radius1 = 0;
  InTube result;
  std::vector<SurfaceCell> waiting;
  const auto look = [&](const SpatialPoint& p) {
    if (result.hasOutside) return;
    result.hasOutside = signedDistance(torus, p) > 0;
    if (result.hasOutside) result.outside = p;
    take(result.nearest, exchanged(pointToRound(p, torus, false)));
  };
  for (const SpatialPoint& p : pointsOnAxis(body, torus)) look(p);
  const auto add = [&](SurfaceCell cell) {
    const SurfacePart part = partOf(body, cell);
    for (const SpatialPoint& p : part.points) look(p);
    if (result.hasOutside) return;
    const SpatialPoint& middle = part.points[1];
    const SpatialPoint onCircle = nearestOn(circle, middle, false);
    omReal64 reach = 0, farthest = 0;
    for (const SpatialPoint& corner : part.corners) {
      reach = std::max(reach, lengthOf(corner - middle));
      farthest = std::max(farthest, lengthOf(corner - onCircle));
    }
    cell.bound = std::max(torus.radius1 - farthest, -signedDistance(torus, middle) - reach);
    if (!(cell.bound < result.nearest.distance - tolerance)) return;
    waiting.push_back(cell);
    std::push_heap(waiting.begin(), waiting.end());
  };
  for (const SurfaceCell& cell : firstCells(body))
    if (!result.hasOutside) add(cell);
  for (std::size_t nbCells = 0; !waiting.empty() && !result.hasOutside && nbCells < s_maxNbSearchCells; nbCells += 4) {
    SurfaceCell cell = waiting.front();
    if (!(cell.bound < result.nearest.distance - tolerance)) break;
    std::pop_heap(waiting.begin(), waiting.end());
    waiting.pop_back();
    cell.halfU /= 2;
    cell.halfV /= 2;
    for (const omReal64 du : {-cell.halfU, cell.halfU})
      for (const omReal64 dv : {-cell.halfV, cell.halfV})
        if (!result.hasOutside) add({0, cell.side, cell.u + du, cell.v + dv, cell.halfU, cell.halfV});
  }
  if (result.hasOutside) return result;
  // Where the tube meets itself on the axis, and to and fro.
  if (const omReal64 r = torus.radius1; r > torus.radius0)
    for (const omReal64 side : {1.0, -1.0}) {
      const SpatialPoint tip =
          torus.origin + torus.axis * (side * std::sqrt((r - torus.radius0) * (r + torus.radius0)));
      take(result.nearest, pairOf(tip, nearestOnSurface(body, tip)));
    }
  constexpr int maxNbTurns = 50;
  for (int turn = 0; turn < maxNbTurns; ++turn) {
    const SpatialPoint onBody = nearestOnSurface(body, result.nearest.onA);
    const SpatialNearestPair pair = pairOf(nearestOn(torus, onBody, false), onBody);
    if (!(pair.distance < result.nearest.distance)) break;
    result.nearest = pair;
  }
  return result;
}
/// @}

/// \name Of two circles
/// @{
omReal64 tolerance(const TurnedCircle& a, const RoundSolid& b) { return 1e-12 * (a.radius + b.radius0); }

/// The squared distance from a circle is |p|² + R² − 2 R ρ, which along another one is a linear function less a convex
/// one, ρ being the distance from the axis: concave.
SpatialNearestPair circlesNearest(const TurnedCircle& a, const RoundSolid& b) {
  const SpatialPoint off = a.center - b.origin;
  const omReal64 constant = dot(off, off) + a.radius * a.radius + b.radius0 * b.radius0;
  const omReal64 rounding = 16 * std::numeric_limits<omReal64>::epsilon() * constant;
  const bool isAround = areSameLines(a.center, a.axis, b.origin, b.axis, a.radius);
  const auto look = [&](omReal64 angle, omReal64 half) -> CellValue {
    const omReal64 value = signedDistance(b, a.at(angle));
    if (isAround) return {value, value};
    omReal64 square = std::numeric_limits<omReal64>::infinity();
    for (const SpatialPoint& p : a.corners(angle, half))
      square = std::min(square,
                        constant + 2 * dot(off, p - a.center) - 2 * b.radius0 * lengthOf(cross(p - b.origin, b.axis)));
    const omReal64 bound = std::sqrt(std::max(0.0, square - rounding));
    return {value, std::max(bound, value - 2 * a.radius * std::sin(half / 2))};
  };
  const SpatialPoint p = a.at(leastOfTurn(look, tolerance(a, b), 0).angle);
  return pairOf(p, nearestOn(b, p, false));
}

/// The point of the circle a that is farthest from the circle b, and its nearest there.
SpatialNearestPair circleFarthest(const TurnedCircle& a, const RoundSolid& b) {
  const bool isAround = areSameLines(a.center, a.axis, b.origin, b.axis, a.radius);
  const auto look = [&](omReal64 angle, omReal64 half) -> CellValue {
    const SpatialPoint p = a.at(angle), q = nearestOn(b, p, false), off = q - a.center;
    if (isAround) return {-lengthOf(p - q), -lengthOf(p - q)};
    const omReal64 square = dot(off, off) + a.radius * a.radius - 2 * a.leastAlong(off, angle, half);
    return {-lengthOf(p - q), -std::sqrt(std::max(0.0, square))};
  };
  const SpatialPoint p = a.at(leastOfTurn(look, tolerance(a, b), s_noLimit).angle);
  return pairOf(p, nearestOn(b, p, false));
}
/// @}

/// A point of the surface of a torus by two angles.
SpatialPoint onTorus(const RoundSolid& torus, omReal64 around, omReal64 about) {
  const TurnedCircle circle = middleOf(torus);
  const SpatialPoint out = circle.direction(around);
  return torus.origin + out * (torus.radius0 + torus.radius1 * std::cos(about)) +
         torus.axis * (torus.radius1 * std::sin(about));
}
std::array<omReal64, 2> anglesOf(const RoundSolid& torus, const SpatialPoint& p) {
  const TurnedCircle circle = middleOf(torus);
  const SpatialPoint d = p - torus.origin;
  const omReal64 x = dot(d, circle.u), y = dot(d, circle.v);
  return {std::atan2(y, x), std::atan2(dot(d, torus.axis), std::hypot(x, y) - torus.radius0)};
}

/// A torus in the tube of another, as surfaceInTube(), but by the point of its circle that is farthest from that of the
/// other where the tube does not meet itself.
InTube torusInTube(const RoundSolid& outer, const RoundSolid& inner) {
  if (outer.radius1 > outer.radius0) return surfaceInTube(outer, inner);
  RoundSolid circle = outer;
  circle.radius1 = 0;
  const SpatialNearestPair farthest = circleFarthest(middleOf(inner), circle);
  // Where both circles are the same up to rounding, the direction between them is none.
  const bool hasDirection = farthest.distance > tolerance(middleOf(inner), circle);
  const SpatialPoint unit = hasDirection ? (farthest.onA - farthest.onB) * (1 / farthest.distance) : inner.axis;
  InTube result;
  result.outside = farthest.onA + unit * inner.radius1;
  result.hasOutside = farthest.distance + inner.radius1 > outer.radius1;
  result.nearest = pairOf(nearestOn(outer, result.outside, false), result.outside);
  return result;
}

/// A common point of the surfaces of two tori along the surface of a, from a point next to the other circle to one
/// outside of b; false where these are not.
bool findCrossing(const RoundSolid& a, const RoundSolid& b, const SpatialPoint& towards, const SpatialPoint& beyond,
                  SpatialNearestPair& crossing) {
  const SpatialPoint inside = nearestOn(a, towards, false), outside = nearestOn(a, beyond, false);
  if (signedDistance(b, inside) > 0 || signedDistance(b, outside) <= 0) return false;
  const auto from = anglesOf(a, inside), to = anglesOf(a, outside);
  const auto at = [&](omReal64 t) {
    return onTorus(a, from[0] + (to[0] - from[0]) * t, from[1] + (to[1] - from[1]) * t);
  };
  crossing = pairAt(at(halved(0, 1, [&](omReal64 t) { return signedDistance(b, at(t)) <= 0; })));
  return true;
}

SpatialNearestPair toriNearestPair(const RoundSolid& a, const RoundSolid& b, bool isFilled) {
  RoundSolid circleB = b;
  circleB.radius1 = 0;
  const SpatialNearestPair near = circlesNearest(middleOf(a), circleB);
  const omReal64 radii = a.radius1 + b.radius1;
  if (near.distance > radii) {
    const SpatialPoint unit = (near.onB - near.onA) * (1 / near.distance);
    return {near.distance - radii, near.onA + unit * a.radius1, near.onB - unit * b.radius1};
  }
  if (isFilled || radii == 0) return pairAt(near.onA + (near.onB - near.onA) * (radii > 0 ? a.radius1 / radii : 0));
  const InTube inA = torusInTube(a, b);
  if (!inA.hasOutside) return inA.nearest;
  const InTube inB = torusInTube(b, a);
  if (!inB.hasOutside) return exchanged(inB.nearest);
  SpatialNearestPair crossing = pairAt(near.onA);
  if (!findCrossing(a, b, near.onB, inB.outside, crossing)) findCrossing(b, a, near.onA, inA.outside, crossing);
  return crossing;
}

}  // namespace

SpatialNearestPair torusToConvex(const RoundSolid& torus, const ConvexBody& body, bool isFilled) {
  bool isInside = false;
  const SpatialNearestPair near = circleToConvex(middleOf(torus), body, isFilled, isInside);
  if (near.distance > torus.radius1) return fromTube(torus, near);
  if (isFilled || torus.radius1 == 0) return pairAt(near.onB);
  const InTube inTube =
      body.frustum() ? surfaceInTube(torus, *body.frustum()) : surfaceInTube(torus, *body.ellipsoid());
  if (!inTube.hasOutside) return inTube.nearest;
  return pairAt(whereZero(body, near.distance > 0 ? near.onB : near.onA, inTube.outside,
                          [&torus](const SpatialPoint& p) { return signedDistance(torus, p); }));
}

}  // namespace detail

SpatialNearestPair roundsNearestPair(const RoundSolid& a, const RoundSolid& b, bool isFilled) {
  if (a.kind == eRS_Torus && b.kind == eRS_Torus) return detail::toriNearestPair(a, b, isFilled);
  const detail::ConvexBody ofA(a), ofB(b);
  if (a.kind == eRS_Torus) return detail::torusToConvex(a, ofB, isFilled);
  if (b.kind == eRS_Torus) return detail::exchanged(detail::torusToConvex(b, ofA, isFilled));
  return isFilled ? detail::convexNearestPair(ofA, ofB) : detail::convexSurfacesNearestPair(ofA, ofB);
}

}  // namespace ormix
