#include "SampledDistance.h"

#include <ORMIXGeometry/Entity/3d/Mesh/EdgeIndex.h>
#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Index/BoxTree.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace ormix::geom::detail {

namespace {

// Those of points, as arithmetic of entities has its own in this namespace.
using ormix::detail::cross;
using ormix::detail::dot;
using ormix::detail::operator+;
using ormix::detail::operator-;
using ormix::detail::operator*;
using ormix::detail::operator/;

template <class T>
SpatialPoint pointOf(const TriMesh3d<T>& mesh, std::size_t vertex) {
  const T* xyz = mesh.getCoordinates() + 3 * vertex;
  return toSpatialPoint(xyz[0], xyz[1], xyz[2]);
}

omReal64 squareToSegment(const SpatialPoint& p, const SpatialPoint& a, const SpatialPoint& ab) {
  const SpatialPoint ap = p - a;
  const omReal64 square = dot(ab, ab);
  const SpatialPoint rest = square > 0 ? ap - ab * std::clamp(dot(ap, ab) / square, 0.0, 1.0) : ap;
  return dot(rest, rest);
}

/// The square of the distance of a point from a triangle: from its plane where the foot is inside, else from its
/// nearest side.
omReal64 squareToTriangle(const SpatialPoint& p, const SpatialPoint& a, const SpatialPoint& b, const SpatialPoint& c) {
  const SpatialPoint ab = b - a;
  const SpatialPoint bc = c - b;
  const SpatialPoint ca = a - c;
  const SpatialPoint normal = cross(ab, bc);
  const SpatialPoint ap = p - a;
  const bool isInside =
      dot(cross(ab, ap), normal) >= 0 && dot(cross(bc, p - b), normal) >= 0 && dot(cross(ca, p - c), normal) >= 0;
  const omReal64 square = dot(normal, normal);
  if (isInside && square > 0) {
    const omReal64 height = dot(ap, normal);
    return height * height / square;
  }
  return std::min({squareToSegment(p, a, ab), squareToSegment(p, b, bc), squareToSegment(p, c, ca)});
}

/// Finds the nearest triangle of each sample, beginning with the one of the sample before.
template <class T>
class DistanceSampler {
 public:
  DistanceSampler(const TriMesh3d<T>& mesh, std::size_t nbSamples)
      : _mesh(mesh),
        _tree(boxesOf(mesh)),
        _nbLooksLeft(s_looksOfSample * nbSamples + s_looksOfSample * mesh.getNbTriangles()) {}

  void sample(const SpatialPoint& p) {
    if (_nbLooksLeft == 0) return;
    const omReal64 bound = squareTo(p, _last);
    const auto found = _tree.nearest(IndexPoint{p.x, p.y, p.z}, bound, [&](std::size_t i) { return squareTo(p, i); });
    if (_nbLooksLeft == 0) return;
    if (found.item != Tree::s_none) _last = found.item;
    const omReal64 distance = std::sqrt(found.square);
    _greatest = std::max(_greatest, distance);
    _sum += distance;
    ++_nb;
  }

  SampledDistance result() const { return {_greatest, _nb == 0 ? 0 : _sum / static_cast<omReal64>(_nb), _nb}; }

 private:
  using Tree = ormix::detail::BoxTree<3>;
  using IndexPoint = ormix::detail::IndexPoint<3>;

  static std::vector<ormix::detail::IndexBox<3>> boxesOf(const TriMesh3d<T>& mesh) {
    std::vector<ormix::detail::IndexBox<3>> boxes(mesh.getNbTriangles());
    for (std::size_t i = 0; i < boxes.size(); ++i)
      for (const omUInt32 vertex : mesh.getTriangleVertexIndices(i)) {
        const SpatialPoint p = pointOf(mesh, vertex);
        boxes[i].add(IndexPoint{p.x, p.y, p.z});
      }
    return boxes;
  }

  omReal64 squareTo(const SpatialPoint& p, std::size_t triangle) {
    if (_nbLooksLeft == 0) return std::numeric_limits<omReal64>::infinity();
    --_nbLooksLeft;
    const IndexTriangle corners = _mesh.getTriangleVertexIndices(triangle);
    return squareToTriangle(p, pointOf(_mesh, corners[0]), pointOf(_mesh, corners[1]), pointOf(_mesh, corners[2]));
  }

  /// Triangles looked at for a sample, on average, at most. About ten are on common meshes.
  static constexpr std::size_t s_looksOfSample = 64;

  const TriMesh3d<T> _mesh;
  const Tree _tree;
  std::size_t _last = 0;
  omReal64 _greatest = 0;
  omReal64 _sum = 0;
  std::size_t _nb = 0;
  std::size_t _nbLooksLeft;
};

}  // namespace

template <class T>
SampledDistance sampledDistance(const TriMesh3d<T>& from, const TriMesh3d<T>& to) {
  if (from.getNbTriangles() == 0 || to.getNbTriangles() == 0) return {};
  DistanceSampler<T> sampler(to, from.getNbVertices() + from.getNbTriangles());
  std::vector<bool> isUsed(from.getNbVertices());
  visitTriangleIndices(from, [&](omUInt32 a, omUInt32 b, omUInt32 c) {
    isUsed[a] = isUsed[b] = isUsed[c] = true;
    sampler.sample((pointOf(from, a) + pointOf(from, b) + pointOf(from, c)) / 3);
  });
  for (std::size_t vertex = 0; vertex < isUsed.size(); ++vertex)
    if (isUsed[vertex]) sampler.sample(pointOf(from, vertex));
  EdgeIndex edges(from.getNbVertices(), from.getIndices(), from.getNbTriangles());
  edges.visitEdges([&](omUInt32 lower, const EdgeIndex::Side* first, const EdgeIndex::Side*) {
    sampler.sample((pointOf(from, lower) + pointOf(from, first->higherVertexIdx)) / 2);
  });
  return sampler.result();
}

template SampledDistance sampledDistance(const TriMesh3d<omInt32>&, const TriMesh3d<omInt32>&);
template SampledDistance sampledDistance(const TriMesh3d<omUInt32>&, const TriMesh3d<omUInt32>&);
template SampledDistance sampledDistance(const TriMesh3d<omReal32>&, const TriMesh3d<omReal32>&);
template SampledDistance sampledDistance(const TriMesh3d<omReal64>&, const TriMesh3d<omReal64>&);

}  // namespace ormix::geom::detail
