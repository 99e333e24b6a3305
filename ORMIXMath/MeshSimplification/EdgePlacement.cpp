#include "EdgePlacement.h"

#include <algorithm>
#include <cmath>

namespace ormix::detail {

namespace {

/// Up to this share of the edge's squared length times the weight, costs count as equal: a millionth of the length.
constexpr omReal64 s_equalCosts = 1e-12;

/// Up to this share of the fans' area times the edge's length volumes count as equal.
constexpr omReal64 s_sameVolume = 1e-14;

/// The quadrics of both ends about the midpoint of an edge.
struct EdgeQuadric {
  SpatialPoint half;  ///< from the midpoint to the end
  SpatialPoint midpoint;
  Quadric sum;

  EdgeQuadric(const CollapsingMesh& mesh, omUInt32 side) {
    const omUInt32 u = mesh.topology.start(side);
    const omUInt32 v = mesh.topology.end(side);
    half = (mesh.positions[v] - mesh.positions[u]) * 0.5;
    midpoint = mesh.positions[u] + half;
    sum = mesh.quadrics[u].shifted(half);
    sum += mesh.quadrics[v].shifted(half * -1);
  }
  omReal64 equalCosts() const { return s_equalCosts * sum.weight() * 4 * dot(half, half); }
};

/// Six times the volume between a point and the triangles around an edge: as they are, and, as the scalar product of
/// its place and a vector, as they are when the edge has become a vertex.
struct FanVolume {
  omReal64 before = 0;
  SpatialPoint after{0, 0, 0};

  FanVolume(const CollapsingMesh& mesh, const CollapsingEdge& edge, const SpatialPoint& origin) {
    for (int end = 0; end < 2; ++end) {
      const SpatialPoint position = mesh.positions[edge.ends[end]] - origin;
      for (const omUInt32 side : edge.fans[end]) {
        const bool isGoing = edge.isGoing(mesh.topology, side);
        if (isGoing && end == 1) continue;
        const SpatialPoint a = mesh.startOf(nextSide(side)) - origin;
        const SpatialPoint b = mesh.startOf(previousSide(side)) - origin;
        const SpatialPoint product = cross(a, b);
        before += dot(position, product);
        if (!isGoing) after = after + product;
      }
    }
  }
};

}  // namespace

omReal64 EdgePlacement::leastCost(const CollapsingMesh& mesh, omUInt32 side) const {
  const EdgeQuadric edge(mesh, side);
  if (placement == eCP_Best && rounding.round == nullptr) {
    const SpatialPoint d = QuadricInverse(edge.sum) * (edge.sum.b * -1);
    const omReal64 cost = edge.sum.at(d);
    return std::max(cost, edge.equalCosts());
  }
  const CollapsePlaces found = places(mesh, side);
  return std::max(found.places[0].cost, edge.equalCosts());
}

CollapsePlaces EdgePlacement::places(const CollapsingMesh& mesh, omUInt32 side) const {
  const EdgeQuadric edge(mesh, side);
  const omUInt32 u = mesh.topology.start(side);
  const omUInt32 v = mesh.topology.end(side);
  CollapsePlaces places;
  const omReal64 costOfU = edge.sum.at(edge.half * -1);
  const omReal64 costOfV = edge.sum.at(edge.half);
  places.add({mesh.positions[u], costOfU, u});
  places.add({mesh.positions[v], costOfV, v});
  if (placement == eCP_Ends) return places;
  const SpatialPoint d = QuadricInverse(edge.sum) * (edge.sum.b * -1);
  const SpatialPoint best = rounding(edge.midpoint + d);
  const omReal64 cost = edge.sum.at(best - edge.midpoint);
  if (cost + edge.equalCosts() < std::min(costOfU, costOfV)) places.add({best, cost, s_noSide});
  return places;
}

omReal64 EdgePlacement::errorAt(const CollapsingMesh& mesh, omUInt32 side, const SpatialPoint& position) {
  omReal64 greatest = 0;
  for (const omUInt32 vertex : {mesh.topology.start(side), mesh.topology.end(side)}) {
    const Quadric& quadric = mesh.quadrics[vertex];
    const omReal64 cost = quadric.at(position - mesh.positions[vertex]);
    if (cost > 0) greatest = std::max(greatest, cost / quadric.weight());
  }
  return std::sqrt(greatest);
}

bool EdgePlacement::keepVolume(const CollapsingMesh& mesh, const CollapsingEdge& edge, CollapsePlace& place) const {
  const EdgeQuadric quadric(mesh, edge.side);
  const FanVolume volume(mesh, edge, quadric.midpoint);
  const omReal64 change = dot(place.position - quadric.midpoint, volume.after) - volume.before;
  const omReal64 size = dot(volume.after, volume.after) * dot(quadric.half, quadric.half);
  if (std::abs(change) <= s_sameVolume * std::sqrt(size)) return true;
  if (place.end != s_noSide) return false;
  const SpatialPoint direction = QuadricInverse(quadric.sum) * volume.after;
  const omReal64 slope = dot(volume.after, direction);
  if (!(slope > 0)) return false;
  place.position = rounding(place.position - direction * (change / slope));
  place.cost = quadric.sum.at(place.position - quadric.midpoint);
  return true;
}

}  // namespace ormix::detail
