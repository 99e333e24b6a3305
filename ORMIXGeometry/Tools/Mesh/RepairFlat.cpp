#include <ORMIXGeometry/Tools/Mesh/RepairMesh.h>
#include <ORMIXMath/Distance/TrianglesMeet.h>

#include <algorithm>
#include <iterator>

namespace ormix::geom::detail {

namespace {

/// Takes triangles whose corners lie on one line out of a surface without a change of its shape. One with two corners
/// at the same place: the edge between them becomes a vertex. Any other: the edge that its third corner lies on is
/// flipped, so that the neighbour there gets this corner. One whose longest edge is open is dropped.
///
/// At first only such steps are taken that leave no two edges with the same ends; what is then still flat is forced,
/// and the edges are told apart later, by `splitVertices` and `splitRepeatedEdges`.
class FlatRemover {
 public:
  explicit FlatRemover(RepairMesh& mesh) : _mesh(mesh), _isRemoved(mesh.getNbTriangles()) {}

  std::size_t remove() {
    std::vector<omUInt32> flat;
    for (omUInt32 triangle = 0; triangle < _isRemoved.size(); ++triangle)
      if (isFlat(triangle)) flat.push_back(triangle);
    std::size_t nbSteps = 64 * flat.size();
    for (const bool isForced : {false, true}) {
      _isForced = isForced;
      bool hasChanged = true;
      while (hasChanged && nbSteps > 0) {
        hasChanged = false;
        for (const omUInt32 triangle : flat) {
          if (nbSteps == 0 || _isRemoved[triangle] || !isFlat(triangle) || !resolve(triangle)) continue;
          hasChanged = true;
          --nbSteps;
        }
      }
    }
    const std::size_t nbLeft = static_cast<std::size_t>(
        std::count_if(flat.begin(), flat.end(), [&](omUInt32 t) { return !_isRemoved[t] && isFlat(t); }));
    _mesh.remove(_isRemoved);
    return flat.size() - nbLeft;
  }

 private:
  bool isFlat(omUInt32 triangle) const {
    const omUInt32* corners = &_mesh.indexColl[3 * std::size_t{triangle}];
    return isDegenerate({_mesh.pointColl[corners[0]], _mesh.pointColl[corners[1]], _mesh.pointColl[corners[2]]});
  }
  omReal64 squaredLength(omUInt32 side) const {
    const SpatialPoint along = _mesh.at(_mesh.end(side)) - _mesh.at(_mesh.start(side));
    return dot(along, along);
  }

  /// The corner of a triangle that is not on its side.
  omUInt32 apexOf(omUInt32 side) const { return _mesh.start(RepairMesh::previous(side)); }
  omUInt32 longestSide(omUInt32 triangle) const {
    const omUInt32 first = 3 * triangle, second = first + 1, third = first + 2;
    const omUInt32 longer = squaredLength(second) > squaredLength(first) ? second : first;
    return squaredLength(third) > squaredLength(longer) ? third : longer;
  }

  bool resolve(omUInt32 triangle) {
    const omUInt32 longest = longestSide(triangle);
    const omUInt32 shortest = squaredLength(RepairMesh::next(longest)) < squaredLength(RepairMesh::previous(longest))
                                  ? RepairMesh::next(longest)
                                  : RepairMesh::previous(longest);
    if (_mesh.oppositeColl[longest] == RepairMesh::s_none) return drop(triangle);
    if (squaredLength(shortest) == 0) return collapse(shortest);
    return flip(longest);
  }

  bool drop(omUInt32 triangle) {
    _isRemoved[triangle] = true;
    for (omUInt32 side = 3 * triangle; side < 3 * triangle + 3; ++side)
      if (const omUInt32 other = _mesh.oppositeColl[side]; other != RepairMesh::s_none)
        _mesh.oppositeColl[side] = _mesh.oppositeColl[other] = RepairMesh::s_none;
    return true;
  }

  /// The corners at the start of a side, of all triangles around it; none where a side is open, or there are too many.
  std::vector<omUInt32> fanOf(omUInt32 side) const {
    constexpr std::size_t most = 1000;
    std::vector<omUInt32> corners;
    omUInt32 at = side;
    do {
      corners.push_back(at);
      const omUInt32 other = _mesh.oppositeColl[RepairMesh::previous(at)];
      if (other == RepairMesh::s_none || corners.size() > most) return {};
      at = other;
    } while (at != side);
    return corners;
  }

  /// (a, b, c) with c between a and b, and its neighbour (b, a, d), become (b, c, d) and (c, a, d).
  bool flip(omUInt32 side) {
    const omUInt32 other = _mesh.oppositeColl[side];
    const omUInt32 a = _mesh.start(side), b = _mesh.end(side);
    const omUInt32 c = apexOf(side), d = apexOf(other);
    if (c == d) return removePair(side, other);
    // With a flat neighbour the edge becomes shorter, so that flips end, but only where it is the longest of both.
    if (isFlat(other / 3) && longestSide(other / 3) != other) return false;
    const std::vector<omUInt32> around = fanOf(RepairMesh::previous(side));
    const auto endsThere = [&](omUInt32 spoke) { return _mesh.end(spoke) == d; };
    if (!_isForced && (around.empty() || std::any_of(around.begin(), around.end(), endsThere))) return false;
    const auto outer = [&](omUInt32 inner) { return _mesh.oppositeColl[inner]; };
    const omUInt32 bc = outer(RepairMesh::next(side)), ca = outer(RepairMesh::previous(side));
    const omUInt32 ad = outer(RepairMesh::next(other)), db = outer(RepairMesh::previous(other));
    set(side, b, c, d);
    set(other, c, a, d);
    put(side, bc);
    put(RepairMesh::previous(side), db);
    put(other, ca);
    put(RepairMesh::next(other), ad);
    _mesh.join(RepairMesh::next(side), RepairMesh::previous(other));
    return true;
  }
  /// Removes (a, b, c) and (b, a, c), and joins what they are joined to.
  bool removePair(omUInt32 side, omUInt32 other) {
    joinAcross(RepairMesh::next(side), RepairMesh::previous(other));
    joinAcross(RepairMesh::previous(side), RepairMesh::next(other));
    _isRemoved[side / 3] = _isRemoved[other / 3] = true;
    return true;
  }
  /// Joins what two sides are joined to, as these are removed.
  void joinAcross(omUInt32 side, omUInt32 other) {
    const omUInt32 left = _mesh.oppositeColl[side], right = _mesh.oppositeColl[other];
    if (left == other) return;
    if (left != RepairMesh::s_none) _mesh.oppositeColl[left] = right;
    if (right != RepairMesh::s_none) _mesh.oppositeColl[right] = left;
  }
  void set(omUInt32 side, omUInt32 a, omUInt32 b, omUInt32 c) {
    _mesh.indexColl[side] = a;
    _mesh.indexColl[RepairMesh::next(side)] = b;
    _mesh.indexColl[RepairMesh::previous(side)] = c;
  }
  void put(omUInt32 side, omUInt32 outer) {
    _mesh.oppositeColl[side] = outer;
    if (outer != RepairMesh::s_none) _mesh.oppositeColl[outer] = side;
  }

  /// The start and the end of a side become the end, without the two triangles between them. Not where they have
  /// neighbours in common but the two opposite, as surfaces would grow together.
  bool collapse(omUInt32 side) {
    const omUInt32 other = _mesh.oppositeColl[side];
    if (other == RepairMesh::s_none) return false;
    if (apexOf(side) == apexOf(other)) return removePair(side, other);
    const std::vector<omUInt32> from = fanOf(side), to = fanOf(other);
    if (from.empty() || to.empty()) return false;
    if (from.size() == 3 && to.size() == 3) return removeFold(side, other);
    std::vector<omUInt32> near, far, common;
    for (const omUInt32 corner : from) near.push_back(_mesh.end(corner));
    for (const omUInt32 corner : to) far.push_back(_mesh.end(corner));
    std::sort(near.begin(), near.end());
    std::sort(far.begin(), far.end());
    std::set_intersection(near.begin(), near.end(), far.begin(), far.end(), std::back_inserter(common));
    if (from.size() < 3 || to.size() < 3 || (!_isForced && common.size() != 2)) return false;
    const omUInt32 kept = _mesh.end(side);
    for (const omUInt32 corner : from) _mesh.indexColl[corner] = kept;
    for (const omUInt32 inner : {side, other}) {
      joinAcross(RepairMesh::next(inner), RepairMesh::previous(inner));
      _isRemoved[inner / 3] = true;
    }
    return true;
  }

  /// Both ends of the side have three triangles: with it goes the fold that is left, (u, w, x) and (v, x, w).
  bool removeFold(omUInt32 side, omUInt32 other) {
    const auto beyond = [this](omUInt32 inner) { return _mesh.oppositeColl[inner]; };
    const omUInt32 atStart = RepairMesh::next(beyond(RepairMesh::previous(side)));
    const omUInt32 atEnd = RepairMesh::next(beyond(RepairMesh::previous(other)));
    for (const omUInt32 removed : {side, other, atStart, atEnd}) _isRemoved[removed / 3] = true;
    joinAcross(atStart, atEnd);
    return true;
  }

  RepairMesh& _mesh;
  std::vector<bool> _isRemoved;
  bool _isForced = false;
};

}  // namespace

void removeFlatTriangles(RepairMesh& mesh, RepairReport& report) { report.nbFlat += FlatRemover(mesh).remove(); }

}  // namespace ormix::geom::detail
