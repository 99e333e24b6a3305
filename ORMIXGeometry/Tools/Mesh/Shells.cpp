#include <ORMIXGeometry/Entity/3d/Mesh/EdgeIndex.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshConversion.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Mesh/ComponentParts.h>
#include <ORMIXGeometry/Tools/Mesh/Shells.h>
#include <ORMIXGeometry/Tools/Mesh/TriangleBoxes.h>
#include <ORMIXMath/Index/BoxTree.h>
#include <ORMIXMath/Location/RayCrossing.h>

#include <algorithm>
#include <boost/smart_ptr/make_shared.hpp>
#include <cmath>
#include <memory>
#include <numeric>
#include <string>
#include <utility>

namespace ormix::geom {

namespace {

using Box = ormix::detail::IndexBox<3>;
using Tree = ormix::detail::BoxTree<3>;

/// Sets whether the shells are closed and oriented, from how many of its triangles each edge has in either direction.
template <class T>
void findClosed(const TriMesh3d<T>& mesh, MeshShells& found) {
  using Side = detail::EdgeIndex::Side;
  for (omUInt32 t = 0; t < mesh.getNbTriangles(); ++t)
    if (!detail::hasEqualCorners(mesh.getIndices() + 3 * std::size_t{t})) {
      MeshShell& shell = found.shells[found.labels[t]];
      shell.isClosed = shell.isOriented = true;
    }
  const auto labelOf = [&found](const Side& side) { return found.labels[side.sideIdx / 3]; };
  detail::EdgeIndex edges(mesh.getNbVertices(), mesh.getIndices(), mesh.getNbTriangles());
  std::vector<std::pair<omUInt32, bool>> sides;  // shells and directions
  edges.visitEdges([&](omUInt32 lower, const Side* first, const Side* last) {
    const auto ascends = [&](const Side& side) { return mesh.getIndices()[side.sideIdx] == lower; };
    if (last - first == 1) {
      found.shells[labelOf(*first)].isClosed = false;
    } else if (last - first == 2 && labelOf(first[0]) == labelOf(first[1])) {
      if (ascends(first[0]) == ascends(first[1])) found.shells[labelOf(*first)].isOriented = false;
    } else {
      sides.clear();
      for (const Side* side = first; side != last; ++side) sides.push_back({labelOf(*side), ascends(*side)});
      std::sort(sides.begin(), sides.end());
      for (auto begin = sides.begin(); begin != sides.end();) {
        const auto end = std::find_if(begin, sides.end(), [&](const auto& s) { return s.first != begin->first; });
        const auto nbAscending = std::count_if(begin, end, [](const auto& s) { return s.second; });
        MeshShell& shell = found.shells[begin->first];
        if ((end - begin) % 2 != 0)
          shell.isClosed = false;
        else if (2 * nbAscending != end - begin)
          shell.isOriented = false;
        begin = end;
      }
    }
  });
}

/// Shells as sets of points: asks whether others are inside.
template <class T>
class Nesting {
 public:
  Nesting(const TriMesh3d<T>& mesh, MeshShells& found)
      : _mesh(mesh),
        _shells(found.shells),
        _triangles(found.labels, found.shells.size()),
        _boxes(found.shells.size()),
        _trees(found.shells.size()) {}

  /// Sets volumes and orientations; to be called first, as the size of shells follows from it.
  void measure() {
    std::vector<omUInt32> indices;
    for (std::size_t k = 0; k < _shells.size(); ++k) {
      indices.clear();
      for (const omUInt32* t = _triangles.begin(k); t != _triangles.end(k); ++t) {
        const omUInt32* corners = _mesh.getIndices() + 3 * std::size_t{*t};
        indices.insert(indices.end(), corners, corners + 3);
        _boxes[k].add(detail::triangleBox(_mesh, *t));
      }
      MeshShell& shell = _shells[k];
      shell.firstTriangle = *_triangles.begin(k);
      shell.nbTriangles = _triangles.count(k);
      const TriangleMeshView<T> view{_mesh.getCoordinates(), indices.data(), indices.size() / 3};
      shell.volume = meshLocalVolume(view);
      if (!std::isfinite(shell.volume)) _boxes[k] = Box();  // as of a vertex that is not finite
      if (shell.isClosed && shell.isOriented) shell.orientation = orientationOf(shell.volume, meshArea(view), k);
    }
  }

  /// Sets parents and depths.
  void nest() {
    std::vector<Box> around(_boxes);
    for (std::size_t k = 0; k < _shells.size(); ++k)
      if (!_shells[k].isClosed) around[k] = Box();
    const Tree tree(around);
    std::vector<std::size_t> order(_shells.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) { return isSmaller(b, a); });
    std::vector<std::size_t> candidates;
    for (const std::size_t k : order) {  // the greatest first, so that the depths of parents are known
      if (_boxes[k].empty()) continue;
      candidates.clear();
      tree.visitIntersecting({_boxes[k].low, _boxes[k].low}, [&](std::size_t other) {
        if (isInBox(k, other) && isSmaller(k, other)) candidates.push_back(other);
        return true;
      });
      std::sort(candidates.begin(), candidates.end(), [this](std::size_t a, std::size_t b) { return isSmaller(a, b); });
      const auto parent =
          std::find_if(candidates.begin(), candidates.end(), [&](std::size_t other) { return isInside(k, other); });
      if (parent == candidates.end()) continue;
      _shells[k].parent = *parent;
      _shells[k].depth = _shells[*parent].depth + 1;
    }
  }

 private:
  static constexpr std::size_t s_nbTried = 16;        // vertices, and then centres, before a shell counts as outside
  static constexpr std::size_t s_maxNbCompared = 32;  // triangles of a shell without a tree

  // The volume is off by the rounding of its terms, each at most the area times the extent.
  eShellOrientation orientationOf(omReal64 volume, omReal64 area, std::size_t shell) const {
    constexpr omReal64 s_rounding = 0x1p-49;
    if (!(std::abs(volume) > s_rounding * area * extentOf(shell))) return eSO_None;
    return volume > 0 ? eSO_Outward : eSO_Inward;
  }

  omReal64 extentOf(std::size_t shell) const {
    const Box& box = _boxes[shell];
    return (box.high[0] - box.low[0]) + (box.high[1] - box.low[1]) + (box.high[2] - box.low[2]);
  }

  // A total order in which a shell comes before those around it: their boxes contain its box.
  bool isSmaller(std::size_t a, std::size_t b) const {
    const omReal64 extentA = extentOf(a), extentB = extentOf(b);
    if (extentA != extentB) return extentA < extentB;
    const omReal64 volumeA = sizeOf(a), volumeB = sizeOf(b);
    return volumeA != volumeB ? volumeA < volumeB : a < b;
  }

  // A shell without a box has a volume that is not finite, and no order.
  omReal64 sizeOf(std::size_t shell) const { return _boxes[shell].empty() ? 0 : std::abs(_shells[shell].volume); }

  bool isInBox(std::size_t inner, std::size_t outer) const {
    for (std::size_t axis = 0; axis < 3; ++axis)
      if (_boxes[inner].low[axis] < _boxes[outer].low[axis] || _boxes[outer].high[axis] < _boxes[inner].high[axis])
        return false;
    return true;
  }

  bool isInside(std::size_t inner, std::size_t outer) {
    const std::size_t count = _triangles.count(inner);
    const std::size_t nbTried = std::min(count, s_nbTried);
    bool isIn = false;
    for (std::size_t i = 0; i < nbTried; ++i)
      if (locate(corners(inner, i * count / nbTried)[0], outer, isIn)) return isIn;
    for (std::size_t i = 0; i < nbTried; ++i) {
      const std::array<SpatialPoint, 3> p = corners(inner, i * count / nbTried);
      const SpatialPoint centre{(p[0].x + p[1].x + p[2].x) / 3, (p[0].y + p[1].y + p[2].y) / 3,
                                (p[0].z + p[1].z + p[2].z) / 3};
      if (locate(centre, outer, isIn)) return isIn;
    }
    return false;
  }

  std::array<SpatialPoint, 3> corners(std::size_t shell, std::size_t place) const {
    return detail::spatialCorners(_mesh, _triangles.begin(shell)[place]);
  }

  /// False where the point is on the shell.
  bool locate(const SpatialPoint& point, std::size_t shell, bool& isIn) {
    isIn = false;
    const auto cross = [&](std::size_t place) {
      const std::array<SpatialPoint, 3> p = corners(shell, place);
      const auto crossing = ormix::detail::rayCrossing(point, p[0], p[1], p[2]);
      if (crossing == ormix::detail::eRC_Touches) return false;
      if (crossing == ormix::detail::eRC_Crosses) isIn = !isIn;
      return true;
    };
    if (_triangles.count(shell) <= s_maxNbCompared) {
      for (std::size_t place = 0; place < _triangles.count(shell); ++place)
        if (!cross(place)) return false;
      return true;
    }
    const Box ray{{point.x, point.y, point.z}, {_boxes[shell].high[0], point.y, point.z}};
    return treeOf(shell).visitIntersecting(ray, cross);
  }

  const Tree& treeOf(std::size_t shell) {
    if (!_trees[shell]) {
      std::vector<Box> boxes;
      boxes.reserve(_triangles.count(shell));
      for (const omUInt32* t = _triangles.begin(shell); t != _triangles.end(shell); ++t)
        boxes.push_back(detail::triangleBox(_mesh, *t));
      _trees[shell] = std::make_unique<Tree>(boxes);
    }
    return *_trees[shell];
  }

  const TriMesh3d<T> _mesh;
  std::vector<MeshShell>& _shells;
  const detail::TrianglesByComponent _triangles;
  std::vector<Box> _boxes;
  std::vector<std::unique_ptr<Tree>> _trees;
};

/// The mesh of the triangles of a shell, with its role.
template <class T>
boost::shared_ptr<MeshWithHoles3d<T>> bodyOf(std::vector<Point3dData<T>> vertices,
                                             const std::vector<IndexTriangle>& triangles, std::size_t depth) {
  auto body = boost::make_shared<MeshWithHoles3d<T>>();
  typename Mesh3d<T>::IndexColl indices;
  indices.reserve(3 * triangles.size());
  for (const IndexTriangle& t : triangles) indices.insert(indices.end(), t.begin(), t.end());
  const BoolResult built = body->getExteriorMesh().build(std::move(vertices), std::move(indices), eNMP_OwnVertices);
  if (!built) logAndThrow(built.getMessage(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
  body->getExteriorMesh().setMesh3dType(depth % 2 == 0 ? eM3DT_Exterior : eM3DT_Interior);
  return body;
}

}  // namespace

template <class T>
MeshShells findShells(const TriMesh3d<T>& mesh, eMeshConnectivity connectivity) {
  MeshShells found;
  found.shells.resize(labelComponents(mesh, found.labels, connectivity));
  findClosed(mesh, found);
  Nesting<T> nesting(mesh, found);
  nesting.measure();
  nesting.nest();
  return found;
}

template <class T>
std::vector<boost::shared_ptr<MeshWithHoles3d<T>>> toMeshesWithHoles(const TriMesh3d<T>& mesh) {
  const MeshShells found = findShells(mesh);
  for (std::size_t k = 0; k < found.shells.size(); ++k)
    if (!found.shells[k].isClosed)
      logAndThrow("Shell " + std::to_string(k) + " of " + std::to_string(found.shells.size()) +
                      ", which begins with triangle " + std::to_string(found.shells[k].firstTriangle) +
                      ", is not closed and bounds no body",
                  __PRETTY_FUNCTION__, __FILE__, __LINE__);
  const detail::TrianglesByComponent triangles(found.labels, found.shells.size());
  detail::ComponentCutter<T> cutter(mesh);
  std::vector<boost::shared_ptr<MeshWithHoles3d<T>>> nodes;
  for (std::size_t k = 0; k < found.shells.size(); ++k) {
    std::vector<Point3dData<T>> vertices;
    std::vector<IndexTriangle> corners;
    cutter.cut(triangles.begin(k), triangles.end(k), vertices, corners);
    nodes.push_back(bodyOf(std::move(vertices), corners, found.shells[k].depth));
  }
  std::vector<boost::shared_ptr<MeshWithHoles3d<T>>> bodies;
  for (std::size_t k = 0; k < nodes.size(); ++k) {
    const std::size_t parent = found.shells[k].parent;
    if (parent == s_noShell) {
      bodies.push_back(nodes[k]);
    } else {
      nodes[parent]->getMeshHoles().push_back(nodes[k]);
      nodes[k]->setParent(nodes[parent]);
    }
  }
  return bodies;
}

#define ORMIX_GEOMETRY_INSTANTIATE_SHELLS(T)                                                 \
  template ORMIX_GEOMETRY_API MeshShells findShells(const TriMesh3d<T>&, eMeshConnectivity); \
  template ORMIX_GEOMETRY_API std::vector<boost::shared_ptr<MeshWithHoles3d<T>>> toMeshesWithHoles(const TriMesh3d<T>&);
ORMIX_GEOMETRY_INSTANTIATE_SHELLS(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_SHELLS(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_SHELLS(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_SHELLS(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_SHELLS

}  // namespace ormix::geom
