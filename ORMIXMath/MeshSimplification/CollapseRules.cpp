#include "CollapseRules.h"

#include <algorithm>
#include <cmath>

namespace ormix::detail {

namespace {

/// Least cosine between the normals of a triangle before and after a collapse.
constexpr omReal64 s_leastCosine = 0.5;
/// What vertices on a straight boundary may be off it by rounding. The extent of the mesh is about 1.
constexpr omReal64 s_noDrift = 0x1p-40;
/// Least ratio of twice the area to the square of the longest side, of a triangle that a collapse makes more slender.
constexpr omReal64 s_leastRoundness = 1e-4;

bool isOnBoundary(const CollapseTopology& topology, const std::vector<omUInt32>& fan) {
  return topology.opposite(fan.front()) == s_noSide;
}

/// The number of sides of features at an end.
int countFeatures(const CollapsingMesh& mesh, const std::vector<omUInt32>& fan) {
  int nb = 0;
  for (const omUInt32 side : fan) nb += mesh.isFeature(side) ? 1 : 0;
  return nb + (mesh.topology.opposite(previousSide(fan.back())) == s_noSide ? 1 : 0);
}

/// Twice the area over the square of the longest side, squared.
omReal64 squaredRoundness(const SpatialPoint& normal, const SpatialPoint& a, const SpatialPoint& b) {
  const SpatialPoint c = b - a;
  const omReal64 longest = std::max(std::max(dot(a, a), dot(b, b)), dot(c, c));
  return dot(normal, normal) / (longest * longest);
}

omReal64 distanceToSegment(const SpatialPoint& p, const SpatialPoint& a, const SpatialPoint& b) {
  const SpatialPoint ab = b - a;
  const SpatialPoint ap = p - a;
  const omReal64 square = dot(ab, ab);
  const omReal64 t = square > 0 ? std::clamp(dot(ap, ab) / square, 0.0, 1.0) : 0;
  const SpatialPoint rest = ap - ab * t;
  return std::sqrt(dot(rest, rest));
}

}  // namespace

bool keepsTopology(const CollapsingMesh& mesh, const CollapsingEdge& edge, VertexMarks& marks) {
  const CollapseTopology& topology = mesh.topology;
  const omUInt32 sides[2] = {edge.side, topology.opposite(edge.side)};
  const bool isInner = sides[1] != s_noSide;
  if (isInner && isOnBoundary(topology, edge.fans[0]) && isOnBoundary(topology, edge.fans[1])) return false;
  for (const omUInt32 side : sides) {
    if (side == s_noSide) continue;
    const omUInt32 apex = topology.start(previousSide(side));
    if (topology.valence(apex) <= (topology.isOnBoundary(apex) ? 1u : 3u)) return false;
  }
  marks.clear();
  visitNeighbours(topology, edge.fans[0], [&](omUInt32 vertex) { marks.mark(topology.originOf(vertex)); });
  int nbCommon = 0;
  visitNeighbours(topology, edge.fans[1],
                  [&](omUInt32 vertex) { nbCommon += marks.isMarked(topology.originOf(vertex)) ? 1 : 0; });
  return nbCommon == (isInner ? 2 : 1);
}

AllowedPlaces allowedByLocks(const CollapsingMesh& mesh, const CollapsingEdge& edge) {
  AllowedPlaces allowed;
  for (int end = 0; end < 2; ++end) {
    const eVertexFreedom freedom = mesh.freedoms[edge.ends[end]];
    if (freedom != eVF_Free) allowed.keepOnly(end);
    if (freedom == eVF_Pinned) allowed.ends[end] = false;
  }
  return allowed;
}

void restrictToFeatures(const CollapsingMesh& mesh, const CollapsingEdge& edge, AllowedPlaces& allowed) {
  const bool isAlong = mesh.isFeature(edge.side);
  for (int end = 0; end < 2; ++end) {
    const int nb = countFeatures(mesh, edge.fans[end]);
    if (isAlong ? nb != 2 : nb != 0) allowed.keepOnly(end);
  }
  // A triangle of features would become a line.
  for (const omUInt32 side : {edge.side, mesh.topology.opposite(edge.side)})
    if (side != s_noSide && mesh.isFeature(nextSide(side)) && mesh.isFeature(previousSide(side)))
      allowed.ends[0] = allowed.ends[1] = allowed.elsewhere = false;
}

bool keepsNormals(const CollapsingMesh& mesh, const CollapsingEdge& edge, const SpatialPoint& position) {
  for (int end = 0; end < 2; ++end) {
    const SpatialPoint& from = mesh.positions[edge.ends[end]];
    if (from.x == position.x && from.y == position.y && from.z == position.z) continue;
    for (const omUInt32 side : edge.fans[end]) {
      if (edge.isGoing(mesh.topology, side)) continue;
      const SpatialPoint& a = mesh.startOf(nextSide(side));
      const SpatialPoint& b = mesh.startOf(previousSide(side));
      const SpatialPoint before = cross(a - from, b - from);
      const SpatialPoint after = cross(a - position, b - position);
      const omReal64 squareBefore = dot(before, before);
      const omReal64 product = dot(before, after);
      const omReal64 squares = squareBefore * dot(after, after);
      // What has no area has no normal to keep, but must not remain without one.
      const bool keepsNormal =
          squareBefore > 0 ? product > 0 && product * product > s_leastCosine * s_leastCosine * squares : true;
      if (!keepsNormal) return false;
      const omReal64 roundness = squaredRoundness(after, a - position, b - position);
      if (!(roundness >= s_leastRoundness * s_leastRoundness) &&
          !(roundness >= squaredRoundness(before, a - from, b - from)))
        return false;
    }
  }
  return true;
}

BoundaryDrift::BoundaryDrift(omReal64 tolerance, std::size_t nbVertices) : _tolerance(tolerance + s_noDrift) {
  if (std::isfinite(tolerance)) _drifts.assign(nbVertices, 0);
}

bool BoundaryDrift::allows(const CollapsingMesh& mesh, const CollapsingEdge& edge, const SpatialPoint& position) {
  _before = s_noSide;
  if (_drifts.empty()) return true;
  const bool isOn[2] = {isOnBoundary(mesh.topology, edge.fans[0]), isOnBoundary(mesh.topology, edge.fans[1])};
  if (!isOn[0] && !isOn[1]) return true;
  if (isOn[0] && isOn[1])
    moveEdge(mesh, edge, position);
  else
    moveEnd(mesh, edge, isOn[0] ? 0 : 1, position);
  return _driftBefore <= _tolerance && _driftAfter <= _tolerance;
}

void BoundaryDrift::accept(omUInt32 kept) {
  if (_before == s_noSide) return;
  _drifts[_before] = _driftBefore;
  _drifts[kept] = _driftAfter;
}

// Both boundary edges of the end swing about their other ends.
void BoundaryDrift::moveEnd(const CollapsingMesh& mesh, const CollapsingEdge& edge, int end,
                            const SpatialPoint& position) {
  const omUInt32 vertex = edge.ends[end];
  const SpatialPoint way = position - mesh.positions[vertex];
  const omReal64 moved = std::sqrt(dot(way, way));
  _before = mesh.topology.start(previousSide(edge.fans[end].back()));
  _driftBefore = _drifts[_before] + moved;
  _driftAfter = _drifts[vertex] + moved;
}

// The boundary y, u, v, x becomes y, p, x. Its parts are put together such that u is at its foot on (y, p), v at its
// foot on (p, x), and p at its foot on (u, v); between these, distances are those of points that run along two segments
// evenly, and at most those of their ends. The edge is on the boundary, as keepsTopology() has seen.
void BoundaryDrift::moveEdge(const CollapsingMesh& mesh, const CollapsingEdge& edge, const SpatialPoint& position) {
  const CollapseTopology& topology = mesh.topology;
  _before = topology.start(previousSide(edge.fans[0].back()));
  const omUInt32 after = topology.end(edge.fans[1].front());
  const SpatialPoint& u = mesh.positions[edge.ends[0]];
  const SpatialPoint& v = mesh.positions[edge.ends[1]];
  const omReal64 moved =
      std::max({distanceToSegment(u, mesh.positions[_before], position),
                distanceToSegment(v, position, mesh.positions[after]), distanceToSegment(position, u, v)});
  const omReal64 between = _drifts[edge.ends[0]];
  _driftBefore = std::max(_drifts[_before], between) + moved;
  _driftAfter = std::max(between, _drifts[edge.ends[1]]) + moved;
}

}  // namespace ormix::detail
