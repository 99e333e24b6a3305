#include <ORMIXGeometry/Entity/3d/PointCloud/PointCloud3d.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Transform/3d/TriMeshTransforms.h>
#include <ORMIXGeometry/Transform/EnvelopeOf.h>

namespace ormix::geom {

namespace {

// The vertices as a point cloud, for the time of the transform and without a copy: what maps clouds maps them.
template <class T>
BoolResult mapVertices(const BaseGeometryTransform3d& transform, std::vector<Point3dData<T>>& vertices) {
  PointCloud3d<T> cloud;
  cloud.getCollection().swap(vertices);
  try {
    BoolResult result = transform.applyInSitu(cloud);
    cloud.getCollection().swap(vertices);
    return result;
  } catch (...) {
    cloud.getCollection().swap(vertices);
    throw;
  }
}

template <class Mesh>
Mesh imageOf(const BaseGeometryTransform3d& transform, const Mesh& mesh) {
  Mesh image = mesh;
  if (const BoolResult result = mapVertices(transform, image.getVertexColl()); !result)
    logAndThrow(result.getMessage(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return image;
}

}  // namespace

template <class T>
BoundingBox3d<T> envelope(const TriMesh3d<T>& mesh) {
  detail::GrowingBox<T, 3> box;
  box.includeRun(mesh.getCoordinates(), mesh.getNbVertices());
  if (box.isEmpty) logAndThrow("A mesh without vertices has no envelope", __PRETTY_FUNCTION__, __FILE__, __LINE__);
  if (!box.isFinite)
    logAndThrow("A mesh with a vertex that is not finite has no envelope", __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return BoundingBox3d<T>({box.low[0], box.low[1], box.low[2]}, {box.high[0], box.high[1], box.high[2]});
}

template <class T>
BoolResult applyInSitu(const BaseGeometryTransform3d& transform, FaceVertexTriMesh3d<T>& mesh) {
  return mapVertices(transform, mesh.getVertexColl());
}

template <class T>
BoolResult applyInSitu(const BaseGeometryTransform3d& transform, FaceVertexAdjTriMesh3d<T>& mesh) {
  return mapVertices(transform, mesh.getVertexColl());
}

template <class T>
FaceVertexTriMesh3d<T> apply(const BaseGeometryTransform3d& transform, const FaceVertexTriMesh3d<T>& mesh) {
  return imageOf(transform, mesh);
}

template <class T>
FaceVertexAdjTriMesh3d<T> apply(const BaseGeometryTransform3d& transform, const FaceVertexAdjTriMesh3d<T>& mesh) {
  return imageOf(transform, mesh);
}

// clang-format off
#define ORMIX_GEOMETRY_INSTANTIATE_TRANSFORMS(T)                                                                       \
  template ORMIX_GEOMETRY_API BoundingBox3d<T> envelope(const TriMesh3d<T>&);                                          \
  template ORMIX_GEOMETRY_API BoolResult applyInSitu(const BaseGeometryTransform3d&, FaceVertexTriMesh3d<T>&);         \
  template ORMIX_GEOMETRY_API BoolResult applyInSitu(const BaseGeometryTransform3d&, FaceVertexAdjTriMesh3d<T>&);      \
  template ORMIX_GEOMETRY_API FaceVertexTriMesh3d<T> apply(const BaseGeometryTransform3d&,                             \
                                                           const FaceVertexTriMesh3d<T>&);                             \
  template ORMIX_GEOMETRY_API FaceVertexAdjTriMesh3d<T> apply(const BaseGeometryTransform3d&,                          \
                                                              const FaceVertexAdjTriMesh3d<T>&);
// clang-format on
ORMIX_GEOMETRY_INSTANTIATE_TRANSFORMS(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_TRANSFORMS(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_TRANSFORMS(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_TRANSFORMS(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_TRANSFORMS

}  // namespace ormix::geom
