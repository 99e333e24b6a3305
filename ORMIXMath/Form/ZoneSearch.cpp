#include "ZoneSearch.h"

#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Hull/ConvexHull2d.h>
#include <ORMIXMath/Hull/ConvexHull3d.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "FormModels.h"
#include "HullOverlay.h"
#include "MinimaxDescent.h"

namespace ormix::detail {

namespace {

// Candidates by the hull's rounded facets that are compared by all points, and of these the ones that are answered.
constexpr std::size_t s_nbCompared = 12;
constexpr std::size_t s_nbAnswered = 2;
// Centres farther away than this many extents of the points are those of lines.
constexpr omReal64 s_farthestCenter = 1e6;

/// The places with the least values.
class Best {
 public:
  void add(omReal64 value, const SpatialPoint& place) {
    if (!(value < worst())) return;
    if (_places.size() == s_nbCompared) _places.pop_back();
    const auto at = std::upper_bound(_places.begin(), _places.end(), value,
                                     [](omReal64 v, const Place& other) { return v < other.value; });
    _places.insert(at, {value, place});
  }
  bool isEmpty() const { return _places.empty(); }
  omReal64 worst() const {
    return _places.size() < s_nbCompared ? std::numeric_limits<omReal64>::infinity() : _places.back().value;
  }
  /// The first places by a value that is computed with all points.
  template <class Value>
  std::vector<SpatialPoint> bestBy(const Value& valueOf) {
    for (Place& place : _places) place.value = valueOf(place.place);
    std::sort(_places.begin(), _places.end(), [](const Place& a, const Place& b) { return a.value < b.value; });
    std::vector<SpatialPoint> result;
    for (std::size_t i = 0; i < std::min(s_nbAnswered, _places.size()); ++i) result.push_back(_places[i].place);
    return result;
  }

 private:
  struct Place {
    omReal64 value;
    SpatialPoint place;
  };
  std::vector<Place> _places;
};

omReal64 lengthOf(const SpatialPoint& v) { return std::sqrt(dot(v, v)); }

omReal64 extentAlong(const SpatialPoint& direction, const std::vector<SpatialPoint>& points) {
  omReal64 lowest = std::numeric_limits<omReal64>::infinity();
  omReal64 highest = -lowest;
  for (const SpatialPoint& p : points) {
    const omReal64 height = dot(p, direction);
    lowest = std::min(lowest, height);
    highest = std::max(highest, height);
  }
  return (highest - lowest) / lengthOf(direction);
}

bool hullOf(const std::vector<SpatialPoint>& points, std::vector<IndexTriangle>& facets) {
  std::vector<omReal64> xyz;
  xyz.reserve(3 * points.size());
  for (const SpatialPoint& p : points) xyz.insert(xyz.end(), {p.x, p.y, p.z});
  return static_cast<bool>(convexHull3d(xyz.data(), points.size(), facets));
}

/// Adds the circle around three nearest points that surround its centre, apart where it does not hold the middle.
void addInscribed(const std::vector<SpatialPoint>& points, const IndexTriangle& facet, const SpatialPoint& middle,
                  Best& best, Best& apart) {
  const SpatialPoint& a = points[facet[0]];
  const omReal64 ux = points[facet[1]].x - a.x;
  const omReal64 uy = points[facet[1]].y - a.y;
  const omReal64 vx = points[facet[2]].x - a.x;
  const omReal64 vy = points[facet[2]].y - a.y;
  const omReal64 uu = ux * ux + uy * uy;
  const omReal64 vv = vx * vx + vy * vy;
  const omReal64 uv = ux * vx + uy * vy;
  const omReal64 twice = 2 * (ux * vy - uy * vx);
  // No angle beyond a right one, but for rounding.
  const omReal64 least = -1e-9 * std::max(uu, vv);
  if (uv < least || uu - uv < least || vv - uv < least || twice == 0) return;
  const SpatialPoint offset{(vy * uu - uy * vv) / twice, (ux * vv - vx * uu) / twice, 0};
  const SpatialPoint center = SpatialPoint{a.x, a.y, 0} + offset;
  Best& where = lengthOf(center - middle) < lengthOf(offset) ? best : apart;
  where.add(-lengthOf(offset), center);
}

}  // namespace

std::vector<SpatialPoint> thinnestDirectionsOfPlane(const std::vector<SpatialPoint>& points) {
  std::vector<omReal64> xy;
  xy.reserve(2 * points.size());
  for (const SpatialPoint& p : points) xy.insert(xy.end(), {p.x, p.y});
  std::vector<omReal64> hull;
  if (!convexHull2d(xy.data(), points.size(), hull)) return {};
  const std::size_t nbVertices = hull.size() / 2;
  const auto vertex = [&](std::size_t i) {
    const std::size_t k = i % nbVertices;
    return SpatialPoint{hull[2 * k], hull[2 * k + 1], 0};
  };
  Best best;
  std::size_t farthest = 1;
  for (std::size_t i = 0; i < nbVertices; ++i) {
    const SpatialPoint along = vertex(i + 1) - vertex(i);
    const SpatialPoint inward = SpatialPoint{-along.y, along.x, 0} / lengthOf(along);
    const auto height = [&](std::size_t k) { return dot(vertex(k) - vertex(i), inward); };
    for (std::size_t k = 0; k < nbVertices && height(farthest + 1) > height(farthest); ++k) ++farthest;
    best.add(height(farthest), inward);
  }
  return best.bestBy([&](const SpatialPoint& direction) { return extentAlong(direction, points); });
}

std::vector<SpatialPoint> thinnestDirectionsOfSpace(const std::vector<SpatialPoint>& points) {
  std::vector<IndexTriangle> facets;
  if (!hullOf(points, facets)) return {};
  Best best;
  visitAntipodalPairs(points, facets, [&](const AntipodalPair& pair) {
    const omReal64 length = lengthOf(pair.direction);
    if (length > 0) best.add(dot(points[pair.upper] - points[pair.lower], pair.direction) / length, pair.direction);
  });
  return best.bestBy([&](const SpatialPoint& direction) { return extentAlong(direction, points); });
}

CircleCandidates circleCandidates(const std::vector<SpatialPoint>& points, const SpatialPoint& middle) {
  std::vector<SpatialPoint> lifted = points;
  for (SpatialPoint& p : lifted) p.z = p.x * p.x + p.y * p.y;
  std::vector<IndexTriangle> facets;
  // Points on one circle are lifted into one plane.
  if (!hullOf(lifted, facets)) return {{middle}, {middle}};
  Best zones;
  visitAntipodalPairs(lifted, facets, [&](const AntipodalPair& pair) {
    const SpatialPoint& n = pair.direction;
    if (!(std::abs(n.x) + std::abs(n.y) < s_farthestCenter * std::abs(n.z))) return;
    const SpatialPoint center{-n.x / (2 * n.z), -n.y / (2 * n.z), 0};
    zones.add(std::abs(lengthOf(points[pair.upper] - center) - lengthOf(points[pair.lower] - center)), center);
  });
  Best inscribed;
  Best apart;
  for (const IndexTriangle& facet : facets) {
    const SpatialPoint n = cross(lifted[facet[1]] - lifted[facet[0]], lifted[facet[2]] - lifted[facet[0]]);
    if (n.z < 0) addInscribed(points, facet, middle, inscribed, apart);
  }
  const auto range = [&](const SpatialPoint& center) { return rangeOf(CenterModel<2>{center}, points); };
  return {zones.bestBy([&](const SpatialPoint& center) { return range(center).highest - range(center).lowest; }),
          (inscribed.isEmpty() ? apart : inscribed).bestBy([&](const SpatialPoint& center) {
            return -range(center).lowest;
          })};
}

}  // namespace ormix::detail
