#include <ORMIXGeometry/Entity/3d/Mesh/EdgeIndex.h>
#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexAdjTriMesh3d.h>
#include <ORMIXGeometry/Entity/ScalarInstances.h>

#include <algorithm>
#include <ostream>
#include <utility>

namespace ormix::geom {

namespace {

using NeighbourTriple = std::array<omUInt32, 3>;

std::vector<NeighbourTriple> findNeighbours(std::size_t nbVertices, const std::vector<IndexTriangle>& triangles) {
  using Side = detail::EdgeIndex::Side;
  std::vector<NeighbourTriple> neighbours(triangles.size(), {s_noNeighbour, s_noNeighbour, s_noNeighbour});
  if (triangles.empty()) return neighbours;
  const auto neighbourAt = [&neighbours](const Side& side) -> omUInt32& {
    return neighbours[side.sideIdx / 3][side.sideIdx % 3];
  };
  detail::EdgeIndex edges(nbVertices, triangles.front().data(), triangles.size());
  edges.visitEdges([&](omUInt32, const Side* first, const Side* last) {
    if (last - first == 2) {
      neighbourAt(first[0]) = first[1].sideIdx / 3;
      neighbourAt(first[1]) = first[0].sideIdx / 3;
    } else if (last - first > 2) {
      for (const Side* side = first; side != last; ++side) neighbourAt(*side) = s_severalNeighbours;
    }
  });
  return neighbours;
}

}  // namespace

template <class T>
FaceVertexAdjTriMesh3d<T>& FaceVertexAdjTriMesh3d<T>::operator=(const FaceVertexAdjTriMesh3d& other) {
  cast(other, *this);
  return *this;
}

template <class T>
bool FaceVertexAdjTriMesh3d<T>::isClosed() const {
  return std::all_of(_neighbourColl.begin(), _neighbourColl.end(), [](const NeighbourTriple& neighbours) {
    return std::all_of(neighbours.begin(), neighbours.end(), [](omUInt32 n) { return n < s_severalNeighbours; });
  });
}

template <class T>
const std::array<omUInt32, 3>& FaceVertexAdjTriMesh3d<T>::getNeighbours(std::size_t triangleIdx) const {
  _mesh.getTriangleVertexIndices(triangleIdx);  // checks the index
  return _neighbourColl[triangleIdx];
}

template <class T>
BoolResult FaceVertexAdjTriMesh3d<T>::build(VertexColl vertexColl, TriangleColl triangleColl) {
  FaceVertexTriMesh3d<T> mesh;
  BoolResult built = mesh.build(std::move(vertexColl), std::move(triangleColl));
  if (!built) return built;
  _neighbourColl = findNeighbours(mesh.getNbVertices(), mesh.getTriangleColl());
  _mesh = std::move(mesh);
  return built;
}

template <class T>
void FaceVertexAdjTriMesh3d<T>::clear() noexcept {
  _mesh.clear();
  _neighbourColl.clear();
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const FaceVertexAdjTriMesh3d<T>& mesh) {
  return stream << mesh.getMesh();
}

template <class T>
bool compare(const FaceVertexAdjTriMesh3d<T>& a, const FaceVertexAdjTriMesh3d<T>& b, std::common_type_t<T> tolerance) {
  return compare(a.getMesh(), b.getMesh(), tolerance);
}

template <class TOut, class TIn>
FaceVertexAdjTriMesh3d<TOut> cast(const FaceVertexAdjTriMesh3d<TIn>& mesh) {
  FaceVertexAdjTriMesh3d<TOut> result;
  cast(mesh, result);
  return result;
}

// Nothing fails once there is room.
template <class TOut, class TIn>
void cast(const FaceVertexAdjTriMesh3d<TIn>& mesh, FaceVertexAdjTriMesh3d<TOut>& result) {
  result._neighbourColl.reserve(mesh.getNbTriangles());
  cast(mesh.getMesh(), result._mesh);
  result._neighbourColl = mesh.getNeighbourColl();
}

#define ORMIX_GEOMETRY_INSTANTIATE_COMPARE(T)                                                                  \
  template ORMIX_GEOMETRY_API bool compare(const FaceVertexAdjTriMesh3d<T>&, const FaceVertexAdjTriMesh3d<T>&, \
                                           std::common_type_t<T>);
ORMIX_GEOMETRY_INSTANTIATE_COMPARE(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_COMPARE(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_COMPARE(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_COMPARE(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_COMPARE
ORMIX_GEOMETRY_INSTANTIATE_PRINT(FaceVertexAdjTriMesh3d)
ORMIX_GEOMETRY_INSTANTIATE_CASTS(FaceVertexAdjTriMesh3d)

template class FaceVertexAdjTriMesh3d<omInt32>;
template class FaceVertexAdjTriMesh3d<omUInt32>;
template class FaceVertexAdjTriMesh3d<omReal32>;
template class FaceVertexAdjTriMesh3d<omReal64>;

}  // namespace ormix::geom
