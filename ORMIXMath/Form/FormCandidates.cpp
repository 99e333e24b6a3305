#include "FormCandidates.h"

#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Hull/ConvexHull2d.h>
#include <ORMIXMath/Hull/ConvexHull3d.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "FormModels.h"
#include "MinimaxDescent.h"

namespace ormix::detail {

namespace {

// Candidates by the hull's rounded facets that are compared by all points, and of these the ones that are answered.
constexpr std::size_t s_nbCompared = 12;
constexpr std::size_t s_nbAnswered = 2;

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

/// Adds the circles of all Delaunay triangles. False where the points are on one circle or line.
bool addEmptyCircles(const std::vector<SpatialPoint>& points, const SpatialPoint& middle, Best& best, Best& apart) {
  std::vector<SpatialPoint> lifted = points;
  for (SpatialPoint& p : lifted) p.z = p.x * p.x + p.y * p.y;
  std::vector<IndexTriangle> facets;
  if (!hullOf(lifted, facets)) return false;
  for (const IndexTriangle& facet : facets) {
    const SpatialPoint n = cross(lifted[facet[1]] - lifted[facet[0]], lifted[facet[2]] - lifted[facet[0]]);
    if (n.z < 0) addInscribed(points, facet, middle, best, apart);
  }
  return true;
}

/// The points, to rounding, that circles around `middle` can touch before they hold another point: an inversion at it
/// makes these circles that hold all points, and touch their convex hull. Empty where a point is in the middle.
std::vector<SpatialPoint> seenFrom(const SpatialPoint& middle, const std::vector<SpatialPoint>& points) {
  const auto inverse = [](omReal64 x, omReal64 y) { return SpatialPoint{x, y, 0} / (x * x + y * y); };
  std::vector<omReal64> xy;
  xy.reserve(2 * points.size());
  for (const SpatialPoint& p : points) {
    const SpatialPoint q = inverse(p.x - middle.x, p.y - middle.y);
    xy.insert(xy.end(), {q.x, q.y});
  }
  std::vector<omReal64> hull;
  if (!convexHull2d(xy.data(), points.size(), hull)) return {};
  std::vector<SpatialPoint> result;
  for (std::size_t i = 0; i < hull.size(); i += 2) result.push_back(middle + inverse(hull[i], hull[i + 1]));
  return result;
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

std::vector<SpatialPoint> inscribedCenters(const std::vector<SpatialPoint>& points, const SpatialPoint& middle) {
  const auto bestOfAll = [&](Best& centers) {
    return centers.bestBy([&](const SpatialPoint& center) { return -rangeOf(CenterModel<2>{center}, points).lowest; });
  };
  // Where most points remain it is as well to take all.
  const std::vector<SpatialPoint> seen = seenFrom(middle, points);
  Best inscribed;
  Best apart;
  if (seen.size() < points.size() / 2 && addEmptyCircles(seen, middle, inscribed, apart) && !inscribed.isEmpty())
    return bestOfAll(inscribed);
  // Points on one circle are lifted into one plane.
  if (!addEmptyCircles(points, middle, inscribed, apart = Best())) return {middle};
  return bestOfAll(inscribed.isEmpty() ? apart : inscribed);
}

}  // namespace ormix::detail
