#include "EdgeCollapse.h"

#include <algorithm>

namespace ormix::detail {

namespace {

/// An edge at a vertex of more triangles does not collapse, so that a fan of n triangles takes no n² steps.
constexpr omUInt32 s_greatestValence = 1000;
/// So many buckets dearer a place may be for the sake of the volume: half of the edges would come twice otherwise.
constexpr std::size_t s_volumeMargin = CollapseQueue::s_octave;
/// So many edges before its turn the quadrics of an edge are asked for, so that they have come from memory then, and
/// its vertices as long before that.
constexpr std::size_t s_nbAhead = 8;

}  // namespace

EdgeCollapse::EdgeCollapse(CollapsingMesh& mesh, const CollapseSettings& settings, const EdgePlacement& placement,
                           const VertexQuadrics& vertexQuadrics)
    : _mesh(mesh),
      _settings(settings),
      _placement(placement),
      _vertexQuadrics(vertexQuadrics),
      _marks(mesh.topology.nbVertices()),
      _drift(settings.boundaryTolerance, mesh.topology.nbVertices()) {
  if (settings.avoidsIntersections) _intersections.emplace(mesh);
}

void EdgeCollapse::enqueueAll() {
  for (omUInt32 side = 0; side < _mesh.topology.nbSides(); ++side)
    if (_mesh.topology.isAlive(side) && _mesh.topology.isFirstOfEdge(side))
      enqueue(side, CollapseQueue::bucketOf(costOf(side)));
}

bool EdgeCollapse::pop(omUInt32& side) {
  while (_queue.pop(side)) {
    prefetch();
    if (!_mesh.topology.isAlive(side) || (_mesh.sideFlags[side] & eSF_Queued) == 0) continue;
    _mesh.sideFlags[side] &= static_cast<omUInt8>(~eSF_Queued);
    return true;
  }
  return false;
}

// Asks for what edges will need that are popped soon, which is worth a third of the time for a million triangles.
void EdgeCollapse::prefetch() const {
  const omUInt32 later = _queue.ahead(2 * s_nbAhead);
  _mesh.topology.prefetch(later);
  prefetchMemory(&_mesh.sideFlags[later]);
  const omUInt32 soon = _queue.ahead(s_nbAhead);
  if (!_mesh.topology.isAlive(soon)) return;
  for (const omUInt32 vertex : {_mesh.topology.start(soon), _mesh.topology.end(soon)}) {
    const Quadric& quadric = _mesh.quadrics[vertex];
    prefetchMemory(&quadric);
    prefetchMemory(&quadric.c);
    prefetchMemory(&_mesh.positions[vertex]);
  }
}

void EdgeCollapse::enqueue(omUInt32 side, std::size_t bucket) {
  _mesh.sideFlags[side] |= eSF_Queued;
  _queue.push(side, bucket);
}

// An edge that is refused for its error comes back when one of its ends changes, others when costs have risen.
void EdgeCollapse::enqueueAgain(omUInt32 side, int reason) {
  omUInt8& flags = _mesh.sideFlags[side];
  const int nbBefore = (flags & eSF_Refusals) / s_oneRefusal;
  if (reason == eCR_Error || (flags & eSF_Refusals) == eSF_Refusals) return;
  flags = static_cast<omUInt8>(flags + s_oneRefusal);
  enqueue(side, _queue.currentBucket() + (CollapseQueue::s_octave << nbBefore));
}

void EdgeCollapse::step(omUInt32 side) {
  const std::size_t bucket = CollapseQueue::bucketOf(costOf(side));
  if (bucket > _queue.currentBucket()) return enqueue(side, bucket);
  int reason = openEdge(side);
  AllowedPlaces allowed;
  if (reason == s_notRefused) {
    allowed = allowedByLocks(_mesh, _edge);
    if (allowed.none()) reason = eCR_Locked;
  }
  if (reason == s_notRefused && _settings.keepsFeatures) {
    restrictToFeatures(_mesh, _edge, allowed);
    if (allowed.none()) reason = eCR_Feature;
  }
  if (reason != s_notRefused) {
    ++_nbRefusals[static_cast<std::size_t>(reason)];
    return enqueueAgain(side, reason);
  }
  CollapsePlaces places = _placement.places(_mesh, side);
  reason = tryPlaces(allowed, places);
  if (reason != s_notRefused) enqueueAgain(side, reason);
}

int EdgeCollapse::openEdge(omUInt32 side) {
  const CollapseTopology& topology = _mesh.topology;
  _edge.side = side;
  _edge.ends[0] = topology.start(side);
  _edge.ends[1] = topology.end(side);
  for (int end = 0; end < 2; ++end)
    if (topology.valence(_edge.ends[end]) > s_greatestValence) return eCR_Valence;
  for (int end = 0; end < 2; ++end) topology.collectFan(_edge.ends[end], _edge.fans[end]);
  return keepsTopology(_mesh, _edge, _marks) ? s_notRefused : eCR_Topology;
}

// Tries the places that cost no more than what the queue has come to, from the cheapest on. When there are dearer ones
// and all others are refused, the edge waits for these.
int EdgeCollapse::tryPlaces(const AllowedPlaces& allowed, CollapsePlaces& places) {
  int reason = s_notRefused;
  std::size_t dearer = CollapseQueue::s_nbBuckets;
  for (int i = 0; i < places.nb; ++i) {
    CollapsePlace& place = places.places[i];
    if (!allows(allowed, place)) continue;
    omReal64 error = 0;
    int refused = s_notRefused;
    if (_settings.keepsVolume && !_placement.keepVolume(_mesh, _edge, place)) refused = eCR_Volume;
    const std::size_t bucket = CollapseQueue::bucketOf(place.cost);
    const std::size_t affordable = _queue.currentBucket() + (_settings.keepsVolume ? s_volumeMargin : 0);
    if (refused == s_notRefused && bucket > affordable) {
      dearer = std::min(dearer, bucket);
      continue;
    }
    if (refused == s_notRefused) refused = refusal(place, error);
    if (refused == s_notRefused) {
      collapseTo(place, error);
      return s_notRefused;
    }
    ++_nbRefusals[static_cast<std::size_t>(refused)];
    if (reason == s_notRefused) reason = refused;
  }
  if (dearer == CollapseQueue::s_nbBuckets) return reason;
  enqueue(_edge.side, dearer);
  return s_notRefused;
}

bool EdgeCollapse::allows(const AllowedPlaces& allowed, const CollapsePlace& place) const {
  if (place.end == s_noSide) return allowed.elsewhere;
  return allowed.ends[place.end == _edge.ends[0] ? 0 : 1];
}

// Why a place is refused. The tests that are seldom needed or take long come last.
int EdgeCollapse::refusal(const CollapsePlace& place, omReal64& error) {
  if (!keepsNormals(_mesh, _edge, place.position)) return eCR_Normal;
  error = EdgePlacement::errorAt(_mesh, _edge.side, place.position);
  if (!(error <= _settings.maxError)) return eCR_Error;
  if (!_drift.allows(_mesh, _edge, place.position)) return eCR_Boundary;
  if (_intersections && _intersections->wouldIntersect(_mesh, _edge, place.position)) return eCR_Intersection;
  return s_notRefused;
}

void EdgeCollapse::collapseTo(const CollapsePlace& place, omReal64 error) {
  const int keptEnd = place.end == _edge.ends[1] || _mesh.freedoms[_edge.ends[1]] != eVF_Free ? 1 : 0;
  const omUInt32 kept = _edge.ends[keptEnd];
  const omUInt32 gone = _edge.ends[1 - keptEnd];
  _drift.accept(kept);
  CollapseTopology::Merged merged[2];
  _mesh.topology.collapse(_edge.side, kept, _edge.fans[keptEnd], _edge.fans[1 - keptEnd], merged);
  if (!_settings.isMemoryless) {
    const Quadric other = _mesh.quadrics[gone].shifted(place.position - _mesh.positions[gone]);
    _mesh.quadrics[kept] = _mesh.quadrics[kept].shifted(place.position - _mesh.positions[kept]);
    _mesh.quadrics[kept] += other;
  }
  _mesh.positions[kept] = place.position;
  if (_settings.isMemoryless) {
    _mesh.quadrics[kept].makeStale();
    _mesh.topology.collectFan(kept, _ring);
    visitNeighbours(_mesh.topology, _ring, [this](omUInt32 vertex) { _mesh.quadrics[vertex].makeStale(); });
  }
  if (_intersections) _intersections->update(_mesh, _edge.fans[keptEnd]);
  for (const CollapseTopology::Merged& edge : merged) joinEdges(edge);
  if (_settings.maxError < std::numeric_limits<omReal64>::infinity()) reviveEdges(_edge.fans[keptEnd]);
  ++_nbCollapses;
  _greatestError = std::max(_greatestError, error);
}

// Two edges have become one, of which the queue shall have one side.
void EdgeCollapse::joinEdges(const CollapseTopology::Merged& merged) {
  const omUInt32 first = merged.in != s_noSide ? merged.in : merged.out;
  if (first == s_noSide) return;
  const omUInt32 second = merged.in != s_noSide ? merged.out : s_noSide;
  omUInt8& flags = _mesh.sideFlags[first];
  const bool isQueued = (flags & eSF_Queued) != 0;
  if (second != s_noSide) {
    omUInt8& others = _mesh.sideFlags[second];
    const omUInt8 feature = (flags | others) & eSF_Feature;
    flags = static_cast<omUInt8>((flags & eSF_Queued) | feature);
    others = static_cast<omUInt8>((isQueued ? 0 : others & eSF_Queued) | feature);
    if ((others & eSF_Queued) != 0) return;
  }
  if (!isQueued) enqueue(first, 0);
}

// Lets the edges of a fan that are not in the queue be looked at again.
void EdgeCollapse::reviveEdges(const std::vector<omUInt32>& fan) {
  for (const omUInt32 out : fan) {
    for (const omUInt32 side : {out, previousSide(out)}) {
      const omUInt32 other = _mesh.topology.opposite(side);
      const bool isQueued = (_mesh.sideFlags[side] & eSF_Queued) != 0 ||
                            (other != s_noSide && (_mesh.sideFlags[other] & eSF_Queued) != 0);
      if (!isQueued) enqueue(std::min(side, other), 0);
    }
  }
}

// Computes the quadrics of the ends of an edge that makeStale() has left.
void EdgeCollapse::freshen(omUInt32 side) {
  for (const omUInt32 vertex : {_mesh.topology.start(side), _mesh.topology.end(side)}) {
    if (!_mesh.quadrics[vertex].isStale() || _mesh.topology.valence(vertex) > s_greatestValence) continue;
    _mesh.topology.collectFan(vertex, _ring);
    _mesh.quadrics[vertex] = _vertexQuadrics.of(_mesh, _ring);
  }
}

omReal64 EdgeCollapse::costOf(omUInt32 side) {
  if (_settings.isMemoryless) freshen(side);
  return _placement.leastCost(_mesh, side);
}

}  // namespace ormix::detail
