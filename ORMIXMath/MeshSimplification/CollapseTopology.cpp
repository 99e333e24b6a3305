#include "CollapseTopology.h"

#include <utility>

namespace ormix::detail {

CollapseTopology::CollapseTopology(std::vector<MeshSide> sides, std::size_t nbVertices)
    : _nbGiven(nbVertices), _nbTriangles(sides.size() / 3), _sides(std::move(sides)) {
  findFans();
}

void CollapseTopology::findFans() {
  _firstSide.assign(_nbGiven, s_noSide);
  _valences.assign(_nbGiven, 0);
  std::vector<bool> isVisited(_sides.size());
  for (omUInt32 side = 0; side < _sides.size(); ++side) {
    if (isVisited[side]) continue;
    omUInt32 vertex = start(side);
    if (_firstSide[vertex] != s_noSide) {
      _origins.push_back(vertex);
      vertex = static_cast<omUInt32>(_firstSide.size());
      _firstSide.push_back(s_noSide);
      _valences.push_back(0);
    }
    omUInt32 first = side;
    while (opposite(first) != s_noSide) {
      first = nextSide(opposite(first));
      if (first == side) break;
    }
    _firstSide[vertex] = first;
    omUInt32 at = first;
    do {
      isVisited[at] = true;
      _sides[at].start = vertex;
      ++_valences[vertex];
      at = opposite(previousSide(at));
    } while (at != first && at != s_noSide);
  }
}

// The side runs from u to v and a is the apex; u and v have become one vertex.
CollapseTopology::Merged CollapseTopology::removeTriangle(omUInt32 side) {
  const omUInt32 toApex = nextSide(side);
  const omUInt32 fromApex = previousSide(side);
  const omUInt32 apex = start(fromApex);
  const Merged merged{opposite(toApex), opposite(fromApex)};
  if (merged.in != s_noSide) _sides[merged.in].opposite = merged.out;
  if (merged.out != s_noSide) _sides[merged.out].opposite = merged.in;
  if (_firstSide[apex] == fromApex) _firstSide[apex] = merged.in != s_noSide ? merged.in : nextSide(merged.out);
  --_valences[apex];
  for (const omUInt32 gone : {side, toApex, fromApex}) _sides[gone] = {s_noSide, s_noSide};
  --_nbTriangles;
  return merged;
}

void CollapseTopology::collapse(omUInt32 side, omUInt32 kept, std::vector<omUInt32>& fanOfKept,
                                std::vector<omUInt32>& fanOfGone, Merged (&merged)[2]) {
  const omUInt32 other = opposite(side);
  for (const omUInt32 at : fanOfGone) _sides[at].start = kept;
  fanOfKept.insert(fanOfKept.end(), fanOfGone.begin(), fanOfGone.end());
  fanOfGone.clear();
  merged[0] = removeTriangle(side);
  merged[1] = other != s_noSide ? removeTriangle(other) : Merged{};
  std::size_t nbAlive = 0;
  omUInt32 first = s_noSide;
  for (const omUInt32 at : fanOfKept) {
    if (!isAlive(at)) continue;
    fanOfKept[nbAlive++] = at;
    if (first == s_noSide || opposite(at) == s_noSide) first = at;
  }
  fanOfKept.resize(nbAlive);
  _firstSide[kept] = first;
  _valences[kept] = static_cast<omUInt32>(nbAlive);
}

}  // namespace ormix::detail
