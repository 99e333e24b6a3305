#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/TriMesh3d.h>

#include <array>
#include <cstddef>
#include <iosfwd>
#include <type_traits>
#include <vector>

namespace ormix::geom {

/// Triangles as files and scanners hold them: vertices, and for each triangle the indices of its three vertices. The
/// indices are valid; beyond that there is no rule: an edge may have any number of triangles in any direction,
/// triangles may have equal corners, or the corners of another, and vertices may coincide or be used by no triangle. A
/// surface whose triangles know their neighbours is a `Mesh3d`; `toMesh3d` makes one, and `validate` says what is in
/// the way.
///
/// Not an entity: neither registered nor archived. A triangle takes 12 bytes, a vertex three coordinates.
///
/// \tparam T omInt32, omUInt32, omReal32 or omReal64
template <class T>
class ORMIX_GEOMETRY_API FaceVertexTriMesh3d {
 public:
  using CoordinateType = T;                         ///< type of the coordinates
  using VertexColl = std::vector<Point3dData<T>>;   ///< vertices in order of their indices
  using TriangleColl = std::vector<IndexTriangle>;  ///< vertex indices of the triangles

  /// An empty mesh.
  FaceVertexTriMesh3d() = default;
  FaceVertexTriMesh3d(const FaceVertexTriMesh3d&) = default;
  FaceVertexTriMesh3d(FaceVertexTriMesh3d&&) noexcept = default;
  /// Reuses the memory of this mesh. When more is needed and allocation fails, the mesh stays unchanged.
  FaceVertexTriMesh3d& operator=(const FaceVertexTriMesh3d& other);
  FaceVertexTriMesh3d& operator=(FaceVertexTriMesh3d&&) noexcept = default;
  ~FaceVertexTriMesh3d() = default;

  /// Whether the mesh has neither vertices nor triangles.
  bool isEmpty() const { return _vertexColl.empty() && _triangleColl.empty(); }
  /// Counts: vertices, used or not; triangles.
  /// @{
  std::size_t getNbVertices() const { return _vertexColl.size(); }
  std::size_t getNbTriangles() const { return _triangleColl.size(); }
  /// @}

  /// The vertices themselves: coordinates may be changed and vertices appended, but a vertex that a triangle uses must
  /// not be removed.
  /// @{
  const VertexColl& getVertexColl() const { return _vertexColl; }
  VertexColl& getVertexColl() { return _vertexColl; }
  /// @}
  /// The vertex indices of the triangles.
  const TriangleColl& getTriangleColl() const { return _triangleColl; }

  /// Access with a check of the index. Loops over all triangles are faster with `visitTriangles`.
  /// \throw ORMIXGeometryException, logged, for an index out of range
  /// @{
  const Point3dData<T>& getVertex(std::size_t vertexIdx) const;
  void setVertex(std::size_t vertexIdx, const Point3dData<T>& point);
  const IndexTriangle& getTriangleVertexIndices(std::size_t triangleIdx) const;
  std::array<Point3dData<T>, 3> getTriangle(std::size_t triangleIdx) const;
  /// @}

  /// Reserves memory for that many vertices and triangles in total.
  void reserve(std::size_t nbVertices, std::size_t nbTriangles);
  /// Adds a vertex and returns its index.
  /// \throw ORMIXGeometryException, logged, when there are `MeshTopology::s_maxNbVertices` already
  std::size_t addVertex(const Point3dData<T>& point);
  /// Adds a triangle of existing vertices. Fails, with the mesh unchanged, for an index out of range and when there are
  /// `MeshTopology::s_maxNbTriangles` already. Amortised constant time.
  BoolResult addTriangle(std::size_t vertexIdx0, std::size_t vertexIdx1, std::size_t vertexIdx2);

  /// Replaces vertices and triangles. Linear, without a copy of what is moved in.
  /// \return on failure the mesh stays unchanged, see `checkIndices`
  BoolResult build(VertexColl vertexColl, TriangleColl triangleColl);

  /// Reverses the orientation of every triangle: (a, b, c) becomes (a, c, b).
  void reverseOrientation();
  /// Removes vertices and triangles.
  void clear() noexcept;

  /// Success when all indices are valid, see `checkIndices`: they are as long as no vertex in use has been removed.
  BoolResult checkIntegrity() const { return checkIndices(TriMesh3d<T>(*this)); }

 private:
  template <class TOut, class TIn>
  friend void cast(const FaceVertexTriMesh3d<TIn>& mesh, FaceVertexTriMesh3d<TOut>& result);

  VertexColl _vertexColl;
  TriangleColl _triangleColl;
};

extern template class FaceVertexTriMesh3d<omInt32>;
extern template class FaceVertexTriMesh3d<omUInt32>;
extern template class FaceVertexTriMesh3d<omReal32>;
extern template class FaceVertexTriMesh3d<omReal64>;

/// The same as `mesh.addTriangle(vertexIdx0, vertexIdx1, vertexIdx2)`.
template <class T>
BoolResult addTriangle(std::size_t vertexIdx0, std::size_t vertexIdx1, std::size_t vertexIdx2,
                       FaceVertexTriMesh3d<T>& mesh) {
  return mesh.addTriangle(vertexIdx0, vertexIdx1, vertexIdx2);
}

/// As a mesh of half-edges: "[vertices=[[0, 0, 0], [1, 0, 0], [0, 1, 0]], triangles=[[0, 1, 2]]]".
template <class T>
std::ostream& operator<<(std::ostream& stream, const FaceVertexTriMesh3d<T>& mesh);

/// Whether the meshes have equally many vertices that are at most `tolerance` apart one by one (see compare() of
/// points), and the same triangles in the same order, each with the same first vertex.
template <class T>
bool compare(const FaceVertexTriMesh3d<T>& a, const FaceVertexTriMesh3d<T>& b, std::common_type_t<T> tolerance);

/// Converts each vertex, see cast() of points; triangles are copied.
template <class TOut, class TIn>
FaceVertexTriMesh3d<TOut> cast(const FaceVertexTriMesh3d<TIn>& mesh);
/// The same into an existing mesh, whose memory is reused; unchanged when memory runs out.
/// \param result may be `mesh` itself
template <class TOut, class TIn>
void cast(const FaceVertexTriMesh3d<TIn>& mesh, FaceVertexTriMesh3d<TOut>& result);

}  // namespace ormix::geom
