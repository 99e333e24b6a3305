#include "HullFaces.h"

#include <algorithm>
#include <cstddef>

namespace ormix::detail {

namespace {

/// Joins adjacent facets that lie in one plane.
class FaceJoiner {
 public:
  FaceJoiner(const std::vector<HullFacet>& facets, const std::vector<SpatialPoint>& points)
      : _facets(facets), _points(points), _flatEdges(facets.size(), 0) {}

  /// The triangles, see trianglesOfFaces().
  std::vector<IndexTriangle> run() {
    std::vector<IndexTriangle> triangles;
    triangles.reserve(_facets.size());
    if (!findFlatEdges()) {
      for (const HullFacet& facet : _facets)
        if (facet.isUsed()) triangles.push_back(facet.vertices);
      return triangles;
    }
    countBentEdges();
    _follows.assign(_points.size(), s_noIndex);
    _isJoined.assign(_facets.size(), 0);
    for (omUInt32 i = 0; i < _facets.size(); ++i) {
      if (!_facets[i].isUsed() || _isJoined[i]) continue;
      findCorners(i);
      for (std::size_t k = 2; k < _corners.size(); ++k)
        triangles.push_back({_corners[0], _corners[k - 1], _corners[k]});
    }
    return triangles;
  }

 private:
  /// Marks every edge whose two facets lie in one plane; returns whether there is any.
  bool findFlatEdges() {
    bool any = false;
    for (omUInt32 i = 0; i < _facets.size(); ++i) {
      if (!_facets[i].isUsed()) continue;
      for (std::size_t k = 0; k < 3; ++k) {
        const omUInt32 other = _facets[i].neighbours[k];
        if (other < i) continue;
        const std::array<omUInt32, 3>& back = _facets[other].neighbours;
        const auto opposite = static_cast<std::size_t>(std::find(back.begin(), back.end(), i) - back.begin());
        if (sideOfFacet(_facets[i], _points, _points[_facets[other].vertices[opposite]]) != 0) continue;
        _flatEdges[i] = static_cast<omUInt8>(_flatEdges[i] | 1U << k);
        _flatEdges[other] = static_cast<omUInt8>(_flatEdges[other] | 1U << opposite);
        any = true;
      }
    }
    return any;
  }

  bool isFlat(omUInt32 facet, std::size_t edge) const { return (_flatEdges[facet] >> edge & 1U) != 0; }

  /// Counts at each point the edges whose facets lie in different planes: three or more at an extreme point, two at a
  /// point inside an edge of the hull, none at a point inside a face.
  void countBentEdges() {
    _nbBentEdges.assign(_points.size(), 0);
    for (omUInt32 i = 0; i < _facets.size(); ++i)
      for (std::size_t k = 0; _facets[i].isUsed() && k < 3; ++k)
        if (!isFlat(i, k)) ++_nbBentEdges[_facets[i].vertices[(k + 1) % 3]];
  }

  /// Collects the extreme points of the face to which a facet belongs, in their order on its outline.
  void findCorners(omUInt32 first) {
    omUInt32 start = s_noIndex;
    _face.assign(1, first);
    _isJoined[first] = 1;
    for (std::size_t i = 0; i < _face.size(); ++i) {
      const HullFacet& facet = _facets[_face[i]];
      for (std::size_t k = 0; k < 3; ++k) {
        const omUInt32 other = facet.neighbours[k];
        if (!isFlat(_face[i], k)) {
          start = facet.vertices[(k + 1) % 3];
          _follows[start] = facet.vertices[(k + 2) % 3];
        } else if (!_isJoined[other]) {
          _isJoined[other] = 1;
          _face.push_back(other);
        }
      }
    }
    _corners.clear();
    omUInt32 vertex = start;
    do {
      if (_nbBentEdges[vertex] >= 3) _corners.push_back(vertex);
      vertex = _follows[vertex];
    } while (vertex != start);
  }

  const std::vector<HullFacet>& _facets;
  const std::vector<SpatialPoint>& _points;
  std::vector<omUInt8> _flatEdges;     // for each facet, a bit for each edge whose facets lie in one plane
  std::vector<omUInt32> _nbBentEdges;  // for each point, see countBentEdges()
  std::vector<omUInt32> _follows;      // for each point, the next one on the outline of the current face
  std::vector<omUInt8> _isJoined;      // for each facet, whether it belongs to a face already
  std::vector<omUInt32> _face;         // facets of the current face
  std::vector<omUInt32> _corners;      // extreme points of the current face
};

}  // namespace

std::vector<IndexTriangle> trianglesOfFaces(const std::vector<HullFacet>& facets,
                                            const std::vector<SpatialPoint>& points) {
  return FaceJoiner(facets, points).run();
}

}  // namespace ormix::detail
