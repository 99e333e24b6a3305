#include <ORMIXGeometry/Entity/3d/Mesh/EdgeIndex.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopologyChecks.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Mesh/SelfIntersections.h>
#include <ORMIXGeometry/Tools/Mesh/Shells.h>
#include <ORMIXGeometry/Tools/Mesh/TriangleBoxes.h>
#include <ORMIXGeometry/Tools/Mesh/Validation.h>
#include <ORMIXMath/Distance/TrianglesMeet.h>
#include <ORMIXMath/Index/DisjointSets.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>
#include <ostream>
#include <tuple>
#include <utility>

namespace ormix::geom {

namespace {

using Side = detail::EdgeIndex::Side;
using Pair = std::array<omUInt32, 2>;
using Place = Point3dData<omReal64>;

constexpr omUInt32 triangleOf(const Side& side) { return side.sideIdx / 3; }

bool isFinite(const SpatialPoint& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

template <class T>
class Validator {
 public:
  Validator(const TriMesh3d<T>& mesh, const MeshValidationOptions& options) : _mesh(mesh), _options(options) {
    _found.nbVertices = mesh.getNbVertices();
    _found.nbTriangles = mesh.getNbTriangles();
  }

  MeshValidation run() {
    checkIndices();
    checkVertices();
    if (_mesh.getNbVertices() > 0 && _mesh.getNbTriangles() > 0) {
      checkCorners();
      checkEdges();
      checkFans();
      if (_options.findsInsideOut) checkShells();
      if (_options.findsSelfIntersections) checkIntersections();
    }
    const auto key = [](const MeshDefect& d) { return std::tie(d.kind, d.vertices, d.triangles); };
    std::sort(_found.defectColl.begin(), _found.defectColl.end(),
              [&key](const MeshDefect& a, const MeshDefect& b) { return key(a) < key(b); });
    return std::move(_found);
  }

 private:
  /// `placeOf()` is called only for defects that are listed.
  template <class PlaceOf>
  void add(eMeshDefect kind, const Pair& triangles, const Pair& vertices, PlaceOf placeOf) {
    if (_found.counts[kind]++ < _options.maxNbListed)
      _found.defectColl.push_back({kind, triangles, vertices, placeOf()});
  }
  void addTriangles(eMeshDefect kind, const Pair& triangles) {
    add(kind, triangles, {s_noIndex, s_noIndex}, [&] { return centreOf(triangles[0]); });
  }
  void addVertex(eMeshDefect kind, omUInt32 triangle, omUInt32 vertex) {
    add(kind, {triangle, s_noIndex}, {vertex, s_noIndex}, [&] { return placeOf(vertex); });
  }
  void addEdge(eMeshDefect kind, const Pair& triangles, omUInt32 lower, omUInt32 higher) {
    add(kind, triangles, {lower, higher}, [&] {
      const Place a = placeOf(lower), b = placeOf(higher);
      return Place(0.5 * a.getX() + 0.5 * b.getX(), 0.5 * a.getY() + 0.5 * b.getY(), 0.5 * a.getZ() + 0.5 * b.getZ());
    });
  }

  Place placeOf(omUInt32 vertex) const {
    const SpatialPoint p = detail::spatialPoint(_mesh.getVertex(vertex));
    return {p.x, p.y, p.z};
  }
  Place centreOf(omUInt32 triangle) const {
    const std::array<SpatialPoint, 3> p = detail::spatialCorners(_mesh, triangle);
    return {p[0].x / 3 + p[1].x / 3 + p[2].x / 3, p[0].y / 3 + p[1].y / 3 + p[2].y / 3,
            p[0].z / 3 + p[1].z / 3 + p[2].z / 3};
  }

  /// Replaces triangles with invalid indices by ones that take no part in the rest, in a copy of all.
  void checkIndices() {
    const omReal64 nan = std::numeric_limits<omReal64>::quiet_NaN();
    const auto nbVertices = _mesh.getNbVertices();
    for (std::size_t t = 0; t < _mesh.getNbTriangles(); ++t) {
      const IndexTriangle corners = _mesh.getTriangleVertexIndices(t);
      const auto invalid =
          std::find_if(corners.begin(), corners.end(), [nbVertices](omUInt32 corner) { return corner >= nbVertices; });
      if (invalid == corners.end()) continue;
      add(eMD_InvalidIndex, {static_cast<omUInt32>(t), s_noIndex}, {*invalid, s_noIndex},
          [nan] { return Place(nan, nan, nan); });
      if (_validIndices.empty())
        _validIndices.assign(_mesh.getIndices(), _mesh.getIndices() + 3 * _mesh.getNbTriangles());
      std::fill_n(&_validIndices[3 * t], 3, s_noIndex);
    }
    if (_validIndices.empty()) return;
    _isValid.assign(_mesh.getNbTriangles(), true);
    for (std::size_t t = 0; t < _mesh.getNbTriangles(); ++t) {
      if (_validIndices[3 * t] != s_noIndex) continue;
      _isValid[t] = false;
      std::fill_n(&_validIndices[3 * t], 3, omUInt32{0});
    }
    _mesh = TriMesh3d<T>(_mesh.getVertices(), nbVertices, _validIndices.data(), _mesh.getNbTriangles());
  }
  bool isValid(std::size_t triangle) const { return _isValid.empty() || _isValid[triangle]; }

  void checkVertices() {
    std::vector<omUInt8> isUsed(_mesh.getNbVertices());
    if (!isUsed.empty())
      for (std::size_t t = 0; t < _mesh.getNbTriangles(); ++t)
        if (isValid(t))
          for (const omUInt32 corner : _mesh.getTriangleVertexIndices(t)) isUsed[corner] = 1;
    for (omUInt32 vertex = 0; vertex < isUsed.size(); ++vertex) {
      if (isUsed[vertex] == 0) addVertex(eMD_UnusedVertex, s_noIndex, vertex);
      if constexpr (std::is_floating_point_v<T>)
        if (!isFinite(detail::spatialPoint(_mesh.getVertex(vertex)))) addVertex(eMD_NotFiniteVertex, s_noIndex, vertex);
    }
  }

  void checkCorners() {
    for (omUInt32 t = 0; t < _mesh.getNbTriangles(); ++t) {
      if (!isValid(t)) continue;
      if (detail::hasEqualCorners(_mesh.getIndices() + 3 * std::size_t{t})) {
        addTriangles(eMD_EqualCorners, {t, s_noIndex});
        continue;
      }
      const std::array<SpatialPoint, 3> p = detail::spatialCorners(_mesh, t);
      if (isDegenerate({p[0], p[1], p[2]}) && isFinite(p[0]) && isFinite(p[1]) && isFinite(p[2]))
        addTriangles(eMD_CollinearCorners, {t, s_noIndex});
    }
  }

  void checkEdges() {
    _fans.emplace(3 * _mesh.getNbTriangles());
    ormix::detail::DisjointSets chains(_mesh.getNbVertices());
    std::vector<bool> isOnBoundary(_mesh.getNbVertices());
    detail::EdgeIndex edges(_mesh.getNbVertices(), _mesh.getIndices(), _mesh.getNbTriangles());
    edges.visitEdges([&](omUInt32 lower, const Side* first, const Side* last) {
      const omUInt32 higher = first->higherVertexIdx;
      if (last - first == 1) {
        addEdge(eMD_BoundaryEdge, {triangleOf(*first), s_noIndex}, lower, higher);
        // The number of connected chains is that of their vertices minus that of the edges that unite two chains.
        for (const omUInt32 end : {lower, higher}) {
          if (!isOnBoundary[end]) ++_found.nbBoundaryLoops;
          isOnBoundary[end] = true;
        }
        if (chains.unite(lower, higher)) --_found.nbBoundaryLoops;
        return;
      }
      joinFans(lower, first, last);
      const Pair triangles{triangleOf(first[0]), triangleOf(first[1])};
      if (last - first == 2) {
        if (ascends(first[0], lower) == ascends(first[1], lower))
          addEdge(eMD_FlippedNeighbours, triangles, lower, higher);
        // A duplicate is found at the edge of its two lowest vertices.
        const omUInt32 third = thirdVertex(first[0]);
        if (third > higher && third == thirdVertex(first[1])) addTriangles(eMD_DuplicateTriangle, triangles);
      } else {
        addEdge(eMD_NonManifoldEdge, triangles, lower, higher);
        addDuplicates(first, last);
      }
    });
  }

  bool ascends(const Side& side, omUInt32 lower) const { return _mesh.getIndices()[side.sideIdx] == lower; }
  static omUInt32 next(omUInt32 corner) { return corner % 3 == 2 ? corner - 2 : corner + 1; }
  omUInt32 thirdVertex(const Side& side) const { return _mesh.getIndices()[next(next(side.sideIdx))]; }

  /// Triangles with a common edge belong to one fan around each of its ends.
  void joinFans(omUInt32 lower, const Side* first, const Side* last) {
    const auto atLower = [&](const Side& side) { return ascends(side, lower) ? side.sideIdx : next(side.sideIdx); };
    const auto atHigher = [&](const Side& side) { return ascends(side, lower) ? next(side.sideIdx) : side.sideIdx; };
    for (const Side* side = first + 1; side < last; ++side) {
      _fans->unite(atLower(*first), atLower(*side));
      _fans->unite(atHigher(*first), atHigher(*side));
    }
  }

  void addDuplicates(const Side* first, const Side* last) {
    _alike.clear();
    for (const Side* side = first; side != last; ++side)
      if (const omUInt32 third = thirdVertex(*side); third > side->higherVertexIdx)
        _alike.push_back({third, triangleOf(*side)});
    std::sort(_alike.begin(), _alike.end());
    std::size_t begin = 0;
    for (std::size_t i = 1; i < _alike.size(); ++i)
      if (_alike[i].first != _alike[begin].first)
        begin = i;
      else
        addTriangles(eMD_DuplicateTriangle, {_alike[begin].second, _alike[i].second});
  }

  void checkFans() {
    std::vector<omUInt32> nbFans(_mesh.getNbVertices());
    for (omUInt32 t = 0; t < _mesh.getNbTriangles(); ++t) {
      const omUInt32* corners = _mesh.getIndices() + 3 * std::size_t{t};
      if (detail::hasEqualCorners(corners)) continue;
      for (omUInt32 k = 0; k < 3; ++k)
        if (_fans->lowest(3 * t + k) == 3 * t + k && ++nbFans[corners[k]] == 2)
          addVertex(eMD_NonManifoldVertex, t, corners[k]);
    }
    _fans.reset();
  }

  void checkShells() {
    const MeshShells found = findShells(_mesh);
    for (const MeshShell& shell : found.shells)
      if (shell.orientation != eSO_None && shell.orientation != (shell.depth % 2 == 0 ? eSO_Outward : eSO_Inward))
        addTriangles(eMD_InsideOutShell, {static_cast<omUInt32>(shell.firstTriangle), s_noIndex});
  }

  void checkIntersections() {
    const SelfIntersections found = findSelfIntersections(_mesh, {_options.maxNbListed, _options.maxNbTestedATriangle});
    for (const Pair& pair : found.pairColl) addTriangles(eMD_SelfIntersection, pair);
    _found.counts[eMD_SelfIntersection] = found.nbPairs;
    _found.allPairsTested = found.isComplete;
  }

  TriMesh3d<T> _mesh;
  const MeshValidationOptions _options;
  MeshValidation _found;
  std::vector<omUInt32> _validIndices;               // only where some are invalid
  std::vector<bool> _isValid;                        // triangles, only where some are invalid
  std::optional<ormix::detail::DisjointSets> _fans;  // of corners
  std::vector<std::pair<omUInt32, omUInt32>> _alike;
};

}  // namespace

std::size_t MeshValidation::getNb() const { return std::accumulate(counts.begin(), counts.end(), std::size_t{0}); }

template <class T>
MeshValidation validate(const TriMesh3d<T>& mesh, const MeshValidationOptions& options) {
  if (mesh.getNbVertices() > MeshTopology::s_maxNbVertices)
    logAndThrow(detail::tooManyVertices().getMessage(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
  if (mesh.getNbTriangles() > MeshTopology::s_maxNbTriangles)
    logAndThrow(detail::tooManyTriangles().getMessage(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return Validator<T>(mesh, options).run();
}

std::ostream& operator<<(std::ostream& stream, const MeshDefect& defect) {
  const auto print = [&stream](const char* one, const char* several, const Pair& indices) {
    if (indices[0] == s_noIndex) return;
    if (indices[1] == s_noIndex)
      stream << one << ' ' << indices[0] << ", ";
    else
      stream << several << ' ' << indices[0] << " and " << indices[1] << ", ";
  };
  stream << toString(defect.kind) << ": ";
  print("triangle", "triangles", defect.triangles);
  print("vertex", "vertices", defect.vertices);
  return stream << "at " << defect.place;
}

std::ostream& operator<<(std::ostream& stream, const MeshValidation& validation) {
  stream << validation.nbVertices << " vertices, " << validation.nbTriangles << " triangles: ";
  if (validation.isClean())
    stream << "no defects";
  else
    stream << validation.getNb() << " defects";
  for (std::size_t kind = 0; kind < s_nbMeshDefects; ++kind)
    if (validation.counts[kind] > 0)
      stream << '\n' << toString(static_cast<eMeshDefect>(kind)) << ": " << validation.counts[kind];
  for (const MeshDefect& defect : validation.defectColl) stream << "\n  " << defect;
  if (!validation.allPairsTested) stream << "\nThe search for self-intersections was cut short";
  return stream;
}

template ORMIX_GEOMETRY_API MeshValidation validate(const TriMesh3d<omInt32>&, const MeshValidationOptions&);
template ORMIX_GEOMETRY_API MeshValidation validate(const TriMesh3d<omUInt32>&, const MeshValidationOptions&);
template ORMIX_GEOMETRY_API MeshValidation validate(const TriMesh3d<omReal32>&, const MeshValidationOptions&);
template ORMIX_GEOMETRY_API MeshValidation validate(const TriMesh3d<omReal64>&, const MeshValidationOptions&);

}  // namespace ormix::geom
