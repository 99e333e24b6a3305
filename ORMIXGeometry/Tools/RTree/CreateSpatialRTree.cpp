#include <ORMIXGeometry/Entity/3d/SpatialEntities.h>
#include <ORMIXGeometry/Tools/RTree/CreateRTree.h>
#include <ORMIXGeometry/Tools/RTree/TreeOfParts.h>
#include <ORMIXGeometry/Transform/3d/EnvelopeTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SpatialParts.h>

namespace ormix::geom {

namespace {

using namespace detail;

template <class U>
using Triangles = std::vector<std::array<Point3dData<U>, 3>>;

template <class U, class T>
void addTriangles(const Mesh3d<T>& mesh, Triangles<U>& items) {
  items.reserve(items.size() + mesh.getNbTriangles());
  visitTriangles(mesh, [&items](const auto& p0, const auto& p1, const auto& p2) {
    items.push_back({toCoordinate<U>(p0), toCoordinate<U>(p1), toCoordinate<U>(p2)});
  });
}
template <class U, class T>
void addTriangles(const MeshWithHoles3d<T>& mesh, Triangles<U>& items) {
  visitNodes(mesh, [&items](const MeshWithHoles3d<T>& node) {
    addTriangles(node.getExteriorMesh(), items);
    return true;
  });
}
template <class U>
void addTriangles(const Shape3d& shape, Triangles<U>& items) {
  for (const auto& mesh : shape.getMeshWithHolesColl())
    if (mesh) addTriangles(*mesh, items);
}
template <class U, class Solid>
RTree<LightTriangle3d<U>> treeOfTriangles(const Solid& solid) {
  Triangles<U> items;
  addTriangles(solid, items);
  return RTreeAccess::fromPoints<LightTriangle3d<U>>(std::move(items));
}

/// visitRuns() as a function object.
struct VisitRuns {
  template <class Entity, class Visit>
  auto operator()(const Entity& entity, Visit visit) const -> decltype(detail::visitRuns(entity, visit)) {
    return detail::visitRuns(entity, visit);
  }
};

}  // namespace

template <class T>
RTree<Point3d<IndexCoordinate<T>>> createRTree(const PointCloud3d<T>& cloud) {
  return treeOfPoints<Point3d<IndexCoordinate<T>>>(cloud);
}
template <class T>
RTree<LightTriangle3d<IndexCoordinate<T>>> createRTree(const Mesh3d<T>& mesh) {
  return treeOfTriangles<IndexCoordinate<T>>(mesh);
}
template <class T>
RTree<LightTriangle3d<IndexCoordinate<T>>> createRTree(const MeshWithHoles3d<T>& mesh) {
  return treeOfTriangles<IndexCoordinate<T>>(mesh);
}
RTree<LightTriangle3d<omReal64>> createRTree(const Shape3d& shape) { return treeOfTriangles<omReal64>(shape); }
RTree<BoundingBox3d<omReal64>> createRTree(const std::vector<GeometryEntity3dPtr>& entities) {
  return treeOfBoxes<BoundingBox3d<omReal64>, EnvelopeTransform3d>(SpatialEntityList(), entities, VisitRuns(),
                                                                   __PRETTY_FUNCTION__);
}

#define ORMIX_GEOMETRY_INSTANTIATE_CREATE(T)                                                            \
  template ORMIX_GEOMETRY_API RTree<Point3d<IndexCoordinate<T>>> createRTree(const PointCloud3d<T>&);   \
  template ORMIX_GEOMETRY_API RTree<LightTriangle3d<IndexCoordinate<T>>> createRTree(const Mesh3d<T>&); \
  template ORMIX_GEOMETRY_API RTree<LightTriangle3d<IndexCoordinate<T>>> createRTree(const MeshWithHoles3d<T>&);
ORMIX_GEOMETRY_INSTANTIATE_CREATE(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_CREATE(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_CREATE(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_CREATE(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_CREATE

}  // namespace ormix::geom
