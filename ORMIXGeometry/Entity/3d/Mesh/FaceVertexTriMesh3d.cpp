#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexTriMesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopology.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopologyChecks.h>
#include <ORMIXGeometry/Entity/PointCollection.h>
#include <ORMIXGeometry/Entity/ScalarInstances.h>
#include <ORMIXGeometry/Message/EntityMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <ostream>
#include <utility>

namespace ormix::geom {

template <class T>
FaceVertexTriMesh3d<T>& FaceVertexTriMesh3d<T>::operator=(const FaceVertexTriMesh3d& other) {
  cast(other, *this);
  return *this;
}

template <class T>
const Point3dData<T>& FaceVertexTriMesh3d<T>::getVertex(std::size_t vertexIdx) const {
  detail::requireVertex(vertexIdx, _vertexColl.size());
  return _vertexColl[vertexIdx];
}

template <class T>
void FaceVertexTriMesh3d<T>::setVertex(std::size_t vertexIdx, const Point3dData<T>& point) {
  detail::requireVertex(vertexIdx, _vertexColl.size());
  _vertexColl[vertexIdx] = point;
}

template <class T>
const IndexTriangle& FaceVertexTriMesh3d<T>::getTriangleVertexIndices(std::size_t triangleIdx) const {
  if (triangleIdx >= _triangleColl.size())
    logAndThrow(formatMessage<eEntityMessage>(eEntityMessage::eEM_InvalidTriangleIndex, triangleIdx, getNbTriangles()),
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return _triangleColl[triangleIdx];
}

template <class T>
std::array<Point3dData<T>, 3> FaceVertexTriMesh3d<T>::getTriangle(std::size_t triangleIdx) const {
  const IndexTriangle& corners = getTriangleVertexIndices(triangleIdx);
  return {_vertexColl[corners[0]], _vertexColl[corners[1]], _vertexColl[corners[2]]};
}

template <class T>
void FaceVertexTriMesh3d<T>::reserve(std::size_t nbVertices, std::size_t nbTriangles) {
  _vertexColl.reserve(nbVertices);
  _triangleColl.reserve(nbTriangles);
}

template <class T>
std::size_t FaceVertexTriMesh3d<T>::addVertex(const Point3dData<T>& point) {
  if (_vertexColl.size() >= MeshTopology::s_maxNbVertices)
    logAndThrow(detail::tooManyVertices().getMessage(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
  _vertexColl.push_back(point);
  return _vertexColl.size() - 1;
}

template <class T>
BoolResult FaceVertexTriMesh3d<T>::addTriangle(std::size_t vertexIdx0, std::size_t vertexIdx1, std::size_t vertexIdx2) {
  for (const std::size_t corner : {vertexIdx0, vertexIdx1, vertexIdx2})
    if (corner >= getNbVertices()) return detail::invalidCorner(getNbTriangles(), corner, getNbVertices());
  if (getNbTriangles() >= MeshTopology::s_maxNbTriangles) return detail::tooManyTriangles();
  _triangleColl.push_back(
      {static_cast<omUInt32>(vertexIdx0), static_cast<omUInt32>(vertexIdx1), static_cast<omUInt32>(vertexIdx2)});
  return {};
}

template <class T>
BoolResult FaceVertexTriMesh3d<T>::build(VertexColl vertexColl, TriangleColl triangleColl) {
  if (BoolResult refused =
          checkIndices(TriMesh3d<T>(vertexColl.data(), vertexColl.size(), triangleColl.data(), triangleColl.size()));
      !refused)
    return refused;
  _vertexColl = std::move(vertexColl);
  _triangleColl = std::move(triangleColl);
  return {};
}

template <class T>
void FaceVertexTriMesh3d<T>::reverseOrientation() {
  for (IndexTriangle& triangle : _triangleColl) std::swap(triangle[1], triangle[2]);
}

template <class T>
void FaceVertexTriMesh3d<T>::clear() noexcept {
  _vertexColl.clear();
  _triangleColl.clear();
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const FaceVertexTriMesh3d<T>& mesh) {
  detail::printPoints(stream << "[vertices=", mesh.getVertexColl()) << ", triangles=[";
  const char* separator = "";
  for (const IndexTriangle& triangle : mesh.getTriangleColl()) {
    stream << separator << '[' << triangle[0] << ", " << triangle[1] << ", " << triangle[2] << ']';
    separator = ", ";
  }
  return stream << "]]";
}

template <class T>
bool compare(const FaceVertexTriMesh3d<T>& a, const FaceVertexTriMesh3d<T>& b, std::common_type_t<T> tolerance) {
  if (a.getNbVertices() != b.getNbVertices() || a.getTriangleColl() != b.getTriangleColl()) return false;
  for (std::size_t vertex = 0; vertex < a.getNbVertices(); ++vertex)
    if (!compare(a.getVertexColl()[vertex], b.getVertexColl()[vertex], tolerance)) return false;
  return true;
}

template <class TOut, class TIn>
FaceVertexTriMesh3d<TOut> cast(const FaceVertexTriMesh3d<TIn>& mesh) {
  FaceVertexTriMesh3d<TOut> result;
  cast(mesh, result);
  return result;
}

// Nothing fails once there is room.
template <class TOut, class TIn>
void cast(const FaceVertexTriMesh3d<TIn>& mesh, FaceVertexTriMesh3d<TOut>& result) {
  result.reserve(mesh.getNbVertices(), mesh.getNbTriangles());
  detail::castPoints(mesh.getVertexColl(), result._vertexColl);
  result._triangleColl = mesh.getTriangleColl();
}

#define ORMIX_GEOMETRY_INSTANTIATE_COMPARE(T)                                                            \
  template ORMIX_GEOMETRY_API bool compare(const FaceVertexTriMesh3d<T>&, const FaceVertexTriMesh3d<T>&, \
                                           std::common_type_t<T>);
ORMIX_GEOMETRY_INSTANTIATE_COMPARE(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_COMPARE(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_COMPARE(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_COMPARE(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_COMPARE
ORMIX_GEOMETRY_INSTANTIATE_PRINT(FaceVertexTriMesh3d)
ORMIX_GEOMETRY_INSTANTIATE_CASTS(FaceVertexTriMesh3d)

template class FaceVertexTriMesh3d<omInt32>;
template class FaceVertexTriMesh3d<omUInt32>;
template class FaceVertexTriMesh3d<omReal32>;
template class FaceVertexTriMesh3d<omReal64>;

}  // namespace ormix::geom
