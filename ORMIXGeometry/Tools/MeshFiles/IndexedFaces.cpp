#include <ORMIXGeometry/Tools/MeshFiles/IndexedFaces.h>
#include <ORMIXMath/Distance/Orientation.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace ormix::geom::detail {

void FaceColl::endFace() {
  if (_endColl.empty() && _cornerColl.size() - _begin != 3) {
    // The first face that is no triangle: from now on ends are kept.
    for (std::size_t end = 3; end <= _begin; end += 3) _endColl.push_back(static_cast<omUInt32>(end));
    _endColl.push_back(static_cast<omUInt32>(_cornerColl.size()));
  } else if (!_endColl.empty()) {
    _endColl.push_back(static_cast<omUInt32>(_cornerColl.size()));
  }
  _begin = _cornerColl.size();
}

namespace {

/// Cuts polygons one after the other, with one budget of comparisons for all.
template <class Real>
class PolygonCutter {
 public:
  PolygonCutter(const std::vector<Point3dData<Real>>& vertices, CutFaces& result)
      : _vertices(vertices), _result(result) {}

  /// \param corners at least three indices of vertices
  void cut(const std::vector<omUInt32>& corners) {
    _corners = &corners;
    if (corners.size() > 3) project();
    if (corners.size() == 3 || isConvex()) return addFan(0);
    const std::size_t nbLeft = cutEars();
    if (nbLeft > 3) ++_result.nbFanned;
    addFan(_first);
  }

 private:
  struct Corner {
    PlanarPoint at;
    std::size_t previous, next;
    bool isConvex;
  };

  void add(std::size_t a, std::size_t b, std::size_t c) {
    for (const std::size_t corner : {a, b, c}) _result.indexColl.push_back((*_corners)[corner]);
  }

  /// Adds the fan of a corner over those that are left.
  void addFan(std::size_t first) {
    if (_corners->size() == 3) return add(0, 1, 2);
    for (std::size_t at = _ring[first].next; _ring[at].next != first; at = _ring[at].next)
      add(first, at, _ring[at].next);
  }

  /// Sets up the ring of the corners in the plane, counter-clockwise.
  void project() {
    const std::size_t nb = _corners->size();
    const auto at = [&](std::size_t corner) { return _vertices[(*_corners)[corner]]; };
    const auto coords = [](const Point3dData<Real>& p) {
      return std::array<omReal64, 3>{omReal64(p.getX()), omReal64(p.getY()), omReal64(p.getZ())};
    };
    const std::array<omReal64, 3> origin = coords(at(0));
    std::array<omReal64, 3> normal{};
    for (std::size_t corner = 1; corner + 1 < nb; ++corner) {
      std::array<omReal64, 3> u = coords(at(corner)), v = coords(at(corner + 1));
      for (std::size_t axis = 0; axis < 3; ++axis) {
        u[axis] -= origin[axis];
        v[axis] -= origin[axis];
      }
      for (std::size_t axis = 0; axis < 3; ++axis)
        normal[axis] += u[(axis + 1) % 3] * v[(axis + 2) % 3] - u[(axis + 2) % 3] * v[(axis + 1) % 3];
    }
    std::size_t along = 0;
    for (std::size_t axis = 1; axis < 3; ++axis)
      if (std::fabs(normal[axis]) > std::fabs(normal[along])) along = axis;
    std::size_t first = (along + 1) % 3, second = (along + 2) % 3;
    if (normal[along] < 0) std::swap(first, second);
    _ring.resize(nb);
    for (std::size_t corner = 0; corner < nb; ++corner) {
      const std::array<omReal64, 3> p = coords(at(corner));
      _ring[corner] = {{p[first], p[second]}, (corner + nb - 1) % nb, (corner + 1) % nb, false};
    }
    for (std::size_t corner = 0; corner < nb; ++corner) _ring[corner].isConvex = turn(corner) > 0;
  }

  int turn(std::size_t corner) const {
    const Corner& middle = _ring[corner];
    return orientation(_ring[middle.previous].at, middle.at, _ring[middle.next].at);
  }

  /// Whether all corners turn left, and together once around.
  bool isConvex() const {
    std::size_t nbLeftmost = 0;
    const auto isBefore = [](const PlanarPoint& a, const PlanarPoint& b) { return a.x != b.x ? a.x < b.x : a.y < b.y; };
    for (const Corner& corner : _ring) {
      if (!corner.isConvex) return false;
      nbLeftmost +=
          isBefore(corner.at, _ring[corner.previous].at) && isBefore(corner.at, _ring[corner.next].at) ? 1 : 0;
    }
    return nbLeftmost == 1;
  }

  bool isEar(std::size_t corner) {
    const Corner& ear = _ring[corner];
    if (!ear.isConvex) return false;
    const PlanarPoint &a = _ring[ear.previous].at, &b = ear.at, &c = _ring[ear.next].at;
    const auto [lowX, highX] = std::minmax({a.x, b.x, c.x});
    const auto [lowY, highY] = std::minmax({a.y, b.y, c.y});
    const auto isSame = [](const PlanarPoint& p, const PlanarPoint& q) { return p.x == q.x && p.y == q.y; };
    _nbCompared += _reflex.size();
    for (const std::size_t other : _reflex) {
      const PlanarPoint& p = _ring[other].at;
      if (p.x < lowX || p.x > highX || p.y < lowY || p.y > highY || _ring[other].isConvex) continue;
      if (isSame(p, a) || isSame(p, b) || isSame(p, c)) continue;
      if (orientation(a, b, p) >= 0 && orientation(b, c, p) >= 0 && orientation(c, a, p) >= 0) return false;
    }
    return true;
  }

  /// Cuts ears until three corners are left or there is no ear; `_first` is then one of those left. A corner becomes
  /// an ear only when a neighbour is cut, so that each is tested three times at most.
  std::size_t cutEars() {
    std::size_t nbLeft = _ring.size();
    _first = 0;
    _reflex.clear();
    _candidates.clear();
    for (std::size_t corner = 0; corner < nbLeft; ++corner) {
      if (!_ring[corner].isConvex) _reflex.push_back(corner);
      _candidates.push_back(nbLeft - 1 - corner);
    }
    while (nbLeft > 3 && !_candidates.empty() && _nbCompared < s_mostCompared) {
      const std::size_t corner = _candidates.back();
      _candidates.pop_back();
      Corner& ear = _ring[corner];
      if (ear.next == corner || !isEar(corner)) continue;
      add(ear.previous, corner, ear.next);
      _ring[ear.previous].next = ear.next;
      _ring[ear.next].previous = ear.previous;
      _first = ear.next;
      const std::array<std::size_t, 2> neighbours{ear.previous, ear.next};
      ear.next = corner;  // it is cut
      ear.isConvex = true;
      --nbLeft;
      for (const std::size_t neighbour : neighbours) {
        _ring[neighbour].isConvex = turn(neighbour) > 0;
        _candidates.push_back(neighbour);
      }
    }
    return nbLeft;
  }

  static constexpr std::size_t s_mostCompared = std::size_t(1) << 30;

  const std::vector<Point3dData<Real>>& _vertices;
  CutFaces& _result;
  const std::vector<omUInt32>* _corners = nullptr;
  std::vector<Corner> _ring;
  std::vector<std::size_t> _reflex;      ///< corners that were not convex at first; those that are now are passed over
  std::vector<std::size_t> _candidates;  ///< corners to test, the next one last
  std::size_t _first = 0;
  std::size_t _nbCompared = 0;
};

}  // namespace

template <class Real>
CutFaces cutFaces(const std::vector<Point3dData<Real>>& vertices, const FaceColl& faces) {
  CutFaces result;
  const std::vector<omUInt32>& corners = faces.getCornerColl();
  const auto isValid = [nb = vertices.size()](omUInt32 vertex) { return vertex < nb; };
  result.indexColl.reserve(corners.size());
  PolygonCutter<Real> cutter(vertices, result);
  std::vector<omUInt32> polygon;
  std::size_t begin = 0;
  for (std::size_t face = 0; face < faces.size(); ++face) {
    const std::size_t end = faces.hasTrianglesOnly() ? begin + 3 : faces.getEndColl()[face];
    const omUInt32* first = corners.data() + begin;
    const omUInt32* last = corners.data() + end;
    begin = end;
    if (last - first < 3 || !std::all_of(first, last, isValid)) {
      ++result.nbSkipped;
      continue;
    }
    if (last - first == 3) {
      result.indexColl.insert(result.indexColl.end(), first, last);
      continue;
    }
    polygon.assign(first, last);
    polygon.erase(std::unique(polygon.begin(), polygon.end()), polygon.end());
    while (polygon.size() > 1 && polygon.front() == polygon.back()) polygon.pop_back();
    if (polygon.size() < 3) {
      ++result.nbSkipped;
      continue;
    }
    ++result.nbPolygons;
    cutter.cut(polygon);
  }
  return result;
}

template CutFaces cutFaces(const std::vector<Point3dData<omReal32>>&, const FaceColl&);
template CutFaces cutFaces(const std::vector<Point3dData<omReal64>>&, const FaceColl&);

}  // namespace ormix::geom::detail
