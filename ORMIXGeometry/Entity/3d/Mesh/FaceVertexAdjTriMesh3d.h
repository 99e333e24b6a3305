#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexTriMesh3d.h>

#include <array>
#include <cstddef>
#include <iosfwd>
#include <limits>
#include <type_traits>
#include <utility>
#include <vector>

namespace ormix::geom {

/// In place of the neighbour of a triangle along an edge that no other triangle has.
inline constexpr omUInt32 s_noNeighbour = std::numeric_limits<omUInt32>::max();
/// In place of the neighbour along an edge that several other triangles have.
inline constexpr omUInt32 s_severalNeighbours = s_noNeighbour - 1;

/// A `FaceVertexTriMesh3d` whose triangles know their neighbours: for each edge of a triangle the triangle beyond it,
/// `s_noNeighbour` or `s_severalNeighbours`. An edge may have any number of triangles in any direction, so that
/// neighbours may be turned against each other. A triangle with equal corners has no edges and no neighbours.
///
/// The triangles are given at once, by `build`; the coordinates may change later. Not an entity: neither registered nor
/// archived. A triangle takes 24 bytes, a vertex three coordinates.
///
/// \tparam T omInt32, omUInt32, omReal32 or omReal64
template <class T>
class ORMIX_GEOMETRY_API FaceVertexAdjTriMesh3d {
 public:
  using CoordinateType = T;                                            ///< type of the coordinates
  using VertexColl = typename FaceVertexTriMesh3d<T>::VertexColl;      ///< vertices in order of their indices
  using TriangleColl = typename FaceVertexTriMesh3d<T>::TriangleColl;  ///< vertex indices of the triangles
  using NeighbourColl = std::vector<std::array<omUInt32, 3>>;          ///< neighbours of the triangles

  /// An empty mesh.
  FaceVertexAdjTriMesh3d() = default;
  FaceVertexAdjTriMesh3d(const FaceVertexAdjTriMesh3d&) = default;
  FaceVertexAdjTriMesh3d(FaceVertexAdjTriMesh3d&&) noexcept = default;
  /// Reuses the memory of this mesh. When more is needed and allocation fails, the mesh stays unchanged.
  FaceVertexAdjTriMesh3d& operator=(const FaceVertexAdjTriMesh3d& other);
  FaceVertexAdjTriMesh3d& operator=(FaceVertexAdjTriMesh3d&&) noexcept = default;
  ~FaceVertexAdjTriMesh3d() = default;

  /// The same mesh without neighbours.
  const FaceVertexTriMesh3d<T>& getMesh() const { return _mesh; }

  /// Whether the mesh has neither vertices nor triangles.
  bool isEmpty() const { return _mesh.isEmpty(); }
  /// Counts: vertices, used or not; triangles.
  /// @{
  std::size_t getNbVertices() const { return _mesh.getNbVertices(); }
  std::size_t getNbTriangles() const { return _mesh.getNbTriangles(); }
  /// @}
  /// Whether every triangle has exactly one neighbour along each edge; true for an empty mesh. Linear.
  bool isClosed() const;

  /// The vertices themselves: coordinates may be changed and vertices appended, but a vertex that a triangle uses must
  /// not be removed.
  /// @{
  const VertexColl& getVertexColl() const { return _mesh.getVertexColl(); }
  VertexColl& getVertexColl() { return _mesh.getVertexColl(); }
  /// @}
  /// The vertex indices of the triangles.
  const TriangleColl& getTriangleColl() const { return _mesh.getTriangleColl(); }
  /// The neighbours of the triangles: entry k is beyond the edge from corner k to the next one.
  const NeighbourColl& getNeighbourColl() const { return _neighbourColl; }

  /// Access with a check of the index.
  /// \throw ORMIXGeometryException, logged, for an index out of range
  /// @{
  const Point3dData<T>& getVertex(std::size_t vertexIdx) const { return _mesh.getVertex(vertexIdx); }
  void setVertex(std::size_t vertexIdx, const Point3dData<T>& point) { _mesh.setVertex(vertexIdx, point); }
  const IndexTriangle& getTriangleVertexIndices(std::size_t triangleIdx) const {
    return _mesh.getTriangleVertexIndices(triangleIdx);
  }
  std::array<Point3dData<T>, 3> getTriangle(std::size_t triangleIdx) const { return _mesh.getTriangle(triangleIdx); }
  const std::array<omUInt32, 3>& getNeighbours(std::size_t triangleIdx) const;
  /// @}

  /// Replaces vertices and triangles and finds the neighbours. Linear.
  /// \return on failure the mesh stays unchanged, see `checkIndices`
  BoolResult build(VertexColl vertexColl, TriangleColl triangleColl);
  /// Removes vertices and triangles.
  void clear() noexcept;

 private:
  template <class TOut, class TIn>
  friend void cast(const FaceVertexAdjTriMesh3d<TIn>& mesh, FaceVertexAdjTriMesh3d<TOut>& result);

  FaceVertexTriMesh3d<T> _mesh;
  NeighbourColl _neighbourColl;
};

extern template class FaceVertexAdjTriMesh3d<omInt32>;
extern template class FaceVertexAdjTriMesh3d<omUInt32>;
extern template class FaceVertexAdjTriMesh3d<omReal32>;
extern template class FaceVertexAdjTriMesh3d<omReal64>;

/// Vertices and triangles, as a `FaceVertexTriMesh3d` prints.
template <class T>
std::ostream& operator<<(std::ostream& stream, const FaceVertexAdjTriMesh3d<T>& mesh);

/// As of `FaceVertexTriMesh3d`: the same triangles have the same neighbours.
template <class T>
bool compare(const FaceVertexAdjTriMesh3d<T>& a, const FaceVertexAdjTriMesh3d<T>& b, std::common_type_t<T> tolerance);

/// Converts each vertex, see cast() of points; triangles and neighbours are copied.
template <class TOut, class TIn>
FaceVertexAdjTriMesh3d<TOut> cast(const FaceVertexAdjTriMesh3d<TIn>& mesh);
/// The same into an existing mesh, whose memory is reused; unchanged when memory runs out.
/// \param result may be `mesh` itself
template <class TOut, class TIn>
void cast(const FaceVertexAdjTriMesh3d<TIn>& mesh, FaceVertexAdjTriMesh3d<TOut>& result);

}  // namespace ormix::geom
