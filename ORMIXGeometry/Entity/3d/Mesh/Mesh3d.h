#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3dType.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopology.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>

#include <array>
#include <iosfwd>
#include <utility>
#include <vector>

namespace ormix::geom {

/// A surface of triangles, closed or not: vertices, and the triangles that connect them (`MeshTopology`). Vertices may
/// have any coordinates, may coincide and may be used by no triangle. The outside of a triangle is the side from which
/// its vertices are in counter-clockwise order.
///
/// Archived in version 3. The versions 1 and 2 were never published; reading them fails, as does reading a mesh that
/// breaks a rule of `MeshTopology`.
template <class T>
class ORMIX_GEOMETRY_API Mesh3d : public Entity3d<Mesh3d<T>, BaseTypedGeometryEntity3d<T>> {
  using Base = Entity3d<Mesh3d<T>, BaseTypedGeometryEntity3d<T>>;

 public:
  static constexpr const char* s_className = "ormix::geom::Mesh3d";  ///< registered name
  static constexpr omUInt32 s_classVersion = 3;                      ///< version that is written
  static constexpr omUInt32 s_oldestClassVersion = 3;                ///< oldest version that is read
  static constexpr eEntity3dType s_entity3dType = eE3DT_Mesh;        ///< family

  using VertexColl = std::vector<Point3dData<T>>;  ///< vertices in order of their indices
  using IndexColl = MeshTopology::IndexColl;       ///< indices of vertices, triangles or half-edges

  /// An empty mesh with the role `eM3DT_Exterior`.
  Mesh3d() = default;
  Mesh3d(const Mesh3d&) = default;
  Mesh3d(Mesh3d&&) noexcept = default;
  /// Reuses the memory of this mesh. When more is needed and allocation fails, the mesh stays unchanged.
  Mesh3d& operator=(const Mesh3d& other);
  Mesh3d& operator=(Mesh3d&&) noexcept = default;
  ~Mesh3d() override = default;

  /// The role: the surface of a body or of a cavity. It does not affect the orientation of the triangles.
  /// @{
  eMesh3dType getMesh3dType() const { return _mesh3dType; }
  void setMesh3dType(eMesh3dType type) { _mesh3dType = type; }
  /// @}

  /// Whether the mesh has neither vertices nor triangles.
  bool isEmpty() const { return _vertexColl.empty() && _topology.isEmpty(); }
  /// Counts, in constant time: vertices, used or not; triangles; half-edges, three for each triangle.
  /// @{
  std::size_t getNbVertices() const { return _vertexColl.size(); }
  std::size_t getNbTriangles() const { return _topology.getNbTriangles(); }
  std::size_t getNbHalfEdges() const { return _topology.getNbHalfEdges(); }
  /// @}
  /// The number of undirected edges. Linear in the triangles.
  std::size_t getNbEdges() const { return _topology.getNbEdges(); }
  /// Whether every edge has two triangles; true for an empty mesh. Linear in the triangles.
  bool isClosed() const { return _topology.isClosed(); }

  /// The vertices themselves: coordinates may be changed and vertices appended, but a vertex that a triangle uses must
  /// not be removed.
  /// @{
  const VertexColl& getVertexColl() const { return _vertexColl; }
  VertexColl& getVertexColl() { return _vertexColl; }
  /// @}
  /// How the triangles are connected, and its collections, see the functions of MeshTopology.
  /// @{
  const MeshTopology& getTopology() const { return _topology; }
  const MeshTopology::HalfEdgeColl& getHalfEdgeColl() const { return _topology.getHalfEdgeColl(); }
  const IndexColl& getTriangleToHalfEdgeColl() const { return _topology.getTriangleToHalfEdgeColl(); }
  /// @}
  /// The vertex indices of the triangles, three for each.
  const IndexColl& getVertexIndexColl() const { return _topology.getVertexIndexColl(); }

  /// Access to one vertex or half-edge with a check of its index. Loops over all triangles are faster with
  /// `visitTriangles`.
  /// \throw ORMIXGeometryException, logged, for an index out of range
  /// @{
  const Point3dData<T>& getVertex(std::size_t vertexIdx) const;
  void setVertex(std::size_t vertexIdx, const Point3dData<T>& point);
  const HalfEdge& getHalfEdge(std::size_t halfEdgeIdx) const { return _topology.getHalfEdge(halfEdgeIdx); }
  /// @}
  /// The vertices of a triangle, or their indices, in order of its half-edges, beginning with the first, see
  /// MeshTopology::getTriangleToHalfEdgeColl().
  /// \throw ORMIXGeometryException, logged, for an index out of range
  /// @{
  std::array<Point3dData<T>, 3> getTriangle(std::size_t triangleIdx) const;
  std::array<std::size_t, 3> getTriangleVertexIndices(std::size_t triangleIdx) const {
    return _topology.getTriangleVertexIndices(triangleIdx);
  }
  /// @}

  /// Reserves memory for that many vertices and triangles in total.
  void reserve(std::size_t nbVertices, std::size_t nbTriangles);

  /// Adds a vertex and returns its index.
  /// \throw ORMIXGeometryException, logged, when there are `MeshTopology::s_maxNbVertices` already
  std::size_t addVertex(const Point3dData<T>& point);
  /// Adds a triangle of existing vertices. On failure the mesh stays unchanged; see `MeshTopology::addTriangle`.
  BoolResult addTriangle(std::size_t vertexIdx0, std::size_t vertexIdx1, std::size_t vertexIdx2) {
    return _topology.addTriangle(vertexIdx0, vertexIdx1, vertexIdx2, _vertexColl.size());
  }

  /// Replaces vertices and triangles, with the same result as adding them in order one by one; the role is kept.
  /// Linear.
  /// \param vertexIndexColl three indices of `vertexColl` for each triangle
  /// \param policy what happens to a triangle with equal vertices or with an edge that is already used in the same
  ///        direction; the vertices that `eNMP_OwnVertices` adds are appended in order of the triangles
  /// \param ownerColl if not null, set to the indices of the triangles that got vertices of their own, ascending
  /// \return on failure the mesh stays unchanged, see `MeshTopology::build`
  BoolResult build(VertexColl vertexColl, IndexColl vertexIndexColl, eNonManifoldPolicy policy = eNMP_Refuse,
                   IndexColl* ownerColl = nullptr);

  /// Replaces the role and the triangles by those of another mesh; the vertices are kept.
  /// \return false, with nothing changed, when the other mesh has more vertices than this one
  bool copyTriangles(const Mesh3d& mesh);

  /// Reverses the orientation of every triangle, so that inside and outside are exchanged; the role is kept. The sign
  /// of `localVolume` shows the orientation of a closed mesh.
  void reverseOrientation() { _topology.reverseOrientation(); }
  /// Removes vertices and triangles; the role is kept.
  void clear() noexcept;

  /// Checks the rules of `MeshTopology`: success, or a text that names the first broken rule and where it is broken. A
  /// mesh can break one only after vertices in use have been removed by `getVertexColl`. Linear.
  BoolResult checkIntegrity() const { return _topology.checkIntegrity(_vertexColl.size()); }

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_mesh3dType", self._mesh3dType) && item("_vertexColl", self._vertexColl) &&
           MeshTopology::fields(self._topology, item);
  }
  static void complete(Mesh3d& read) { read._topology.refresh(); }
  static BoolResult validate(const Mesh3d& mesh) { return mesh._topology.validate(mesh._vertexColl.size()); }
  template <class TOut, class TIn>
  friend void cast(const Mesh3d<TIn>& mesh, Mesh3d<TOut>& result);

  eMesh3dType _mesh3dType = eM3DT_Exterior;
  VertexColl _vertexColl;
  MeshTopology _topology;
};

/// The same as `mesh.addTriangle(vertexIdx0, vertexIdx1, vertexIdx2)`.
template <class T>
BoolResult addTriangle(std::size_t vertexIdx0, std::size_t vertexIdx1, std::size_t vertexIdx2, Mesh3d<T>& mesh) {
  return mesh.addTriangle(vertexIdx0, vertexIdx1, vertexIdx2);
}

/// Calls `visit(p0, p1, p2)` with the vertices of each triangle, in order of the triangles.
template <class T, class Visit>
void visitTriangles(const Mesh3d<T>& mesh, Visit visit) {
  const Point3dData<T>* vertices = mesh.getVertexColl().data();
  visitTriangleIndices(mesh.getTopology(),
                       [&](omUInt32 i0, omUInt32 i1, omUInt32 i2) { visit(vertices[i0], vertices[i1], vertices[i2]); });
}

/// Vertices and triangles: "[vertices=[[0, 0, 0], [1, 0, 0], [0, 1, 0]], triangles=[[0, 1, 2]]]".
template <class T>
std::ostream& operator<<(std::ostream& stream, const Mesh3d<T>& mesh);

/// Whether the meshes have the same role, equally many vertices that are at most `tolerance` apart one by one (see
/// compare() of points), and the same triangles in the same order, each with the same first vertex.
template <class T>
bool compare(const Mesh3d<T>& a, const Mesh3d<T>& b, std::common_type_t<T> tolerance);

/// Converts each vertex, see cast() of points; triangles and role are copied.
template <class TOut, class TIn>
Mesh3d<TOut> cast(const Mesh3d<TIn>& mesh);
/// The same into an existing mesh, whose memory is reused.
/// \param result may be `mesh` itself
template <class TOut, class TIn>
void cast(const Mesh3d<TIn>& mesh, Mesh3d<TOut>& result);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(extern, Mesh3d)
