#include <ORMIXGeometry/Tools/Distance/SpatialBody.h>
#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Distance/EllipsoidFrame.h>
#include <ORMIXMath/Distance/NearestOnSegments.h>
#include <ORMIXMath/Distance/TrianglesDistance.h>
#include <ORMIXMath/Index/BoxPairs.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace ormix::geom::detail {

namespace {

using Corners = std::array<SpatialPoint, 3>;
using Box = ormix::detail::IndexBox<3>;

constexpr omReal64 s_infinity = std::numeric_limits<omReal64>::infinity();
constexpr omReal64 s_nan = std::numeric_limits<omReal64>::quiet_NaN();
constexpr SpatialNearestPair s_noPair{s_infinity, {s_nan, s_nan, s_nan}, {s_nan, s_nan, s_nan}};

// Sine of the angle of two plans up to which they are parallel: a few roundings of the components of their normals.
constexpr omReal64 s_parallelSine = 1e-15;

using ormix::detail::operator+;
using ormix::detail::operator-;
using ormix::detail::operator*;
using ormix::detail::cross;
using ormix::detail::dot;
omReal64 norm(const SpatialPoint& p) { return std::sqrt(dot(p, p)); }

SpatialNearestPair exchanged(const SpatialNearestPair& pair) { return {pair.distance, pair.onB, pair.onA}; }
SpatialNearestPair pairAt(const SpatialPoint& p) { return {0, p, p}; }

SpatialTriangle triangle(const Corners& t) { return {t[0], t[1], t[2]}; }

/// Of two facets with that many corners each, the first with at least as many.
SpatialNearestPair nearestOfOrdered(const Corners& a, std::size_t nbA, const Corners& b, std::size_t nbB,
                                    omReal64 squareBound) {
  if (nbB == 3) return trianglesNearestPair(triangle(a), triangle(b), squareBound);
  if (nbA == 3)
    return exchanged(nbB == 2 ? segmentTriangleNearestPair({b[0], b[1]}, triangle(a))
                              : pointTriangleNearestPair(b[0], triangle(a)));
  if (nbB == 2) return nearestOnSegments(SpatialSegment{a[0], a[1]}, SpatialSegment{b[0], b[1]});
  return exchanged(nearestOnSegments(b[0], SpatialSegment{a[0], a[1]}));
}
SpatialNearestPair nearestOfFacets(const Corners& a, std::size_t nbA, const Corners& b, std::size_t nbB,
                                   omReal64 squareBound) {
  return nbA >= nbB ? nearestOfOrdered(a, nbA, b, nbB, squareBound)
                    : exchanged(nearestOfOrdered(b, nbB, a, nbA, squareBound));
}

/// A vertex of each connected part of the body in the box that the closed surfaces of another are in, since parts
/// without a common point with these are in them as a whole.
template <class Visit>
bool visitParts(const SpatialBody& body, const Box& box, Visit&& visit) {
  const auto isIn = [&box](const SpatialPoint& p) { return box.meets({{p.x, p.y, p.z}, {p.x, p.y, p.z}}); };
  if (body.nbCorners == 1) {
    for (const SpatialPoint& p : body.vertices)
      if (isIn(p) && !visit(p)) return false;
    return true;
  }
  std::vector<omUInt32> parents(body.vertices.size());
  std::iota(parents.begin(), parents.end(), 0U);
  const auto rootOf = [&parents](omUInt32 v) {
    while (parents[v] != v) v = parents[v] = parents[parents[v]];
    return v;
  };
  for (const SpatialBody::Facet& facet : body.facets) {
    const omUInt32 root = rootOf(facet[0]);
    parents[rootOf(facet[1])] = root;
    parents[rootOf(facet[2])] = root;
  }
  for (omUInt32 v = 0; v < parents.size(); ++v)
    if (parents[v] == v && isIn(body.vertices[v]) && !visit(body.vertices[v])) return false;
  return true;
}

/// Looks for a point of one body in the solids of another that it does not meet.
bool findInside(const SpatialBody& solid, const SpatialBody& body, SpatialPoint& inside) {
  const bool isSolid =
      std::any_of(solid.surfaces.begin(), solid.surfaces.end(), [](const auto& s) { return s.isClosed; });
  if (!isSolid || !solid.tree.envelope().meets(body.tree.envelope())) return false;
  return !visitParts(body, solid.tree.envelope(), [&](const SpatialPoint& p) {
    if (!contains(solid, p)) return true;
    inside = p;
    return false;
  });
}

Box boxOf(const SpatialBody& body, std::size_t facet) {
  Box box;
  for (const SpatialPoint& p : body.corners(facet)) box.add(ormix::detail::IndexPoint<3>{p.x, p.y, p.z});
  return box;
}

/// Calls `visit(itemA, itemB)` for the pairs of items whose boxes are nearer than a distance, which visits lower. Down
/// first, with the nearer nodes before the others: from a bound that is nearly the answer this visits few more pairs
/// than an order by distance, and none has to be kept in order.
template <class Visit>
void walkPairs(const ormix::detail::BoxTree<3>& treeA, const ormix::detail::BoxTree<3>& treeB, const omReal64& distance,
               Visit&& visit) {
  using ormix::detail::NodePair;
  const ormix::detail::BoxPairs<3> pairs(treeA, treeB);
  std::vector<NodePair> waiting{pairs.roots()};
  while (!waiting.empty()) {
    const NodePair at = waiting.back();
    waiting.pop_back();
    const omReal64 bound = distance * distance;
    if (!(at.square < bound)) continue;
    if (at.levelA > 0 || at.levelB > 0) {
      const std::size_t first = waiting.size();
      pairs.expand(
          at, [](std::size_t, std::size_t, omReal64) { return true; },
          [&](const NodePair& below) {
            if (below.square < bound) waiting.push_back(below);
          });
      const auto nearest = std::max_element(waiting.begin() + std::ptrdiff_t(first), waiting.end());
      if (nearest != waiting.end()) std::swap(*nearest, waiting.back());
      continue;
    }
    const auto& nodeA = treeA.node(0, at.indexA);
    const auto& nodeB = treeB.node(0, at.indexB);
    constexpr std::size_t width = ormix::detail::BoxTree<3>::s_width;
    const std::size_t nbA = treeA.nbChildren(0, at.indexA), nbB = treeB.nbChildren(0, at.indexB);
    Box boxB;
    for (std::size_t k = 0; k < nbB; ++k) boxB.add(nodeB.child(k));
    for (std::size_t i = 0; i < nbA; ++i) {
      const Box boxA = nodeA.child(i);
      if (!(boxA.squareTo(boxB) < distance * distance)) continue;
      omReal64 squares[width];
      nodeB.squaresTo(boxA, squares);
      for (std::size_t k = 0; k < nbB; ++k)
        if (squares[k] < distance * distance)
          visit(treeA.itemAt(width * at.indexA + i), treeB.itemAt(width * at.indexB + k));
    }
  }
}

SpatialNearestPair nearestOfFacetBodies(const SpatialBody& a, const SpatialBody& b, bool isFilled) {
  SpatialNearestPair best = s_noPair;
  std::size_t bestA = 0, bestB = 0;
  const auto squareOf = [&](std::size_t itemA, std::size_t itemB) {
    const SpatialNearestPair pair =
        nearestOfFacets(a.corners(itemA), a.nbCorners, b.corners(itemB), b.nbCorners, best.distance * best.distance);
    if (pair.distance < best.distance) {
      best = pair;
      bestA = itemA;
      bestB = itemB;
    }
    return best.distance * best.distance;
  };
  const auto lookFromA = [&](std::size_t item) {
    b.tree.visitNearest(boxOf(a, item), best.distance * best.distance,
                        [&](std::size_t other, omReal64) { return squareOf(item, other); });
  };
  const auto lookFromB = [&](std::size_t item) {
    a.tree.visitNearest(boxOf(b, item), best.distance * best.distance,
                        [&](std::size_t other, omReal64) { return squareOf(other, item); });
  };
  // A bound that is nearly the answer first: from a few facets to the nearest of the other, and from there to and fro.
  constexpr std::size_t nbSamples = 16;
  const std::size_t step = a.facets.size() / nbSamples + 1;
  for (std::size_t i = 0; i < a.facets.size(); i += step) lookFromA(i);
  for (omReal64 last = s_infinity; step > 1 && best.distance < last;) {
    last = best.distance;
    lookFromB(bestB);
    lookFromA(bestA);
  }
  walkPairs(a.tree, b.tree, best.distance, squareOf);
  SpatialPoint inside;
  if (isFilled && best.distance > 0 && (findInside(a, b, inside) || findInside(b, a, inside))) return pairAt(inside);
  return best;
}

Box boxOf(const SpatialEllipsoid& e) {
  const auto reach = [&e](omReal64 SpatialPoint::*axis) {
    return std::hypot(e.radii[0] * (e.axes[0].*axis), e.radii[1] * (e.axes[1].*axis), e.radii[2] * (e.axes[2].*axis));
  };
  const SpatialPoint half{reach(&SpatialPoint::x), reach(&SpatialPoint::y), reach(&SpatialPoint::z)};
  const SpatialPoint low = e.center - half, high = e.center + half;
  return {{low.x, low.y, low.z}, {high.x, high.y, high.z}};
}

SpatialNearestPair nearestPairOf(const SpatialBody& facets, const SpatialEllipsoid& ellipsoid, bool isFilled) {
  if (isFilled && contains(facets, ellipsoid.center)) return pairAt(ellipsoid.center);
  SpatialNearestPair best = s_noPair;
  facets.tree.visitNearest(boxOf(ellipsoid), s_infinity, [&](std::size_t facet, omReal64) {
    const SpatialNearestPair pair = triangleEllipsoidNearestPair(triangle(facets.corners(facet)), ellipsoid, isFilled);
    if (pair.distance < best.distance) best = pair;
    return best.distance * best.distance;
  });
  return best;
}

omReal64 heightOver(const SpatialBody& plane, const SpatialPoint& p) { return dot(plane.normal, p) - plane.rho; }
SpatialNearestPair pairToPlane(const SpatialBody& plane, const SpatialPoint& p, omReal64 height) {
  return {std::abs(height), p, p - plane.normal * height};
}

SpatialNearestPair nearestPairToPlane(const SpatialBody& facets, const SpatialBody& plane) {
  std::size_t nearest = 0;
  omReal64 least = s_infinity;
  std::vector<omReal64> heights(facets.vertices.size());
  for (std::size_t v = 0; v < heights.size(); ++v) {
    heights[v] = heightOver(plane, facets.vertices[v]);
    if (!(std::abs(heights[v]) < least)) continue;
    least = std::abs(heights[v]);
    nearest = v;
  }
  for (const SpatialBody::Facet& facet : facets.facets)
    for (std::size_t i = 0; i < 3; ++i) {
      const omUInt32 from = facet[i], to = facet[(i + 1) % 3];
      if (!(heights[from] * heights[to] < 0)) continue;
      const omReal64 share = heights[from] / (heights[from] - heights[to]);
      return pairAt(facets.vertices[from] + (facets.vertices[to] - facets.vertices[from]) * share);
    }
  return pairToPlane(plane, facets.vertices[nearest], heights[nearest]);
}

/// Where they meet, the common point is one of the surface: in the frame where that is the unit sphere, on a great
/// circle through the highest point.
SpatialNearestPair nearestPairToPlane(const SpatialEllipsoid& e, const SpatialBody& plane) {
  const SpatialPoint top = supportPoint(e, plane.normal), bottom = supportPoint(e, plane.normal * -1);
  const omReal64 highest = heightOver(plane, top), lowest = heightOver(plane, bottom);
  if (lowest > 0) return pairToPlane(plane, bottom, lowest);
  if (highest < 0) return pairToPlane(plane, top, highest);
  const SpatialPoint up = ormix::detail::toUnitSphere(e, top);
  SpatialPoint across = cross(up, std::abs(up.x) < 0.7 ? SpatialPoint{1, 0, 0} : SpatialPoint{0, 1, 0});
  across = across * (1 / norm(across));
  const omReal64 cosine = std::clamp((lowest + highest) / (lowest - highest), -1.0, 1.0);
  return pairAt(ormix::detail::fromUnitSphere(e, up * cosine + across * std::sqrt(1 - cosine * cosine)));
}

SpatialNearestPair nearestPairOfPlanes(const SpatialBody& a, const SpatialBody& b) {
  const SpatialPoint along = cross(a.normal, b.normal);
  const SpatialPoint onA = a.normal * a.rho;
  if (norm(along) <= s_parallelSine) return pairToPlane(b, onA, heightOver(b, onA));
  // Down in a to b.
  const SpatialPoint down = cross(along, a.normal);
  return pairAt(onA - down * (heightOver(b, onA) / dot(b.normal, down)));
}

}  // namespace

SpatialNearestPair nearestPair(const SpatialBody& a, const SpatialBody& b, bool isFilled) {
  if (a.kind > b.kind) return exchanged(nearestPair(b, a, isFilled));
  if (b.kind == eBK_Line) return nearestPairToLine(a, b, isFilled);
  if (b.kind == eBK_Round) return nearestPairToRound(a, b, isFilled);
  if (b.kind == eBK_Facets) return nearestOfFacetBodies(a, b, isFilled);
  if (b.kind == eBK_Ellipsoid)
    return a.kind == eBK_Facets ? nearestPairOf(a, b.ellipsoid, isFilled)
                                : ellipsoidsNearestPair(a.ellipsoid, b.ellipsoid, isFilled);
  if (a.kind == eBK_Facets) return nearestPairToPlane(a, b);
  return a.kind == eBK_Ellipsoid ? nearestPairToPlane(a.ellipsoid, b) : nearestPairOfPlanes(a, b);
}

}  // namespace ormix::geom::detail
