#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Enclosing/OrientedBox.h>
#include <ORMIXMath/Hull/ConvexHull2d.h>
#include <ORMIXMath/Hull/ConvexHull3d.h>
#include <ORMIXMath/Hull/RotatingCalipers.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace ormix {

namespace {

using namespace detail;

// Vertices that may be projected along faces: about a second. Hulls beyond have so many faces that every k-th of them
// is near to the others.
constexpr std::size_t s_mostSteps = 5000000;

// Directions to start from besides those of faces, evenly spread.
constexpr int s_nbSpread = 64;

// Hulls with at most so many edges are also looked at along the common perpendiculars of any two of them.
constexpr std::size_t s_mostPairedEdges = 64;

// The best starts, which are improved.
constexpr std::size_t s_nbStarts = 12;

// What counts as smaller, more than rounding.
constexpr omReal64 s_better = 1 - 1e-12;

// What a pass with the same angle has to gain for another one, and how many there are at most.
constexpr omReal64 s_worthAPass = 1 - 1e-5;
constexpr int s_mostPasses = 100;

// What rounding of the projections may lose, of the box's extent.
constexpr omReal64 s_projectionError = 0x1p-49;

using Axes = std::array<SpatialPoint, 3>;

/// A box in some frame, as intervals along its axes.
struct Candidate {
  omReal64 volume = std::numeric_limits<omReal64>::infinity();
  Axes axes{};
  std::array<omReal64, 3> low{};
  std::array<omReal64, 3> high{};
};

omReal64 lengthOf(const SpatialPoint& v) { return std::hypot(v.x, v.y, v.z); }

/// Unit vectors u, v, w with u × v = w.
Axes frameAround(const SpatialPoint& w) {
  const SpatialPoint other = std::abs(w.x) < 0.6 ? SpatialPoint{1, 0, 0} : SpatialPoint{0, 1, 0};
  SpatialPoint u = cross(other, w);
  u = u / lengthOf(u);
  return {u, cross(w, u), w};
}

class BoxSearch {
 public:
  explicit BoxSearch(std::vector<SpatialPoint> vertices) : _vertices(std::move(vertices)) {}

  /// The box in this frame.
  Candidate in(const Axes& axes) const {
    Candidate box;
    box.axes = axes;
    box.volume = 1;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      omReal64 low = std::numeric_limits<omReal64>::infinity();
      omReal64 high = -low;
      for (const SpatialPoint& vertex : _vertices) {
        const omReal64 at = dot(axes[axis], vertex);
        low = at < low ? at : low;
        high = high < at ? at : high;
      }
      box.low[axis] = low;
      box.high[axis] = high;
      box.volume *= high - low;
    }
    return box;
  }

  /// The smallest box with an axis along a vector: over the smallest rectangle around the projection.
  Candidate along(const SpatialPoint& towards) {
    const SpatialPoint direction = towards / lengthOf(towards);
    const Axes axes = frameAround(direction);
    _projected.clear();
    for (const SpatialPoint& vertex : _vertices)
      _projected.insert(_projected.end(), {dot(axes[0], vertex), dot(axes[1], vertex)});
    if (!convexHull2d(_projected.data(), _vertices.size(), _hull)) return {};
    const omReal64 angle = smallestRectangle(_hull.data(), _hull.size() / 2, eRectangleSize::Area).angle;
    const omReal64 c = std::cos(angle);
    const omReal64 s = std::sin(angle);
    const SpatialPoint u = axes[0] * c + axes[1] * s;
    return in({u, cross(direction, u), direction});
  }

  /// Turns a box until no turn makes it much smaller: about its axes as far as is best, and by small angles.
  Candidate improved(Candidate box) {
    omReal64 angle = 0.2;
    for (int pass = 0; pass < s_mostPasses && angle > 1e-5; ++pass) {
      const omReal64 before = box.volume;
      for (const SpatialPoint& axis : Axes(box.axes)) take(along(axis), box);
      for (std::size_t axis = 0; axis < 3; ++axis)
        for (const omReal64 turn : {angle, -angle}) take(in(turned(box.axes, axis, turn)), box);
      if (!(box.volume < before * s_worthAPass)) angle /= 3;
    }
    return box;
  }

  static void take(const Candidate& other, Candidate& best) {
    if (other.volume < best.volume * s_better) best = other;
  }

 private:
  static Axes turned(const Axes& axes, std::size_t about, omReal64 angle) {
    const std::size_t i = (about + 1) % 3;
    const std::size_t j = (about + 2) % 3;
    // Made orthonormal each time: errors would multiply from turn to turn.
    Axes result;
    result[about] = axes[about] / lengthOf(axes[about]);
    const SpatialPoint moved = axes[i] * std::cos(angle) + axes[j] * std::sin(angle);
    const SpatialPoint across = moved - result[about] * dot(moved, result[about]);
    result[i] = across / lengthOf(across);
    result[j] = cross(result[about], result[i]);
    return result;
  }

  std::vector<SpatialPoint> _vertices;
  std::vector<omReal64> _projected;
  std::vector<omReal64> _hull;
};

/// The first of several boxes that are kept, the smallest.
class BestBoxes {
 public:
  void add(const Candidate& box) {
    const auto at = std::upper_bound(_boxes.begin(), _boxes.end(), box,
                                     [](const Candidate& a, const Candidate& b) { return a.volume < b.volume; });
    // Of equal ones, as of the two triangles of a face, one is enough.
    if (at != _boxes.begin() && box.volume * s_better < std::prev(at)->volume) return;
    _boxes.insert(at, box);
    if (_boxes.size() > s_nbStarts) _boxes.pop_back();
  }
  const std::vector<Candidate>& boxes() const { return _boxes; }

 private:
  std::vector<Candidate> _boxes;
};

/// The box of points that are in one plane, on a line, or all equal.
Candidate flatBox(const std::vector<SpatialPoint>& points) {
  const auto farthest = [&points](auto distance) {
    return *std::max_element(points.begin(), points.end(), [&distance](const SpatialPoint& a, const SpatialPoint& b) {
      return distance(a) < distance(b);
    });
  };
  const auto farthestFrom = [&](const SpatialPoint& p) {
    return farthest([&p](const SpatialPoint& q) { return lengthOf(q - p); });
  };
  const SpatialPoint from = farthestFrom(points.front());
  const SpatialPoint span = farthestFrom(from) - from;
  const omReal64 length = lengthOf(span);
  const SpatialPoint direction = length > 0 ? span / length : SpatialPoint{1, 0, 0};
  const SpatialPoint apex = farthest([&](const SpatialPoint& q) { return lengthOf(cross(direction, q - from)); });
  const SpatialPoint normal = cross(direction, apex - from);
  const omReal64 width = lengthOf(normal);
  BoxSearch search(points);
  // Beside a line, any direction across it will do.
  if (!(width > length * s_projectionError)) {
    const Axes frame = frameAround(direction);
    return search.in({direction, frame[0], frame[1]});
  }
  return search.along(normal);
}

Candidate smallestOf(const std::vector<SpatialPoint>& points, const std::vector<IndexTriangle>& triangles) {
  std::vector<std::size_t> used;
  for (const IndexTriangle& triangle : triangles) used.insert(used.end(), triangle.begin(), triangle.end());
  std::sort(used.begin(), used.end());
  used.erase(std::unique(used.begin(), used.end()), used.end());
  std::vector<SpatialPoint> vertices;
  for (const std::size_t index : used) vertices.push_back(points[index]);
  const std::size_t step = 1 + triangles.size() / std::max<std::size_t>(1, s_mostSteps / vertices.size());
  BoxSearch search(vertices);
  BestBoxes best;
  const auto tryAlong = [&](const SpatialPoint& direction) {
    if (lengthOf(direction) > 0) best.add(search.along(direction));
  };
  std::vector<SpatialPoint> edges;
  for (std::size_t t = 0; t < triangles.size(); ++t) {
    const SpatialPoint& a = points[triangles[t][0]];
    const SpatialPoint& b = points[triangles[t][1]];
    const SpatialPoint& c = points[triangles[t][2]];
    if (t % step == 0) tryAlong(cross(b - a, c - a));
    for (std::size_t k = 0; k < 3 && edges.size() <= s_mostPairedEdges; ++k)
      if (triangles[t][k] < triangles[t][(k + 1) % 3])
        edges.push_back(points[triangles[t][(k + 1) % 3]] - points[triangles[t][k]]);
  }
  if (edges.size() <= s_mostPairedEdges)
    for (std::size_t i = 0; i < edges.size(); ++i)
      for (std::size_t j = 0; j < i; ++j) tryAlong(cross(edges[i], edges[j]));
  // A spiral from pole to pole of a half sphere, by the golden angle.
  for (int k = 0; k < s_nbSpread; ++k) {
    const omReal64 z = (k + 0.5) / s_nbSpread;
    const omReal64 angle = k * 2.399963229728653;
    const omReal64 radius = std::sqrt(1 - z * z);
    tryAlong({radius * std::cos(angle), radius * std::sin(angle), z});
  }
  Candidate smallest = best.boxes().front();
  for (const Candidate& start : best.boxes()) BoxSearch::take(search.improved(start), smallest);
  return smallest;
}

/// The box with descending sizes, moved back to where the points are and made as large as rounding may have cost.
OrientedBox placed(const Candidate& found, const SpatialPoint& origin, int exponent) {
  std::array<std::size_t, 3> order{0, 1, 2};
  std::sort(order.begin(), order.end(), [&found](std::size_t a, std::size_t b) {
    return found.high[a] - found.low[a] > found.high[b] - found.low[b];
  });
  Axes axes{found.axes[order[0]], found.axes[order[1]], {}};
  axes[2] = cross(axes[0], axes[1]);
  OrientedBox box;
  SpatialPoint center{0, 0, 0};
  const omReal64 extent = std::max(lengthOf({found.low[0], found.low[1], found.low[2]}),
                                   lengthOf({found.high[0], found.high[1], found.high[2]}));
  for (std::size_t k = 0; k < 3; ++k) {
    const std::size_t axis = order[k];
    center = center + found.axes[axis] * (found.low[axis] / 2 + found.high[axis] / 2);
    box.halfSizes[k] = std::ldexp((found.high[axis] - found.low[axis]) / 2 + extent * s_projectionError, exponent);
    box.axes[0][k] = axes[k].x;
    box.axes[1][k] = axes[k].y;
    box.axes[2][k] = axes[k].z;
  }
  box.center = {origin.x + std::ldexp(center.x, exponent), origin.y + std::ldexp(center.y, exponent),
                origin.z + std::ldexp(center.z, exponent)};
  if (extent == 0) box.halfSizes = {0, 0, 0};
  return box;
}

}  // namespace

BoolResult smallestOrientedBox(const omReal64* xyz, std::size_t nbPoints, OrientedBox& box) {
  const std::string what = "Smallest box around points in space: ";
  if (nbPoints == 0) return failure(what + "at least one point is needed, 0 given");
  const SpatialPoint origin{xyz[0], xyz[1], xyz[2]};
  std::vector<SpatialPoint> points;
  points.reserve(nbPoints);
  omReal64 extent = 0;
  for (std::size_t i = 0; i < nbPoints; ++i) {
    const SpatialPoint point{xyz[3 * i], xyz[3 * i + 1], xyz[3 * i + 2]};
    if (!std::isfinite(point.x) || !std::isfinite(point.y) || !std::isfinite(point.z))
      return failure(what + "point " + std::to_string(i) + " has a coordinate that is NaN or infinite");
    points.push_back(point - origin);
    extent = std::max({extent, std::abs(points.back().x), std::abs(points.back().y), std::abs(points.back().z)});
  }
  if (!std::isfinite(extent)) return failure(what + "the extent exceeds every finite number");
  // Magnitudes of about 1, so that volumes neither overflow nor underflow; by a power of two, which is exact.
  int exponent = 0;
  std::frexp(extent, &exponent);
  for (SpatialPoint& point : points)
    point = {std::ldexp(point.x, -exponent), std::ldexp(point.y, -exponent), std::ldexp(point.z, -exponent)};
  std::vector<IndexTriangle> triangles;
  const bool isSolid = static_cast<bool>(convexHull3d(&points.front().x, nbPoints, triangles));
  const OrientedBox found = placed(isSolid ? smallestOf(points, triangles) : flatBox(points), origin, exponent);
  if (!std::isfinite(found.halfSizes[0])) return failure(what + "the extent exceeds every finite number");
  box = found;
  return {};
}

}  // namespace ormix
