#pragma once

#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>
#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXMath/Shape/IndexTriangle.h>
#include <ORMIXMath/Shape/TriangleMesh.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <array>
#include <cstddef>

namespace ormix::geom {

template <class T>
class ORMIX_GEOMETRY_API FaceVertexTriMesh3d;
template <class T>
class ORMIX_GEOMETRY_API FaceVertexAdjTriMesh3d;

/// What all meshes of triangles have in common, seen and not copied: a run of vertices and, for each triangle, the
/// indices of its three vertices. A view of a `Mesh3d`, a `FaceVertexTriMesh3d`, a `FaceVertexAdjTriMesh3d` or of
/// arrays of the caller, as files, numpy and graphics hold them; valid until these change. As cheap to copy as two
/// pointers and two counts.
///
/// Algorithms take it by `const TriMesh3d<T>&` and are called with any of these meshes. The indices of a mesh are
/// valid, those of arrays need not be: see `checkIndices`. Nothing else is promised: an edge may have any number of
/// triangles in any direction, triangles may have equal corners or the corners of another, and coordinates may be NaN.
///
/// \tparam T omInt32, omUInt32, omReal32 or omReal64
template <class T>
class TriMesh3d {
 public:
  using CoordinateType = T;  ///< type of the coordinates

  /// A view of nothing.
  constexpr TriMesh3d() = default;
  /// Views of a mesh.
  /// @{
  TriMesh3d(const Mesh3d<T>& mesh)
      : TriMesh3d(mesh.getVertexColl().data(), mesh.getNbVertices(), mesh.getVertexIndexColl().data(),
                  mesh.getNbTriangles()) {}
  TriMesh3d(const FaceVertexTriMesh3d<T>& mesh)
      : TriMesh3d(mesh.getVertexColl().data(), mesh.getNbVertices(), mesh.getTriangleColl().data(),
                  mesh.getNbTriangles()) {}
  TriMesh3d(const FaceVertexAdjTriMesh3d<T>& mesh)
      : TriMesh3d(mesh.getVertexColl().data(), mesh.getNbVertices(), mesh.getTriangleColl().data(),
                  mesh.getNbTriangles()) {}
  /// @}
  /// Views of arrays: `3 nbVertices` coordinates or as many points, `3 nbTriangles` indices or as many triples.
  /// Pointers may be null where there are none. Indices are not checked, see `checkIndices`.
  /// @{
  constexpr TriMesh3d(const Point3dData<T>* vertices, std::size_t nbVertices, const omUInt32* indices,
                      std::size_t nbTriangles)
      : _vertices(vertices), _indices(indices), _nbVertices(nbVertices), _nbTriangles(nbTriangles) {}
  constexpr TriMesh3d(const Point3dData<T>* vertices, std::size_t nbVertices, const IndexTriangle* triangles,
                      std::size_t nbTriangles)
      : TriMesh3d(vertices, nbVertices, nbTriangles == 0 ? nullptr : triangles->data(), nbTriangles) {}
  TriMesh3d(const T* xyz, std::size_t nbVertices, const omUInt32* indices, std::size_t nbTriangles)
      : TriMesh3d(reinterpret_cast<const Point3dData<T>*>(xyz), nbVertices, indices, nbTriangles) {}
  /// @}

  /// Whether there are neither vertices nor triangles.
  constexpr bool isEmpty() const { return _nbVertices == 0 && _nbTriangles == 0; }
  /// Counts: vertices, used or not; triangles.
  /// @{
  constexpr std::size_t getNbVertices() const { return _nbVertices; }
  constexpr std::size_t getNbTriangles() const { return _nbTriangles; }
  /// @}

  /// All vertices; all coordinates x0, y0, z0, x1, …; all indices, three a triangle.
  /// @{
  constexpr const Point3dData<T>* getVertices() const { return _vertices; }
  const T* getCoordinates() const { return reinterpret_cast<const T*>(_vertices); }
  constexpr const omUInt32* getIndices() const { return _indices; }
  /// @}

  /// One vertex, the vertex indices of one triangle, and its corners. Indices are not checked.
  /// @{
  constexpr const Point3dData<T>& getVertex(std::size_t vertexIdx) const { return _vertices[vertexIdx]; }
  constexpr IndexTriangle getTriangleVertexIndices(std::size_t triangleIdx) const {
    const omUInt32* corners = _indices + 3 * triangleIdx;
    return {corners[0], corners[1], corners[2]};
  }
  constexpr std::array<Point3dData<T>, 3> getTriangle(std::size_t triangleIdx) const {
    const omUInt32* corners = _indices + 3 * triangleIdx;
    return {_vertices[corners[0]], _vertices[corners[1]], _vertices[corners[2]]};
  }
  /// @}

  /// The same for the sums of `ORMIXMath/Shape/TriangleMesh.h`.
  operator TriangleMeshView<T>() const { return {getCoordinates(), _indices, _nbTriangles}; }

 private:
  static_assert(sizeof(Point3dData<T>) == 3 * sizeof(T), "points are consecutive coordinates");

  const Point3dData<T>* _vertices = nullptr;
  const omUInt32* _indices = nullptr;
  std::size_t _nbVertices = 0;
  std::size_t _nbTriangles = 0;
};

namespace detail {

template <class Mesh>
struct TriMeshView {};
template <class T>
struct TriMeshView<Mesh3d<T>> {
  using Type = TriMesh3d<T>;
};
template <class T>
struct TriMeshView<FaceVertexTriMesh3d<T>> {
  using Type = TriMesh3d<T>;
};
template <class T>
struct TriMeshView<FaceVertexAdjTriMesh3d<T>> {
  using Type = TriMesh3d<T>;
};

}  // namespace detail

/// The view of a class of meshes, `TriMesh3d<T>`; no type for other classes nor for the view itself. It makes a
/// function on views callable with each mesh: `template <class Mesh, class View = TriMesh3dOf<Mesh>>`.
template <class Mesh>
using TriMesh3dOf = typename detail::TriMeshView<Mesh>::Type;

/// Success when every index is that of a vertex and the counts can be held by a mesh, 2^32 - 1 vertices and a third as
/// many triangles; else a text that names the first triangle that breaks this. Linear.
template <class T>
ORMIX_GEOMETRY_API BoolResult checkIndices(const TriMesh3d<T>& mesh);
template <class Mesh, class View = TriMesh3dOf<Mesh>>
BoolResult checkIndices(const Mesh& mesh) {
  return checkIndices(View(mesh));
}

/// Calls `visit(i0, i1, i2)` with the vertex indices of each triangle, in order of the triangles.
template <class T, class Visit>
void visitTriangleIndices(const TriMesh3d<T>& mesh, Visit visit) {
  const omUInt32* indices = mesh.getIndices();
  for (const omUInt32* last = indices + 3 * mesh.getNbTriangles(); indices != last; indices += 3)
    visit(indices[0], indices[1], indices[2]);
}

/// Calls `visit(p0, p1, p2)` with the corners of each triangle, in order of the triangles.
template <class T, class Visit>
void visitTriangles(const TriMesh3d<T>& mesh, Visit visit) {
  const Point3dData<T>* vertices = mesh.getVertices();
  visitTriangleIndices(mesh,
                       [&](omUInt32 i0, omUInt32 i1, omUInt32 i2) { visit(vertices[i0], vertices[i1], vertices[i2]); });
}

}  // namespace ormix::geom
