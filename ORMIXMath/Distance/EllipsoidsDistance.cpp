#include <ORMIXMath/Distance/EllipsoidFrame.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace ormix {

namespace {

using namespace detail;

// The distance of a surface inside another is certain to this part of the outer size.
constexpr omReal64 s_tolerance = 2e-10;

// Surfaces this near to each other in the frame of one of them meet.
constexpr omReal64 s_touch = 1e-14;

// Cells of normals that are looked at most; a circle of nearest points, as between coaxial spheroids, takes 1e5.
constexpr std::size_t s_maxNbCells = 4000000;

omReal64 largestRadius(const SpatialEllipsoid& e) { return std::max({e.radii[0], e.radii[1], e.radii[2]}); }
omReal64 smallestRadius(const SpatialEllipsoid& e) { return std::min({e.radii[0], e.radii[1], e.radii[2]}); }
omReal64 leastCurvatureRadius(const SpatialEllipsoid& e) {
  return smallestRadius(e) / largestRadius(e) * smallestRadius(e);
}
omReal64 largestCurvatureRadius(const SpatialEllipsoid& e) {
  return largestRadius(e) / smallestRadius(e) * largestRadius(e);
}

SpatialNearestPair pairOf(const SpatialPoint& p, const SpatialPoint& q) { return {normOf(q - p), p, q}; }

/// The image of an ellipsoid under a linear map that is given by the images of its half axes: these are turned among
/// each other until they are perpendicular (Hestenes1958).
SpatialEllipsoid ellipsoidOfHalfAxes(const SpatialPoint& center, std::array<SpatialPoint, 3> h) {
  for (int sweep = 0; sweep < 30; ++sweep) {
    bool isDone = true;
    for (const auto& [i, k] : {std::pair<std::size_t, std::size_t>{0, 1}, {0, 2}, {1, 2}}) {
      const omReal64 ii = dot(h[i], h[i]), kk = dot(h[k], h[k]), ik = dot(h[i], h[k]);
      if (!(std::abs(ik) > 1e-16 * std::sqrt(ii * kk))) continue;
      isDone = false;
      const omReal64 zeta = (kk - ii) / (2 * ik);
      const omReal64 t = std::copysign(1 / (std::abs(zeta) + std::sqrt(1 + zeta * zeta)), zeta);
      const omReal64 c = 1 / std::sqrt(1 + t * t), s = c * t;
      const SpatialPoint turned = h[i] * c - h[k] * s;
      h[k] = h[i] * s + h[k] * c;
      h[i] = turned;
    }
    if (isDone) break;
  }
  SpatialEllipsoid result{center, {}, {}};
  for (std::size_t k = 0; k < 3; ++k) {
    result.radii[k] = normOf(h[k]);
    result.axes[k] = h[k] / result.radii[k];
  }
  return result;
}

/// How the surface of a lies to b, which is the unit sphere in its own frame: the least and largest distance from the
/// centre of b in that frame, and where they are taken.
struct Relation {
  SpatialPoint nearest;
  SpatialPoint farthest;
  bool hasCenter;  ///< whether a contains the centre of b

  Relation(const SpatialEllipsoid& a, const SpatialEllipsoid& b) {
    std::array<SpatialPoint, 3> halfAxes;
    for (std::size_t k = 0; k < 3; ++k) {
      const SpatialPoint half = a.axes[k] * a.radii[k];
      halfAxes[k] = {dot(b.axes[0], half) / b.radii[0], dot(b.axes[1], half) / b.radii[1],
                     dot(b.axes[2], half) / b.radii[2]};
    }
    const SpatialEllipsoid mapped = ellipsoidOfHalfAxes(toUnitSphere(b, a.center), halfAxes);
    nearest = nearestOnEllipsoid(mapped, {0, 0, 0});
    farthest = farthestOnEllipsoid(mapped, {0, 0, 0});
    hasCenter = ellipsoidLevel(a, b.center) <= 1;
  }
  // Surfaces that touch or coincide to rounding meet.
  bool isNearInside() const { return dot(nearest, nearest) <= 1 + s_touch; }
  bool isFarOutside() const { return dot(farthest, farthest) >= 1 - s_touch; }
};

/// A common point of two surfaces that meet: on the way on a's surface from its point deepest in b to its farthest.
SpatialPoint commonOfSurfaces(const SpatialEllipsoid& a, const SpatialEllipsoid& b, const Relation& relation) {
  SpatialPoint inside = toUnitSphere(a, fromUnitSphere(b, relation.nearest));
  SpatialPoint outside = toUnitSphere(a, fromUnitSphere(b, relation.farthest));
  if (normOf(inside + outside) < 1e-3) {
    // Opposite points have no shortest way: halfway there on any.
    const SpatialPoint aside = cross(inside, std::abs(inside.x) < 0.7 ? SpatialPoint{1, 0, 0} : SpatialPoint{0, 1, 0});
    (ellipsoidLevel(b, fromUnitSphere(a, aside / normOf(aside))) <= 1 ? inside : outside) = aside / normOf(aside);
  }
  SpatialPoint middle = inside;
  for (int step = 0; step < 60; ++step) {
    middle = inside + outside;
    middle = middle / normOf(middle);
    (ellipsoidLevel(b, fromUnitSphere(a, middle)) <= 1 ? inside : outside) = middle;
  }
  return fromUnitSphere(a, middle);
}

/// The separation of the planes of support with the normal n, which points from a to b, or, where a is inside b, from
/// inside: a value, the two points of support, and the radii of curvature as a matrix.
struct Separation {
  SpatialPoint normal;
  omReal64 value;
  SpatialPoint onA;
  SpatialPoint onB;

  Separation(const SpatialEllipsoid& a, const SpatialEllipsoid& b, const SpatialPoint& n, omReal64 sideOfB)
      : normal(n), onA(supportPoint(a, n)), onB(supportPoint(b, n * sideOfB)) {
    value = dot(n, onB - onA);
  }
  /// Along the sphere of normals.
  SpatialPoint gradient() const { return (onB - onA) - normal * value; }
};

/// Two vectors that are perpendicular to a unit vector and to each other.
std::array<SpatialPoint, 2> across(const SpatialPoint& n) {
  const SpatialPoint e = cross(n, std::abs(n.x) < 0.7 ? SpatialPoint{1, 0, 0} : SpatialPoint{0, 1, 0});
  const SpatialPoint e0 = e / normOf(e);
  return {e0, cross(n, e0)};
}

/// A symmetric matrix of two rows.
struct Matrix2 {
  omReal64 m00 = 0, m01 = 0, m11 = 0;

  omReal64 leastEigenvalue() const { return 0.5 * (m00 + m11) - std::hypot(0.5 * (m00 - m11), m01); }
};

/// The radii of curvature where the normal is n, as (W − W n nᵀ W / h²) / h in two coordinates across n: the second
/// derivatives of the plane of support.
Matrix2 curvatureRadii(const SpatialEllipsoid& e, const SpatialPoint& n, const std::array<SpatialPoint, 2>& frame) {
  const SpatialPoint wn = timesSquares(e, n), w0 = timesSquares(e, frame[0]), w1 = timesSquares(e, frame[1]);
  const omReal64 square = dot(n, wn), h = std::sqrt(square);
  const omReal64 c0 = dot(frame[0], wn), c1 = dot(frame[1], wn);
  return {(dot(frame[0], w0) - c0 * c0 / square) / h, (dot(frame[0], w1) - c0 * c1 / square) / h,
          (dot(frame[1], w1) - c1 * c1 / square) / h};
}

/// Newton's step to the largest separation of two that are apart, whose second derivatives along the sphere of normals
/// are those of both planes of support and the separation itself, all negative.
SpatialPoint newtonStep(const SpatialEllipsoid& a, const SpatialEllipsoid& b, const Separation& at) {
  const std::array<SpatialPoint, 2> frame = across(at.normal);
  const Matrix2 ofA = curvatureRadii(a, at.normal, frame), ofB = curvatureRadii(b, at.normal, frame);
  const omReal64 m00 = at.value + ofA.m00 + ofB.m00, m01 = ofA.m01 + ofB.m01, m11 = at.value + ofA.m11 + ofB.m11;
  const SpatialPoint g = at.gradient();
  const omReal64 g0 = dot(g, frame[0]), g1 = dot(g, frame[1]), determinant = m00 * m11 - m01 * m01;
  if (!(determinant > 0)) return {0, 0, 0};
  return frame[0] * ((g0 * m11 - g1 * m01) / determinant) + frame[1] * ((g1 * m00 - g0 * m01) / determinant);
}

/// Of two that do not meet: points that approach each other by turns until their plane separates, then Newton's steps.
SpatialNearestPair nearestApart(const SpatialEllipsoid& a, const SpatialEllipsoid& b) {
  SpatialNearestPair best = pairOf(nearestOnEllipsoid(a, b.center), b.center);
  best = pairOf(best.onA, nearestOnEllipsoid(b, best.onA));
  constexpr int maxNbTurns = 300;
  for (int turn = 0; turn < maxNbTurns && best.distance > 0; ++turn) {
    Separation at(a, b, (best.onB - best.onA) / best.distance, -1);
    for (int step = 0; at.value > 0 && step < 50; ++step) {
      const SpatialPoint move = newtonStep(a, b, at);
      bool isBetter = false;
      for (omReal64 share = 1; share > 1e-3 && !isBetter; share *= 0.5) {
        const SpatialPoint n = at.normal + move * share;
        const Separation next(a, b, n / normOf(n), -1);
        isBetter = next.value > at.value;
        if (isBetter) at = next;
      }
      if (!isBetter) break;
    }
    if (at.value > 0) {
      const SpatialPoint onB = nearestOnEllipsoid(b, at.onA);
      return pairOf(nearestOnEllipsoid(a, onB), onB);
    }
    const SpatialPoint onA = nearestOnEllipsoid(a, best.onB);
    best = pairOf(onA, nearestOnEllipsoid(b, onA));
  }
  return best;
}

/// A part of a face of the cube around the sphere of normals, and a lower bound of the separation in it.
struct Cell {
  omReal64 bound;
  int face;
  omReal64 u, v, half;
  friend bool operator<(const Cell& p, const Cell& q) { return p.bound > q.bound; }
};

SpatialPoint directionAt(int face, omReal64 u, omReal64 v) {
  const omReal64 side = face % 2 == 0 ? 1 : -1;
  const SpatialPoint p = face < 2   ? SpatialPoint{side, u, v}
                         : face < 4 ? SpatialPoint{u, side, v}
                                    : SpatialPoint{u, v, side};
  return p / normOf(p);
}

/// A bound of how fast a radius of curvature changes with the normal up to an angle from n: the third derivative of the
/// plane of support, at most 3 r³ / h² with the largest radius r.
omReal64 curvatureChange(const SpatialEllipsoid& e, const SpatialPoint& n, omReal64 cosine, omReal64 sine) {
  const omReal64 r = largestRadius(e), height = std::sqrt(dot(n, timesSquares(e, n))) * cosine - r * sine;
  const omReal64 h = std::max(height, smallestRadius(e));
  return 3 * (r / h) * (r / h) * r;
}

/// Of the surface of a inside b: the least separation g of planes of support. Along a great circle g'' + g is the
/// difference of radii of curvature, at least kappa, so that g >= kappa + (g0 − kappa) cos t − |gradient| sin t. kappa
/// is that of all normals or, in small cells, that of the middle less what it can change.
SpatialNearestPair nearestInside(const SpatialEllipsoid& a, const SpatialEllipsoid& b) {
  const omReal64 kappaOfAll = leastCurvatureRadius(b) - largestCurvatureRadius(a);
  const omReal64 tolerance = s_tolerance * largestRadius(b);
  omReal64 least = std::numeric_limits<omReal64>::infinity();
  SpatialNearestPair best{least, a.center, a.center};
  std::vector<Cell> waiting;
  const auto look = [&](int face, omReal64 u, omReal64 v, omReal64 half) {
    const Separation at(a, b, directionAt(face, u, v), 1);
    if (at.value < least) {
      least = at.value;
      best = pairOf(at.onA, nearestOnEllipsoid(b, at.onA));
    }
    omReal64 cosine = 1;
    for (const omReal64 du : {-half, half})
      for (const omReal64 dv : {-half, half})
        cosine = std::min(cosine, dot(at.normal, directionAt(face, u + du, v + dv)));
    const omReal64 sine = std::sqrt(std::max(0.0, 1 - cosine * cosine)), slope = normOf(at.gradient());
    const std::array<SpatialPoint, 2> frame = across(at.normal);
    const Matrix2 ofA = curvatureRadii(a, at.normal, frame), ofB = curvatureRadii(b, at.normal, frame);
    const omReal64 change = curvatureChange(a, at.normal, cosine, sine) + curvatureChange(b, at.normal, cosine, sine);
    const Matrix2 difference{ofB.m00 - ofA.m00, ofB.m01 - ofA.m01, ofB.m11 - ofA.m11};
    const omReal64 kappa = std::max(kappaOfAll, difference.leastEigenvalue() - change * std::acos(cosine));
    const omReal64 above = at.value - kappa;
    // Falling up to the end of the cell, or lowest before.
    const bool isFalling = above >= 0 || -above * sine < slope * cosine;
    const omReal64 bound = isFalling ? kappa + above * cosine - slope * sine : kappa - std::hypot(above, slope);
    if (!(bound < least - tolerance)) return;
    waiting.push_back({bound, face, u, v, half});
    std::push_heap(waiting.begin(), waiting.end());
  };
  for (int face = 0; face < 6; ++face) look(face, 0, 0, 1);
  for (std::size_t nbCells = 6; !waiting.empty() && nbCells < s_maxNbCells; nbCells += 4) {
    const Cell cell = waiting.front();
    if (!(cell.bound < least - tolerance)) break;
    std::pop_heap(waiting.begin(), waiting.end());
    waiting.pop_back();
    const omReal64 half = 0.5 * cell.half;
    for (const omReal64 du : {-half, half})
      for (const omReal64 dv : {-half, half}) look(cell.face, cell.u + du, cell.v + dv, half);
  }
  // By turns to a pair that is perpendicular to both.
  for (int turn = 0; turn < 100; ++turn) {
    const SpatialPoint onA = nearestOnEllipsoid(a, best.onB);
    const SpatialNearestPair pair = pairOf(onA, nearestOnEllipsoid(b, onA));
    if (!(pair.distance < best.distance)) break;
    best = pair;
  }
  return best;
}

bool isSphere(const SpatialEllipsoid& e) { return e.radii[0] == e.radii[1] && e.radii[1] == e.radii[2]; }

/// Of the surface of an ellipsoid inside a sphere, or the other way round: along the ray from the sphere's centre
/// through the farthest point, or through the nearest.
SpatialNearestPair nearestInside(const SpatialEllipsoid& inner, const SpatialEllipsoid& outer, bool isOuterSphere) {
  const SpatialEllipsoid& sphere = isOuterSphere ? outer : inner;
  const SpatialPoint other =
      isOuterSphere ? farthestOnEllipsoid(inner, outer.center) : nearestOnEllipsoid(outer, inner.center);
  const SpatialPoint ray = other - sphere.center;
  const SpatialPoint onSphere = sphere.center + ray * (sphere.radii[0] / normOf(ray));
  return isOuterSphere ? pairOf(other, onSphere) : pairOf(onSphere, other);
}

}  // namespace

SpatialNearestPair ellipsoidsNearestPair(const SpatialEllipsoid& a, const SpatialEllipsoid& b, bool isFilled) {
  const Relation relation(a, b);
  if (isFilled && (relation.hasCenter || relation.isNearInside())) {
    const SpatialPoint common = relation.hasCenter ? b.center : fromUnitSphere(b, relation.nearest);
    return {0, common, common};
  }
  if (relation.isNearInside() && relation.isFarOutside()) {
    const SpatialPoint common = commonOfSurfaces(a, b, relation);
    return {0, common, common};
  }
  if (relation.isNearInside())
    return isSphere(a) || isSphere(b) ? nearestInside(a, b, isSphere(b)) : nearestInside(a, b);
  if (!relation.hasCenter) return nearestApart(a, b);
  const SpatialNearestPair exchanged =
      isSphere(a) || isSphere(b) ? nearestInside(b, a, isSphere(a)) : nearestInside(b, a);
  return {exchanged.distance, exchanged.onB, exchanged.onA};
}

}  // namespace ormix
