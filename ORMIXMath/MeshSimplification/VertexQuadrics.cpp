#include "VertexQuadrics.h"

#include <cmath>

namespace ormix::detail {

namespace {

/// Adds the plane along an edge that is perpendicular to a triangle with this normal of this squared length. The square
/// of the length of edge × normal is that of the edge times that of the normal.
void addEdgePlane(Quadric& quadric, const SpatialPoint& edge, const SpatialPoint& normal, omReal64 square,
                  omReal64 weight) {
  const omReal64 length = std::sqrt(dot(edge, edge));
  if (square > 0 && length > 0) quadric.addPlane(cross(edge, normal), weight / (square * length));
}

}  // namespace

Quadric VertexQuadrics::of(const CollapsingMesh& mesh, const std::vector<omUInt32>& fan) const {
  Quadric quadric;
  for (const omUInt32 side : fan) {
    const SpatialPoint& p = mesh.startOf(side);
    const SpatialPoint out = mesh.startOf(nextSide(side)) - p;
    const SpatialPoint in = mesh.startOf(previousSide(side)) - p;
    const SpatialPoint normal = cross(out, in);
    const omReal64 square = dot(normal, normal);
    // The length of the normal is twice the area.
    if (square > 0) quadric.addPlane(normal, std::sqrt(0.5 * std::sqrt(square)) / square);
    if (mesh.isFeature(side)) addEdgePlane(quadric, out, normal, square, boundaryWeight);
    if (mesh.isFeature(previousSide(side))) addEdgePlane(quadric, in, normal, square, boundaryWeight);
  }
  return quadric;
}

void markFeatures(CollapsingMesh& mesh, omReal64 angle) {
  const omReal64 cosine = std::cos(angle);
  const CollapseTopology& topology = mesh.topology;
  for (omUInt32 side = 0; side < topology.nbSides(); ++side) {
    const omUInt32 other = topology.opposite(side);
    if (other == s_noSide || other < side) continue;
    const SpatialPoint a = mesh.normalOf(side);
    const SpatialPoint b = mesh.normalOf(other);
    const omReal64 lengths = std::sqrt(dot(a, a) * dot(b, b));
    if (!(dot(a, b) < cosine * lengths)) continue;
    mesh.sideFlags[side] |= eSF_Feature;
    mesh.sideFlags[other] |= eSF_Feature;
  }
}

}  // namespace ormix::detail
