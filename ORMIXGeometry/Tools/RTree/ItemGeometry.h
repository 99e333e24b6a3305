#pragma once

#include <ORMIXGeometry/Tools/RTree/RTreeItem.h>
#include <ORMIXGeometry/Tools/RTree/SearchPlace.h>
#include <ORMIXMath/Distance/NearestOnSegments.h>
#include <ORMIXMath/Distance/Orientation.h>
#include <ORMIXMath/Distance/TrianglesDistance.h>
#include <ORMIXMath/Distance/TrianglesMeet.h>
#include <ORMIXMath/Index/IndexBox.h>
#include <ORMIXMath/Scalar/EuclideanNorm.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <tuple>

/// \file
/// Distances and meetings of the items of an index, in omReal64; not installed.
///
/// Each class has `box()`, `meets(box)` for a box that its own meets, `squareTo(point)`, `distanceTo(point)` and
/// `distanceTo(segment)`, `squareTo(item, bound)`, which may be infinite where it is not below the bound, and
/// `nearest(item)`. Squares are quick, for choosing: they have a rounding error, are exactly 0 where items have a point
/// in common, and need coordinates of less than 2^500. Distances have all digits, for all coordinates.

namespace ormix::geom::detail {

using ormix::detail::IndexBox;
using ormix::detail::IndexPoint;

inline PlanarPoint toPoint(const IndexPoint<2>& p) { return {p[0], p[1]}; }
inline SpatialPoint toPoint(const IndexPoint<3>& p) { return {p[0], p[1], p[2]}; }
inline PlanarSegment toSegment(const IndexPoint<2>& a, const IndexPoint<2>& b) { return {toPoint(a), toPoint(b)}; }
inline SpatialSegment toSegment(const IndexPoint<3>& a, const IndexPoint<3>& b) { return {toPoint(a), toPoint(b)}; }
inline IndexPoint<2> toIndexPoint(const PlanarPoint& p) { return {p.x, p.y}; }
inline IndexPoint<3> toIndexPoint(const SpatialPoint& p) { return {p.x, p.y, p.z}; }

/// The distance of two items and a point of each at which it is taken.
template <std::size_t D>
struct IndexPair {
  omReal64 distance;
  IndexPoint<D> onA;
  IndexPoint<D> onB;
};
template <class Point>
auto toIndexPair(const NearestPair<Point>& pair) {
  const auto onA = toIndexPoint(pair.onA);
  return IndexPair<std::tuple_size_v<decltype(onA)>>{pair.distance, onA, toIndexPoint(pair.onB)};
}

template <std::size_t D>
IndexPoint<D> minus(const IndexPoint<D>& a, const IndexPoint<D>& b) {
  IndexPoint<D> difference;
  for (std::size_t d = 0; d < D; ++d) difference[d] = a[d] - b[d];
  return difference;
}
template <std::size_t D>
omReal64 dot(const IndexPoint<D>& a, const IndexPoint<D>& b) {
  omReal64 sum = 0;
  for (std::size_t d = 0; d < D; ++d) sum += a[d] * b[d];
  return sum;
}
template <std::size_t D>
IndexPoint<D> along(const IndexPoint<D>& start, const IndexPoint<D>& direction, omReal64 part) {
  IndexPoint<D> point;
  for (std::size_t d = 0; d < D; ++d) point[d] = start[d] + part * direction[d];
  return point;
}
template <std::size_t D>
omReal64 squaredDistance(const IndexPoint<D>& a, const IndexPoint<D>& b) {
  const IndexPoint<D> difference = minus(a, b);
  return dot(difference, difference);
}
/// With halves, which do not overflow.
template <std::size_t D>
omReal64 distanceOf(const IndexPoint<D>& a, const IndexPoint<D>& b) {
  if constexpr (D == 2)
    return 2 * euclideanNorm(0.5 * a[0] - 0.5 * b[0], 0.5 * a[1] - 0.5 * b[1]);
  else
    return 2 * euclideanNorm(0.5 * a[0] - 0.5 * b[0], 0.5 * a[1] - 0.5 * b[1], 0.5 * a[2] - 0.5 * b[2]);
}
template <std::size_t D>
omReal64 magnitudeOf(const IndexPoint<D>& p) {
  omReal64 most = 0;
  for (const omReal64 coordinate : p) most = std::max(most, std::abs(coordinate));
  return most;
}

/// The nearest points of two boxes.
template <std::size_t D>
IndexPair<D> nearestOfBoxes(const IndexBox<D>& a, const IndexBox<D>& b) {
  IndexPair<D> pair;
  for (std::size_t d = 0; d < D; ++d) {
    pair.onA[d] = std::min(std::max(a.low[d], b.low[d]), a.high[d]);
    pair.onB[d] = std::min(std::max(b.low[d], pair.onA[d]), b.high[d]);
  }
  pair.distance = distanceOf(pair.onA, pair.onB);
  return pair;
}

/// The distance of a segment and a box. Its square as a function of the part t of the segment is convex and a parabola
/// between the places where the segment passes the planes of the sides.
template <std::size_t D>
omReal64 distanceToBox(const IndexPoint<D>& start, const IndexPoint<D>& end, const IndexBox<D>& box) {
  const IndexPoint<D> direction = minus(end, start);
  std::array<omReal64, 2 * D + 2> parts;
  std::size_t nbParts = 0;
  parts[nbParts++] = 0;
  for (std::size_t d = 0; d < D; ++d)
    for (const omReal64 side : {box.low[d], box.high[d]}) {
      const omReal64 part = (side - start[d]) / direction[d];
      if (!(part > 0 && part < 1)) continue;
      std::size_t to = nbParts++;
      for (; parts[to - 1] > part; --to) parts[to] = parts[to - 1];
      parts[to] = part;
    }
  parts[nbParts++] = 1;
  omReal64 least = std::numeric_limits<omReal64>::infinity();
  const auto update = [&](const IndexPoint<D>& p) {
    least = std::min(least, nearestOfBoxes(IndexBox<D>{p, p}, box).distance);
  };
  update(end);
  for (std::size_t i = 0; i + 1 < nbParts; ++i) {
    update(along(start, direction, parts[i]));
    // The lowest place of the parabola that holds in the middle of the interval.
    const IndexPoint<D> middle = along(start, direction, 0.5 * parts[i] + 0.5 * parts[i + 1]);
    omReal64 slope = 0;
    omReal64 curvature = 0;
    for (std::size_t d = 0; d < D; ++d) {
      if (middle[d] >= box.low[d] && middle[d] <= box.high[d]) continue;
      const omReal64 side = middle[d] < box.low[d] ? box.low[d] : box.high[d];
      slope += direction[d] * (side - start[d]);
      curvature += direction[d] * direction[d];
    }
    if (const omReal64 part = slope / curvature; part > parts[i] && part < parts[i + 1])
      update(along(start, direction, part));
  }
  return least;
}

/// The part of a box that is in another.
template <std::size_t D>
IndexBox<D> commonBox(const IndexBox<D>& a, const IndexBox<D>& b) {
  IndexBox<D> common;
  for (std::size_t d = 0; d < D; ++d) {
    common.low[d] = std::max(a.low[d], b.low[d]);
    common.high[d] = std::min(a.high[d], b.high[d]);
  }
  return common;
}

/// Whether a point is in a box.
template <std::size_t D>
bool isInside(const IndexPoint<D>& p, const IndexBox<D>& box) {
  return box.meets(IndexBox<D>{p, p});
}

/// Calls `visit(triangle)` with the two triangles of each side of a box, until it answers true.
template <class Visit>
bool anyOfSides(const IndexBox<3>& box, Visit&& visit) {
  for (std::size_t d = 0; d < 3; ++d)
    for (const omReal64 height : {box.low[d], box.high[d]}) {
      const std::size_t u = (d + 1) % 3;
      const std::size_t v = (d + 2) % 3;
      std::array<SpatialPoint, 4> corners;
      for (std::size_t k = 0; k < 4; ++k) {
        IndexPoint<3> corner;
        corner[d] = height;
        corner[u] = k == 0 || k == 3 ? box.low[u] : box.high[u];
        corner[v] = k < 2 ? box.low[v] : box.high[v];
        corners[k] = toPoint(corner);
      }
      if (visit(SpatialTriangle{corners[0], corners[1], corners[2]}) ||
          visit(SpatialTriangle{corners[0], corners[2], corners[3]}))
        return true;
    }
  return false;
}

/// Whether a segment meets a box that is not beyond the box of the segment, exactly. In the plane unless all corners
/// are on one side of it.
inline bool meetsBox(const IndexPoint<2>& a, const IndexPoint<2>& b, const IndexBox<2>& box) {
  int least = 1;
  int greatest = -1;
  for (const omReal64 x : {box.low[0], box.high[0]})
    for (const omReal64 y : {box.low[1], box.high[1]}) {
      const int side = orientation(toPoint(a), toPoint(b), {x, y});
      least = std::min(least, side);
      greatest = std::max(greatest, side);
    }
  return least <= 0 && greatest >= 0;
}
inline bool meetsBox(const IndexPoint<3>& a, const IndexPoint<3>& b, const IndexBox<3>& box) {
  return isInside(a, box) || isInside(b, box) ||
         anyOfSides(box, [&](const SpatialTriangle& side) { return segmentMeetsTriangle(toSegment(a, b), side); });
}

/// The distance of two segments, exactly 0 where they meet.
template <std::size_t D>
IndexPair<D> nearestOfSegments(const IndexPoint<D>& a0, const IndexPoint<D>& a1, const IndexPoint<D>& b0,
                               const IndexPoint<D>& b1) {
  auto pair = toIndexPair(nearestOnSegments(toSegment(a0, a1), toSegment(b0, b1)));
  if constexpr (D == 3)
    if (pair.distance > 0 && segmentsMeet(toSegment(a0, a1), toSegment(b0, b1))) pair.distance = 0;
  return pair;
}

/// Part of the largest coordinate below which a quick distance may be rounding only.
constexpr omReal64 s_quickError = 1e-12;

template <eRTreeItem Kind, std::size_t D>
class ItemGeometry;

template <std::size_t D>
class ItemGeometry<eRTI_Point, D> {
 public:
  explicit ItemGeometry(const std::array<IndexPoint<D>, 1>& points) : _p(points[0]) {}

  IndexBox<D> box() const { return {_p, _p}; }
  bool meets(const IndexBox<D>&) const { return true; }
  omReal64 squareTo(const IndexPoint<D>& p) const { return squaredDistance(_p, p); }
  omReal64 distanceTo(const IndexPoint<D>& p) const { return distanceOf(_p, p); }
  omReal64 distanceTo(const IndexPoint<D>& a, const IndexPoint<D>& b) const {
    return nearestOnSegments(toPoint(_p), toSegment(a, b)).distance;
  }
  omReal64 squareTo(const ItemGeometry& other, omReal64) const { return squaredDistance(_p, other._p); }
  IndexPair<D> nearest(const ItemGeometry& other) const { return {distanceOf(_p, other._p), _p, other._p}; }
  /// Whether items touch since they continue each other.
  bool isAdjacent(const ItemGeometry&) const { return false; }

 private:
  IndexPoint<D> _p;
};

template <std::size_t D>
class ItemGeometry<eRTI_Segment, D> {
 public:
  explicit ItemGeometry(const std::array<IndexPoint<D>, 2>& points) : _a(points[0]), _b(points[1]) {}

  IndexBox<D> box() const {
    IndexBox<D> box;
    box.add(_a);
    box.add(_b);
    return box;
  }
  bool meets(const IndexBox<D>& box) const { return meetsBox(_a, _b, commonBox(box, this->box())); }
  omReal64 squareTo(const IndexPoint<D>& p) const {
    const IndexPoint<D> direction = minus(_b, _a);
    const omReal64 square = dot(direction, direction);
    const omReal64 part = dot(minus(p, _a), direction) / square;
    const omReal64 inside = part > 0 ? part < 1 ? part : 1 : 0;  // NaN where the segment is a point
    return squaredDistance(p, along(_a, direction, inside));
  }
  omReal64 distanceTo(const IndexPoint<D>& p) const {
    return nearestOnSegments(toPoint(p), toSegment(_a, _b)).distance;
  }
  omReal64 distanceTo(const IndexPoint<D>& a, const IndexPoint<D>& b) const {
    return nearestOfSegments(_a, _b, a, b).distance;
  }
  omReal64 squareTo(const ItemGeometry& other, omReal64) const {
    omReal64 square =
        std::min(std::min(squareTo(other._a), squareTo(other._b)), std::min(other.squareTo(_a), other.squareTo(_b)));
    if constexpr (D == 2) {
      if (box().meets(other.box()) && crosses(other)) return 0;
    } else {
      square = std::min(square, squareInside(other));
    }
    const omReal64 error = s_quickError * std::max(magnitudeOf(_a), magnitudeOf(_b));
    if (square > error * error) return square;
    const omReal64 distance = nearest(other).distance;
    return distance * distance;
  }
  IndexPair<D> nearest(const ItemGeometry& other) const { return nearestOfSegments(_a, _b, other._a, other._b); }
  bool isAdjacent(const ItemGeometry& other) const {
    return _a == other._a || _a == other._b || _b == other._a || _b == other._b;
  }

 private:
  /// Whether the ends of each are strictly on different sides of the other.
  bool crosses(const ItemGeometry& other) const { return separates(other) && other.separates(*this); }
  bool separates(const ItemGeometry& other) const {
    return orientation(toPoint(_a), toPoint(_b), toPoint(other._a)) *
               orientation(toPoint(_a), toPoint(_b), toPoint(other._b)) <
           0;
  }
  /// The square of the distance at the common perpendicular, if that is inside both.
  omReal64 squareInside(const ItemGeometry& other) const {
    const IndexPoint<D> u = minus(_b, _a);
    const IndexPoint<D> v = minus(other._b, other._a);
    const IndexPoint<D> w = minus(other._a, _a);
    const omReal64 uu = dot(u, u);
    const omReal64 uv = dot(u, v);
    const omReal64 vv = dot(v, v);
    const omReal64 determinant = uu * vv - uv * uv;
    const omReal64 partA = (dot(u, w) * vv - dot(v, w) * uv) / determinant;
    const omReal64 partB = (dot(u, w) * uv - dot(v, w) * uu) / determinant;
    if (!(partA >= 0 && partA <= 1 && partB >= 0 && partB <= 1)) return std::numeric_limits<omReal64>::infinity();
    return squaredDistance(along(_a, u, partA), along(other._a, v, partB));
  }

  IndexPoint<D> _a;
  IndexPoint<D> _b;
};

template <std::size_t D>
class ItemGeometry<eRTI_Box, D> {
 public:
  /// An inverted box is empty.
  explicit ItemGeometry(const std::array<IndexPoint<D>, 2>& points) {
    const IndexBox<D> box{points[0], points[1]};
    if (!box.empty()) _box = box;
  }

  IndexBox<D> box() const { return _box; }
  bool meets(const IndexBox<D>&) const { return true; }
  omReal64 squareTo(const IndexPoint<D>& p) const { return _box.squareTo(p); }
  omReal64 distanceTo(const IndexPoint<D>& p) const { return nearestOfBoxes(IndexBox<D>{p, p}, _box).distance; }
  omReal64 distanceTo(const IndexPoint<D>& a, const IndexPoint<D>& b) const {
    const IndexBox<D> around = ItemGeometry<eRTI_Segment, D>({a, b}).box();
    if (around.meets(_box) && meetsBox(a, b, commonBox(_box, around))) return 0;
    return distanceToBox(a, b, _box);
  }
  omReal64 squareTo(const ItemGeometry& other, omReal64) const { return _box.squareTo(other._box); }
  IndexPair<D> nearest(const ItemGeometry& other) const { return nearestOfBoxes(_box, other._box); }
  bool isAdjacent(const ItemGeometry&) const { return false; }

 private:
  IndexBox<D> _box;
};

template <>
class ItemGeometry<eRTI_Triangle, 3> {
 public:
  explicit ItemGeometry(const std::array<IndexPoint<3>, 3>& points)
      : _points(points), _triangle{toPoint(points[0]), toPoint(points[1]), toPoint(points[2])} {}

  IndexBox<3> box() const {
    IndexBox<3> box;
    for (const IndexPoint<3>& p : _points) box.add(p);
    return box;
  }
  bool meets(const IndexBox<3>& box) const {
    const auto isCorner = [&box](const IndexPoint<3>& p) { return isInside(p, box); };
    return std::any_of(_points.begin(), _points.end(), isCorner) ||
           anyOfSides(commonBox(box, this->box()),
                      [this](const SpatialTriangle& side) { return trianglesMeet(_triangle, side); });
  }
  omReal64 squareTo(const IndexPoint<3>& p) const {
    const omReal64 distance = distanceTo(p);
    return distance * distance;
  }
  omReal64 distanceTo(const IndexPoint<3>& p) const { return pointTriangleNearestPair(toPoint(p), _triangle).distance; }
  omReal64 distanceTo(const IndexPoint<3>& a, const IndexPoint<3>& b) const {
    return segmentTriangleNearestPair(toSegment(a, b), _triangle).distance;
  }
  omReal64 squareTo(const ItemGeometry& other, omReal64 squareBound) const {
    const omReal64 distance = trianglesNearestPair(_triangle, other._triangle, squareBound).distance;
    return distance * distance;
  }
  IndexPair<3> nearest(const ItemGeometry& other) const {
    return toIndexPair(trianglesNearestPair(_triangle, other._triangle));
  }
  bool isAdjacent(const ItemGeometry& other) const {
    return std::any_of(_points.begin(), _points.end(), [&other](const IndexPoint<3>& p) {
      return std::find(other._points.begin(), other._points.end(), p) != other._points.end();
    });
  }

 private:
  std::array<IndexPoint<3>, 3> _points;
  SpatialTriangle _triangle;
};

/// The geometry of an item as an index keeps it, multiplied by a scale.
template <class Item>
using GeometryOf = ItemGeometry<RTreeItem<Item>::s_kind, RTreeItem<Item>::s_dimension>;
template <class Item>
GeometryOf<Item> geometryOf(const typename RTreeItem<Item>::Points& points, omReal64 scale = 1) {
  std::array<IndexPoint<RTreeItem<Item>::s_dimension>, std::tuple_size_v<typename RTreeItem<Item>::Points>> converted;
  for (std::size_t i = 0; i < points.size(); ++i) {
    converted[i] = coordinatesOf(points[i]);
    for (omReal64& coordinate : converted[i]) coordinate *= scale;
  }
  return GeometryOf<Item>(converted);
}

}  // namespace ormix::geom::detail
