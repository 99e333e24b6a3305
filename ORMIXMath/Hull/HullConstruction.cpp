#include "HullConstruction.h"

#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Distance/Orientation.h>
#include <ORMIXMath/Distance/Orientation3d.h>

#include <algorithm>
#include <boost/random/mersenne_twister.hpp>
#include <cmath>
#include <utility>

namespace ormix::detail {

namespace {

// Of the sum of its products' magnitudes: as in orientation3d(), and a roundoff more for the rounding of the sum.
constexpr omReal64 s_heightBound = 9 * 0x1p-53;

// Covers underflow where lengths are below 2^250.
constexpr omReal64 s_underflow = 0x1p-800;

// Steps for each point and binary digit of their number after which the order by height is given up: three times what
// points on a sphere take, which take most of those that are not made for it.
constexpr omReal64 s_mostSteps = 12;

// Cones with fewer facets are looked through one by one.
constexpr std::size_t s_largeCone = 32;

// More points above a facet are many: see takeScheduled().
constexpr omUInt32 s_crowd = 128;

/// The largest difference of coordinates.
omReal64 distance(const SpatialPoint& p, const SpatialPoint& q) {
  return std::max({std::abs(p.x - q.x), std::abs(p.y - q.y), std::abs(p.z - q.z)});
}

bool isEqual(const SpatialPoint& p, const SpatialPoint& q) { return p.x == q.x && p.y == q.y && p.z == q.z; }

/// Whether three points are in line, by their projections, without rounding.
bool isCollinear(const SpatialPoint& a, const SpatialPoint& b, const SpatialPoint& c) {
  return orientation({a.x, a.y}, {b.x, b.y}, {c.x, c.y}) == 0 && orientation({a.y, a.z}, {b.y, b.z}, {c.y, c.z}) == 0 &&
         orientation({a.z, a.x}, {b.z, b.x}, {c.z, c.x}) == 0;
}

/// orientation3d(), which takes differences from its first point. Where coordinates are of very different sizes, the
/// right one keeps the digits that decide and spares the exact determinant: errors grow with the product of the
/// differences.
int orientationFromNear(const SpatialPoint& a, const SpatialPoint& b, const SpatialPoint& c, const SpatialPoint& p) {
  // Points in a plane across an axis are common and need no differences.
  if ((a.x == p.x && b.x == p.x && c.x == p.x) || (a.y == p.y && b.y == p.y && c.y == p.y) ||
      (a.z == p.z && b.z == p.z && c.z == p.z))
    return 0;
  const omReal64 ab = distance(a, b), bc = distance(b, c), ca = distance(c, a);
  const omReal64 pa = distance(p, a), pb = distance(p, b), pc = distance(p, c);
  const omReal64 fromA = ab * ca * pa, fromB = ab * bc * pb, fromC = bc * ca * pc, fromP = pa * pb * pc;
  const omReal64 least = std::min({fromA, fromB, fromC, fromP});
  if (fromA == least) return orientation3d(a, b, c, p);
  if (fromB == least) return orientation3d(b, c, a, p);
  return fromC == least ? orientation3d(c, a, b, p) : orientation3d(p, c, b, a);
}

HullPlane planeThrough(const SpatialPoint& a, const SpatialPoint& b, const SpatialPoint& c,
                       const SpatialPoint& extent) {
  const SpatialPoint u = b - a;
  const SpatialPoint v = c - a;
  const omReal64 magnitudes = (std::abs(u.y * v.z) + std::abs(u.z * v.y)) * extent.x +
                              (std::abs(u.z * v.x) + std::abs(u.x * v.z)) * extent.y +
                              (std::abs(u.x * v.y) + std::abs(u.y * v.x)) * extent.z;
  return {a, cross(u, v), s_heightBound * magnitudes + s_underflow};
}

/// The first of the points with the largest value; 0 when all values are NaN.
template <class Value>
omUInt32 farthestBy(const std::vector<SpatialPoint>& points, Value&& value) {
  omUInt32 best = 0;
  omReal64 largest = -1;
  for (omUInt32 i = 0; i < points.size(); ++i) {
    const omReal64 current = value(points[i]);
    if (current > largest) {
      largest = current;
      best = i;
    }
  }
  return best;
}

/// The candidate if the condition holds for it, else the first point for which it does, else s_noIndex.
template <class Condition>
omUInt32 confirmed(const std::vector<SpatialPoint>& points, omUInt32 candidate, Condition&& condition) {
  if (condition(points[candidate])) return candidate;
  const auto found = std::find_if(points.begin(), points.end(), condition);
  return found == points.end() ? s_noIndex : static_cast<omUInt32>(found - points.begin());
}

}  // namespace

int sideOfFacet(const HullFacet& facet, const std::vector<SpatialPoint>& points, const SpatialPoint& p) {
  const omReal64 height = facet.plane.height(p);
  if (height > facet.plane.uncertainty) return 1;
  if (height < -facet.plane.uncertainty) return -1;
  const SpatialPoint& a = points[facet.vertices[0]];
  const SpatialPoint& b = points[facet.vertices[1]];
  const SpatialPoint& c = points[facet.vertices[2]];
  if (isEqual(p, a) || isEqual(p, b) || isEqual(p, c)) return 0;
  return orientationFromNear(a, b, c, p);
}

int HullConstruction::run() {
  std::array<omUInt32, 4> simplex{};
  const int dimension = findSimplex(simplex);
  if (dimension < 3) return dimension;
  startFrom(simplex);
  const auto nbPoints = static_cast<omReal64>(_points.size());
  const auto mostSteps = static_cast<omUInt64>(s_mostSteps * nbPoints * std::log2(nbPoints));
  for (omUInt32 facet = takeScheduled(); facet != s_noIndex; facet = takeScheduled()) {
    if (_facets[facet].isUsed() && _facets[facet].outside != s_noIndex) insert(_facets[facet].outside, facet);
    if (_nbSteps > mostSteps) {
      insertRest();
      break;
    }
  }
  return 3;
}

/// Inserts the points that wait in random order, in which each is expected to change its facet a logarithmic number of
/// times only, however the points lie (Clarkson1989). Farthest first is faster as a rule, but where each point drawn is
/// the only one above its facet's neighbours, as on a spiral that grows exponentially, all others change theirs each
/// time. The order is the same for the same points.
void HullConstruction::insertRest() {
  _above.assign(_points.size(), s_noIndex);
  std::vector<omUInt32> waiting;
  for (omUInt32 facet = 0; facet < _facets.size(); ++facet) {
    if (!_facets[facet].isUsed()) continue;
    for (omUInt32 point = _facets[facet].outside; point != s_noIndex; point = _next[point]) {
      _above[point] = facet;
      waiting.push_back(point);
    }
  }
  boost::random::mt19937 random;
  for (std::size_t nbLeft = waiting.size(); nbLeft > 0; --nbLeft) {
    // The product is below nbLeft: multiplied out, not divided, and even enough.
    const std::size_t chosen = static_cast<std::size_t>(omUInt64{random()} * nbLeft >> 32U);
    std::swap(waiting[chosen], waiting[nbLeft - 1]);
    const omUInt32 point = waiting[nbLeft - 1];
    if (_above[point] != s_noIndex) insert(point, _above[point]);
  }
}

/// Facets with many points above them take turns, so that the hull grows evenly: one part finished before the next is
/// begun could leave vertices with very many facets, to be made again for each point there. The last few points of a
/// facet are finished on the spot, while their surroundings are at hand in the processor.
omUInt32 HullConstruction::takeScheduled() {
  if (_nbCrowdedTaken < _crowded.size()) return _crowded[_nbCrowdedTaken++];
  _crowded.clear();
  _nbCrowdedTaken = 0;
  if (_pending.empty()) return s_noIndex;
  const omUInt32 facet = _pending.back();
  _pending.pop_back();
  return facet;
}

void HullConstruction::scheduleCone() {
  for (const omUInt32 facet : _cone) {
    if (_facets[facet].nbOutside > s_crowd)
      _crowded.push_back(facet);
    else if (_facets[facet].nbOutside > 0)
      _pending.push_back(facet);
  }
}

int HullConstruction::findSimplex(std::array<omUInt32, 4>& simplex) const {
  if (_points.empty()) return -1;
  simplex[0] = farthestBy(_points, [&](const SpatialPoint& p) {
    const SpatialPoint v = p - _points[0];
    return dot(v, v);
  });
  const SpatialPoint a = _points[simplex[0]];
  simplex[1] = farthestBy(_points, [&](const SpatialPoint& p) {
    const SpatialPoint v = p - a;
    return dot(v, v);
  });
  simplex[1] = confirmed(_points, simplex[1], [&](const SpatialPoint& p) { return !isEqual(p, a); });
  if (simplex[1] == s_noIndex) return 0;
  const SpatialPoint b = _points[simplex[1]];
  const SpatialPoint along = b - a;
  simplex[2] = farthestBy(_points, [&](const SpatialPoint& p) {
    const SpatialPoint v = cross(along, p - a);
    return dot(v, v);
  });
  simplex[2] = confirmed(_points, simplex[2], [&](const SpatialPoint& p) { return !isCollinear(a, b, p); });
  if (simplex[2] == s_noIndex) return 1;
  const SpatialPoint c = _points[simplex[2]];
  const SpatialPoint normal = cross(along, c - a);
  simplex[3] = farthestBy(_points, [&](const SpatialPoint& p) { return std::abs(dot(normal, p - a)); });
  simplex[3] = confirmed(_points, simplex[3], [&](const SpatialPoint& p) { return orientation3d(a, b, c, p) != 0; });
  if (simplex[3] == s_noIndex) return 2;
  if (orientation3d(a, b, c, _points[simplex[3]]) > 0) std::swap(simplex[1], simplex[2]);
  return 3;
}

void HullConstruction::startFrom(const std::array<omUInt32, 4>& simplex) {
  SpatialPoint low = _points[0];
  SpatialPoint high = low;
  for (const SpatialPoint& p : _points) {
    low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
    high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
  }
  _extent = high - low;
  _next.assign(_points.size(), s_noIndex);
  _startsAt.assign(_points.size(), s_noIndex);
  // The fourth point is below the first three: a tetrahedron as a cone over their triangle.
  const omUInt32 base = newFacet(simplex[0], simplex[1], simplex[2]);
  _horizon.clear();
  for (std::size_t i = 0; i < 3; ++i) _horizon.push_back({simplex[(i + 1) % 3], simplex[i], base});
  buildCone(simplex[3]);
  _cone.push_back(base);
  _conePlanes.push_back(_facets[base].plane);
  for (omUInt32 i = 0; i < _points.size(); ++i) assign(i);
  scheduleCone();
}

/// Makes a point that lies above the facet a vertex.
void HullConstruction::insert(omUInt32 apex, omUInt32 facet) {
  findHorizon(facet, _points[apex]);
  _nbSteps += _horizon.size();
  buildCone(apex);
  distribute();
}

/// Walks from a seen facet over all that are seen, collecting the edges at which this ends.
void HullConstruction::findHorizon(omUInt32 facet, const SpatialPoint& eye) {
  // Searches take two numbers: one for what is seen, one for what is not.
  _visit += 2;
  if (_visit < 2) {
    for (HullFacet& each : _facets) each.visit = 0;
    _visit = 2;
  }
  _horizon.clear();
  _seen.assign(1, facet);
  _facets[facet].visit = _visit;
  for (std::size_t i = 0; i < _seen.size(); ++i) {
    const HullFacet& current = _facets[_seen[i]];
    for (std::size_t k = 0; k < 3; ++k) {
      const omUInt32 index = current.neighbours[k];
      HullFacet& neighbour = _facets[index];
      if (neighbour.visit < _visit) {
        const bool isSeen = sideOfFacet(neighbour, _points, eye) > 0;
        neighbour.visit = isSeen ? _visit : _visit + 1;
        if (isSeen) _seen.push_back(index);
      }
      if (neighbour.visit > _visit)
        _horizon.push_back({current.vertices[(k + 1) % 3], current.vertices[(k + 2) % 3], index});
    }
  }
}

/// Facets from every edge of the horizon to the new point, linked to each other and to those beyond; those of a large
/// cone in order around it.
void HullConstruction::buildCone(omUInt32 apex) {
  _cone.clear();
  _conePlanes.clear();
  for (const HorizonEdge& edge : _horizon) {
    const omUInt32 index = newFacet(edge.from, edge.to, apex);
    _cone.push_back(index);
    _conePlanes.push_back(_facets[index].plane);
    _facets[index].neighbours[2] = edge.beyond;
    HullFacet& beyond = _facets[edge.beyond];
    for (std::size_t k = 0; k < 3; ++k)
      if (beyond.vertices[(k + 1) % 3] == edge.to && beyond.vertices[(k + 2) % 3] == edge.from)
        beyond.neighbours[k] = index;
    _startsAt[edge.from] = index;
  }
  for (std::size_t i = 0; i < _cone.size(); ++i) {
    const omUInt32 following = _startsAt[_horizon[i].to];
    _facets[_cone[i]].neighbours[0] = following;
    _facets[following].neighbours[1] = _cone[i];
  }
  if (_cone.size() < s_largeCone) return;
  omUInt32 index = _cone[0];
  for (std::size_t i = 0; i < _cone.size(); ++i, index = _facets[index].neighbours[0]) {
    _cone[i] = index;
    _conePlanes[i] = _facets[index].plane;
  }
}

/// Gives the points above the facets that are seen to the new ones and frees those facets.
void HullConstruction::distribute() {
  for (const omUInt32 facet : _seen) {
    omUInt32 point = _facets[facet].outside;
    while (point != s_noIndex) {
      const omUInt32 following = _next[point];
      assign(point);
      point = following;
    }
    _facets[facet].vertices[0] = s_noIndex;
    _unused.push_back(facet);
  }
  scheduleCone();
}

/// Puts a point to a new facet above which it lies; where there is none, it is inside and dropped for good.
void HullConstruction::assign(omUInt32 point) {
  const SpatialPoint p = _points[point];
  const std::size_t first = firstToTry(p);
  for (std::size_t i = first; i < _conePlanes.size(); ++i) {
    const omReal64 height = _conePlanes[i].height(p);
    if (height < -_conePlanes[i].uncertainty) continue;
    if (height > _conePlanes[i].uncertainty || sideOfFacet(_facets[_cone[i]], _points, p) > 0) {
      _nbSteps += i - first + 1;
      putAbove(_cone[i], point, height);
      return;
    }
  }
  _nbSteps += _conePlanes.size() - first;
  if (!_above.empty()) _above[point] = s_noIndex;
}

/// Where among the cone's facets to begin: before none above which the point lies, and at one where that is known. In
/// logarithmic time for large cones, 0 for others.
///
/// Half-planes from the edge between apex and first corner to the other corners divide a cone into tetrahedral ones. A
/// point strictly between two of them is strictly in the cone or above the facet between their corners; one that is
/// not between any is above the first or the last facet.
std::size_t HullConstruction::firstToTry(const SpatialPoint& p) {
  if (_cone.size() < s_largeCone) return 0;
  const HullFacet& first = _facets[_cone[0]];
  const auto side = [&](std::size_t i) {
    ++_nbSteps;
    const SpatialPoint& corner = _points[_facets[_cone[i]].vertices[0]];
    return orientationFromNear(_points[first.vertices[0]], corner, _points[first.vertices[2]], p);
  };
  std::size_t before = 1;
  std::size_t behind = _cone.size() - 1;
  const int sideOfFirst = side(before);
  if (sideOfFirst > 0) return 0;
  const int sideOfLast = side(behind);
  if (sideOfLast < 0) return behind;
  // In the plane of a half-plane, here or below: rare, and left to the loop over all.
  if (sideOfFirst == 0 || sideOfLast == 0) return 0;
  while (behind - before > 1) {
    const std::size_t middle = before + (behind - before) / 2;
    const int sideOfMiddle = side(middle);
    if (sideOfMiddle == 0) return 0;
    (sideOfMiddle < 0 ? before : behind) = middle;
  }
  const int sideOfBetween = sideOfFacet(_facets[_cone[before]], _points, p);
  if (sideOfBetween == 0) return 0;
  return sideOfBetween > 0 ? before : _cone.size();
}

void HullConstruction::putAbove(omUInt32 facet, omUInt32 point, omReal64 height) {
  HullFacet& target = _facets[facet];
  if (!_above.empty()) _above[point] = facet;
  ++target.nbOutside;
  if (target.outside == s_noIndex || height > target.farthest) {
    _next[point] = target.outside;
    target.outside = point;
    target.farthest = height;
  } else {
    _next[point] = _next[target.outside];
    _next[target.outside] = point;
  }
}

omUInt32 HullConstruction::newFacet(omUInt32 a, omUInt32 b, omUInt32 c) {
  omUInt32 index = static_cast<omUInt32>(_facets.size());
  if (_unused.empty()) {
    _facets.emplace_back();
  } else {
    index = _unused.back();
    _unused.pop_back();
  }
  HullFacet& facet = _facets[index];
  facet.plane = planeThrough(_points[a], _points[b], _points[c], _extent);
  facet.vertices = {a, b, c};
  facet.neighbours = {s_noIndex, s_noIndex, s_noIndex};
  facet.outside = s_noIndex;
  facet.farthest = 0;
  facet.nbOutside = 0;
  facet.visit = 0;
  return index;
}

}  // namespace ormix::detail
