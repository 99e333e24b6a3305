#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Hull/RotatingCalipers.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Scalar/DifferenceOfProducts.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace ormix {

namespace {

using detail::operator-;
using detail::operator*;

omReal64 dot(const PlanarPoint& a, const PlanarPoint& b) { return detail::differenceOfProducts(a.x, b.x, -a.y, b.y); }
omReal64 cross(const PlanarPoint& a, const PlanarPoint& b) { return detail::differenceOfProducts(a.x, b.y, a.y, b.x); }

/// The angle of a direction without sign, in (−π/2, π/2].
omReal64 axisAngle(const PlanarPoint& direction) {
  const bool isForward = direction.x > 0 || (direction.x == 0 && direction.y >= 0);
  return isForward ? std::atan2(direction.y, direction.x) : std::atan2(-direction.y, -direction.x);
}

/// A ring about its first vertex, scaled by a power of two such that it is about 1 in size.
class LocalRing {
 public:
  LocalRing(const omReal64* xy, std::size_t nbVertices) : _origin{xy[0], xy[1]} {
    omReal64 extent = 0;
    for (std::size_t i = 0; i < nbVertices; ++i)
      extent = std::max({extent, std::abs(xy[2 * i] - xy[0]), std::abs(xy[2 * i + 1] - xy[1])});
    const int exponent = extent > 0 ? std::ilogb(extent) : 0;
    // A scale of 2^-1023 is subnormal, but exact.
    _scale = std::ldexp(1.0, std::clamp(-exponent, -1023, 1023));
    _vertices.reserve(nbVertices);
    for (std::size_t i = 0; i < nbVertices; ++i)
      _vertices.push_back({(xy[2 * i] - xy[0]) * _scale, (xy[2 * i + 1] - xy[1]) * _scale});
  }

  std::size_t size() const { return _vertices.size(); }
  std::size_t after(std::size_t i) const { return i + 1 == size() ? 0 : i + 1; }
  const PlanarPoint& operator[](std::size_t i) const { return _vertices[i]; }
  PlanarPoint edge(std::size_t i) const { return _vertices[after(i)] - _vertices[i]; }

  /// The vertex that is farthest in a direction, looked for from a vertex before it on the ring.
  std::size_t farthest(const PlanarPoint& direction, std::size_t from) const {
    for (std::size_t step = 0; step < size() && dot(edge(from), direction) > 0; ++step) from = after(from);
    return from;
  }

  omReal64 length(omReal64 value) const { return value / _scale; }
  PlanarPoint point(const PlanarPoint& p) const { return {_origin.x + p.x / _scale, _origin.y + p.y / _scale}; }

 private:
  PlanarPoint _origin;
  omReal64 _scale;
  std::vector<PlanarPoint> _vertices;
};

FeretDiameter diameterBetween(const LocalRing& ring, const PlanarPoint& from, const PlanarPoint& to) {
  const PlanarPoint across = to - from;
  return {ring.length(std::hypot(across.x, across.y)), axisAngle(across), ring.point(from), ring.point(to)};
}

/// The vertex farthest from the line of each edge, on the left: `visit(edge, vertex)`.
template <class Visit>
void visitAntipodes(const LocalRing& ring, Visit visit) {
  std::size_t opposite = ring.after(0);
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const PlanarPoint edge = ring.edge(i);
    const PlanarPoint left{-edge.y, edge.x};
    opposite = ring.farthest(left, i == 0 ? ring.after(0) : opposite);
    visit(i, opposite);
  }
}

/// A rectangle along an edge: extents relative to the start of the edge, in its direction and across.
struct Extents {
  PlanarPoint start;
  PlanarPoint direction;  ///< of length 1
  omReal64 low;
  omReal64 high;
  omReal64 width;

  omReal64 size(eRectangleSize kind) const {
    return kind == eRectangleSize::Area ? (high - low) * width : (high - low) + width;
  }
};

OrientedRectangle rectangleOf(const LocalRing& ring, const Extents& extents) {
  const PlanarPoint& along = extents.direction;
  const omReal64 middle = 0.5 * (extents.low + extents.high);
  const PlanarPoint center{extents.start.x + middle * along.x - 0.5 * extents.width * along.y,
                           extents.start.y + middle * along.y + 0.5 * extents.width * along.x};
  const omReal64 length = extents.high - extents.low;
  const bool isLong = length >= extents.width;
  return {ring.point(center), ring.length(0.5 * std::max(length, extents.width)),
          ring.length(0.5 * std::min(length, extents.width)),
          axisAngle(isLong ? along : PlanarPoint{-along.y, along.x})};
}

}  // namespace

FeretDiameter greatestFeretDiameter(const omReal64* xy, std::size_t nbVertices) {
  const LocalRing ring(xy, nbVertices);
  omReal64 greatest = -1;
  std::size_t from = 0, to = 0;
  const auto take = [&](std::size_t i, std::size_t j) {
    const PlanarPoint across = ring[j] - ring[i];
    const omReal64 square = dot(across, across);
    if (square <= greatest) return;
    greatest = square;
    from = i;
    to = j;
  };
  // Where edges are parallel, or nearly, either end of the opposite one may be the farther.
  visitAntipodes(ring, [&](std::size_t i, std::size_t opposite) {
    for (const std::size_t end : {i, ring.after(i)})
      for (const std::size_t other : {opposite, ring.after(opposite)}) take(end, other);
  });
  return diameterBetween(ring, ring[from], ring[to]);
}

FeretDiameter leastFeretDiameter(const omReal64* xy, std::size_t nbVertices) {
  const LocalRing ring(xy, nbVertices);
  omReal64 least = -1;
  std::size_t edge = 0, vertex = 0;
  if (ring.size() == 1) return diameterBetween(ring, ring[0], ring[0]);
  visitAntipodes(ring, [&](std::size_t i, std::size_t opposite) {
    const PlanarPoint along = ring.edge(i);
    const omReal64 width = cross(along, ring[opposite] - ring[i]) / std::hypot(along.x, along.y);
    if (least >= 0 && width >= least) return;
    least = width;
    edge = i;
    vertex = opposite;
  });
  const PlanarPoint along = ring.edge(edge);
  const omReal64 part = dot(ring[vertex] - ring[edge], along) / dot(along, along);
  const PlanarPoint foot{ring[edge].x + part * along.x, ring[edge].y + part * along.y};
  return {ring.length(std::max(least, 0.0)), axisAngle({-along.y, along.x}), ring.point(foot),
          ring.point(ring[vertex])};
}

FeretDiameter feretDiameterAt(const omReal64* xy, std::size_t nbVertices, omReal64 angle) {
  const LocalRing ring(xy, nbVertices);
  const PlanarPoint direction{std::cos(angle), std::sin(angle)};
  std::size_t low = 0, high = 0;
  for (std::size_t i = 1; i < ring.size(); ++i) {
    if (dot(ring[i] - ring[low], direction) < 0) low = i;
    if (dot(ring[i] - ring[high], direction) > 0) high = i;
  }
  return {ring.length(dot(ring[high] - ring[low], direction)), axisAngle(direction), ring.point(ring[low]),
          ring.point(ring[high])};
}

OrientedRectangle smallestRectangle(const omReal64* xy, std::size_t nbVertices, eRectangleSize size) {
  const LocalRing ring(xy, nbVertices);
  if (ring.size() == 1) return {ring.point(ring[0]), 0, 0, 0};
  Extents best{};
  std::size_t right = 0, top = 0, left = 0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const PlanarPoint edge = ring.edge(i);
    const omReal64 length = std::hypot(edge.x, edge.y);
    const PlanarPoint along{edge.x / length, edge.y / length};
    // Each is passed before the next one on the ring.
    right = ring.farthest(along, i == 0 ? ring.after(0) : right);
    top = ring.farthest({-along.y, along.x}, i == 0 ? right : top);
    left = ring.farthest({-along.x, -along.y}, i == 0 ? top : left);
    const Extents extents{ring[i], along, dot(ring[left] - ring[i], along), dot(ring[right] - ring[i], along),
                          cross(along, ring[top] - ring[i])};
    if (i == 0 || extents.size(size) < best.size(size)) best = extents;
  }
  return rectangleOf(ring, best);
}

}  // namespace ormix
