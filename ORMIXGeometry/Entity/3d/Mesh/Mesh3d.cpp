#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopologyChecks.h>
#include <ORMIXGeometry/Entity/PointCollection.h>
#include <ORMIXGeometry/Entity/ScalarInstances.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Entity/3d/Entity3d.ipp>

#include <ostream>
#include <utility>

namespace ormix::geom {

// Nothing fails once there is room.
template <class T>
Mesh3d<T>& Mesh3d<T>::operator=(const Mesh3d& other) {
  cast(other, *this);
  return *this;
}

template <class T>
const Point3dData<T>& Mesh3d<T>::getVertex(std::size_t vertexIdx) const {
  detail::requireVertex(vertexIdx, _vertexColl.size());
  return _vertexColl[vertexIdx];
}

template <class T>
void Mesh3d<T>::setVertex(std::size_t vertexIdx, const Point3dData<T>& point) {
  detail::requireVertex(vertexIdx, _vertexColl.size());
  _vertexColl[vertexIdx] = point;
}

template <class T>
std::array<Point3dData<T>, 3> Mesh3d<T>::getTriangle(std::size_t triangleIdx) const {
  const std::array<std::size_t, 3> indices = getTriangleVertexIndices(triangleIdx);
  return {_vertexColl[indices[0]], _vertexColl[indices[1]], _vertexColl[indices[2]]};
}

template <class T>
void Mesh3d<T>::reserve(std::size_t nbVertices, std::size_t nbTriangles) {
  _vertexColl.reserve(nbVertices);
  _topology.reserve(nbTriangles);
}

template <class T>
std::size_t Mesh3d<T>::addVertex(const Point3dData<T>& point) {
  if (_vertexColl.size() >= MeshTopology::s_maxNbVertices)
    logAndThrow(detail::tooManyVertices().getMessage(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
  _vertexColl.push_back(point);
  return _vertexColl.size() - 1;
}

template <class T>
BoolResult Mesh3d<T>::build(VertexColl vertexColl, IndexColl vertexIndexColl, eNonManifoldPolicy policy,
                            IndexColl* ownerColl) {
  MeshTopology topology;
  IndexColl owners;
  IndexColl origins;
  BoolResult result = topology.build(vertexColl.size(), std::move(vertexIndexColl), policy, owners, origins);
  if (!result) return result;
  vertexColl.reserve(vertexColl.size() + origins.size());
  for (const omUInt32 origin : origins) vertexColl.push_back(vertexColl[origin]);
  _vertexColl = std::move(vertexColl);
  _topology = std::move(topology);
  if (ownerColl) *ownerColl = std::move(owners);
  return result;
}

template <class T>
bool Mesh3d<T>::copyTriangles(const Mesh3d& mesh) {
  if (mesh.getNbVertices() > getNbVertices()) return false;
  _topology = mesh._topology;
  _mesh3dType = mesh._mesh3dType;
  return true;
}

template <class T>
void Mesh3d<T>::clear() noexcept {
  _vertexColl.clear();
  _topology.clear();
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const Mesh3d<T>& mesh) {
  detail::printPoints(stream << "[vertices=", mesh.getVertexColl()) << ", triangles=[";
  const char* separator = "";
  visitTriangleIndices(mesh.getTopology(), [&](omUInt32 i0, omUInt32 i1, omUInt32 i2) {
    stream << separator << '[' << i0 << ", " << i1 << ", " << i2 << ']';
    separator = ", ";
  });
  return stream << "]]";
}

template <class T>
bool compare(const Mesh3d<T>& a, const Mesh3d<T>& b, std::common_type_t<T> tolerance) {
  if (a.getMesh3dType() != b.getMesh3dType() || a.getNbVertices() != b.getNbVertices() ||
      !haveSameTriangles(a.getTopology(), b.getTopology()))
    return false;
  for (std::size_t vertex = 0; vertex < a.getNbVertices(); ++vertex)
    if (!compare(a.getVertexColl()[vertex], b.getVertexColl()[vertex], tolerance)) return false;
  return true;
}

template <class TOut, class TIn>
Mesh3d<TOut> cast(const Mesh3d<TIn>& mesh) {
  Mesh3d<TOut> result;
  cast(mesh, result);
  return result;
}

template <class TOut, class TIn>
void cast(const Mesh3d<TIn>& mesh, Mesh3d<TOut>& result) {
  result.reserve(mesh.getNbVertices(), mesh.getNbTriangles());
  detail::castPoints(mesh.getVertexColl(), result._vertexColl);
  result._mesh3dType = mesh.getMesh3dType();
  result._topology = mesh.getTopology();
}

#define ORMIX_GEOMETRY_INSTANTIATE_COMPARE(T) \
  template ORMIX_GEOMETRY_API bool compare(const Mesh3d<T>&, const Mesh3d<T>&, std::common_type_t<T>);
ORMIX_GEOMETRY_INSTANTIATE_COMPARE(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_COMPARE(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_COMPARE(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_COMPARE(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_COMPARE
ORMIX_GEOMETRY_INSTANTIATE_PRINT(Mesh3d)
ORMIX_GEOMETRY_INSTANTIATE_CASTS(Mesh3d)

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(, Mesh3d)
