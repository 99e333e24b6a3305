#include <ORMIXGeometry/Entity/3d/Mesh/MeshConversion.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <utility>

namespace ormix::geom {

namespace {

void require(const BoolResult& result) {
  if (!result) logAndThrow(result.getMessage(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

template <class T>
std::vector<Point3dData<T>> copiedVertices(const TriMesh3d<T>& mesh) {
  return {mesh.getVertices(), mesh.getVertices() + mesh.getNbVertices()};
}

template <class T>
std::vector<IndexTriangle> copiedTriangles(const TriMesh3d<T>& mesh) {
  std::vector<IndexTriangle> triangles;
  triangles.reserve(mesh.getNbTriangles());
  visitTriangleIndices(mesh, [&triangles](omUInt32 i0, omUInt32 i1, omUInt32 i2) {
    triangles.push_back({i0, i1, i2});
  });
  return triangles;
}

template <class Result, class T>
Result built(const TriMesh3d<T>& mesh) {
  require(checkIndices(mesh));  // before anything is copied
  Result result;
  require(result.build(copiedVertices(mesh), copiedTriangles(mesh)));
  return result;
}

}  // namespace

template <class T>
BoolResult toMesh3d(const TriMesh3d<T>& mesh, Mesh3d<T>& result, eNonManifoldPolicy policy,
                    typename Mesh3d<T>::IndexColl* ownerColl) {
  if (BoolResult refused = checkIndices(mesh); !refused) return refused;
  typename Mesh3d<T>::IndexColl indices(mesh.getIndices(), mesh.getIndices() + 3 * mesh.getNbTriangles());
  return result.build(copiedVertices(mesh), std::move(indices), policy, ownerColl);
}

template <class T>
Mesh3d<T> toMesh3d(const TriMesh3d<T>& mesh, eNonManifoldPolicy policy) {
  Mesh3d<T> result;
  require(toMesh3d(mesh, result, policy));
  return result;
}

template <class T>
FaceVertexTriMesh3d<T> toFaceVertexTriMesh3d(const TriMesh3d<T>& mesh) {
  return built<FaceVertexTriMesh3d<T>>(mesh);
}

template <class T>
FaceVertexAdjTriMesh3d<T> toFaceVertexAdjTriMesh3d(const TriMesh3d<T>& mesh) {
  return built<FaceVertexAdjTriMesh3d<T>>(mesh);
}

#define ORMIX_GEOMETRY_INSTANTIATE_CONVERSIONS(T)                                                      \
  template ORMIX_GEOMETRY_API BoolResult toMesh3d(const TriMesh3d<T>&, Mesh3d<T>&, eNonManifoldPolicy, \
                                                  Mesh3d<T>::IndexColl*);                              \
  template ORMIX_GEOMETRY_API Mesh3d<T> toMesh3d(const TriMesh3d<T>&, eNonManifoldPolicy);             \
  template ORMIX_GEOMETRY_API FaceVertexTriMesh3d<T> toFaceVertexTriMesh3d(const TriMesh3d<T>&);       \
  template ORMIX_GEOMETRY_API FaceVertexAdjTriMesh3d<T> toFaceVertexAdjTriMesh3d(const TriMesh3d<T>&);
ORMIX_GEOMETRY_INSTANTIATE_CONVERSIONS(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_CONVERSIONS(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_CONVERSIONS(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_CONVERSIONS(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_CONVERSIONS

}  // namespace ormix::geom
