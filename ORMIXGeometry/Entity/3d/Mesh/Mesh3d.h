#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3dType.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopology.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>

#include <array>
#include <iosfwd>
#include <vector>

namespace ormix::geom {

/// A surface of triangles, closed or not: vertices, and how triangles connect them (`MeshTopology`). Vertices may lie
/// anywhere, may coincide and may be used by no triangle; the side from which a triangle's vertices turn
/// counterclockwise is its outside.
///
/// Archived in version 3. The versions 1 and 2 were never published and are refused, as is an archive that breaks a
/// rule of the topology.
template <class T>
class ORMIX_GEOMETRY_API Mesh3d : public Entity3d<Mesh3d<T>, BaseTypedGeometryEntity3d<T>> {
  using Base = Entity3d<Mesh3d<T>, BaseTypedGeometryEntity3d<T>>;

 public:
  static constexpr const char* s_className = "ormix::geom::Mesh3d";
  static constexpr omUInt32 s_classVersion = 3;
  static constexpr omUInt32 s_oldestClassVersion = 3;
  static constexpr eEntity3dType s_entity3dType = eE3DT_Mesh;

  using VertexColl = std::vector<Point3dData<T>>;
  using IndexColl = MeshTopology::IndexColl;

  /// Exterior and empty.
  Mesh3d() = default;

  BoolResult read(BaseIArchive& archive) override;

  eMesh3dType getMesh3dType() const { return _mesh3dType; }
  void setMesh3dType(eMesh3dType type) { _mesh3dType = type; }

  /// Whether there are neither vertices nor triangles.
  bool isEmpty() const { return _vertexColl.empty() && _topology.isEmpty(); }
  std::size_t getNbVertices() const { return _vertexColl.size(); }
  std::size_t getNbTriangles() const { return _topology.getNbTriangles(); }
  std::size_t getNbHalfEdges() const { return _topology.getNbHalfEdges(); }
  /// Linear in the triangles, as is `isClosed`.
  std::size_t getNbEdges() const { return _topology.getNbEdges(); }
  /// Whether every edge has two triangles; so of an empty mesh.
  bool isClosed() const { return _topology.isClosed(); }

  /// The vertices themselves: their coordinates may be changed at will and vertices appended, but one that a triangle
  /// uses must not be removed.
  const VertexColl& getVertexColl() const { return _vertexColl; }
  VertexColl& getVertexColl() { return _vertexColl; }
  const MeshTopology& getTopology() const { return _topology; }
  const MeshTopology::HalfEdgeColl& getHalfEdgeColl() const { return _topology.getHalfEdgeColl(); }
  const IndexColl& getTriangleToHalfEdgeColl() const { return _topology.getTriangleToHalfEdgeColl(); }
  /// Three vertex indices a triangle.
  const IndexColl& getVertexIndexColl() const { return _topology.getVertexIndexColl(); }

  /// \name Checked access. An index out of range is logged and thrown as ORMIXGeometryException.
  /// Loops over all triangles are faster with `visitTriangles`.
  /// @{
  const Point3dData<T>& getVertex(std::size_t vertexIdx) const;
  void setVertex(std::size_t vertexIdx, const Point3dData<T>& point);
  const HalfEdge& getHalfEdge(std::size_t halfEdgeIdx) const { return _topology.getHalfEdge(halfEdgeIdx); }
  /// The vertices of a triangle in order of its half-edges, from the one recorded for it.
  std::array<Point3dData<T>, 3> getTriangle(std::size_t triangleIdx) const;
  std::array<std::size_t, 3> getTriangleVertexIndices(std::size_t triangleIdx) const {
    return _topology.getTriangleVertexIndices(triangleIdx);
  }
  /// @}

  /// Room for that many vertices and triangles.
  void reserve(std::size_t nbVertices, std::size_t nbTriangles);

  /// Adds a vertex and answers its index.
  /// \throw ORMIXGeometryException, logged, when there are `MeshTopology::s_maxNbVertices` already
  std::size_t addVertex(const Point3dData<T>& point);
  /// See `MeshTopology::addTriangle`.
  BoolResult addTriangle(std::size_t vertexIdx0, std::size_t vertexIdx1, std::size_t vertexIdx2) {
    return _topology.addTriangle(vertexIdx0, vertexIdx1, vertexIdx2, _vertexColl.size());
  }

  /// Replaces vertices and triangles, with the same result as adding them in order, one by one, in linear time; the
  /// role stays. For a triangle of equal vertices or with an edge that is taken see `eNonManifoldPolicy`: the vertices
  /// it gets are appended in order of the triangles. \param vertexIndexColl three indices of `vertexColl` a triangle
  /// \param ownerColl if given, set to the triangles that got vertices of their own, ascending
  /// \return a failure leaves the mesh as it was, see `MeshTopology::build`
  BoolResult build(VertexColl vertexColl, IndexColl vertexIndexColl, eNonManifoldPolicy policy = eNMP_Refuse,
                   IndexColl* ownerColl = nullptr);

  /// Takes over the role and the triangles of a mesh that has at most as many vertices as this one, which keeps its
  /// own. \return false, nothing changed, when the mesh has more
  bool copyTriangles(const Mesh3d& mesh);

  /// Turns the outside in; the role stays. The sign of `localVolume` tells which way a closed mesh is oriented.
  void reverseOrientation() { _topology.reverseOrientation(); }
  /// Removes vertices and triangles; the role stays.
  void clear() noexcept;

  /// Good, or a text that names the first broken rule of `MeshTopology`, and where. A mesh can only break one when
  /// vertices in use have been removed.
  BoolResult checkIntegrity() const { return _topology.checkIntegrity(_vertexColl.size()); }

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_mesh3dType", self._mesh3dType) && item("_vertexColl", self._vertexColl) &&
           MeshTopology::fields(self._topology, item);
  }
  static BoolResult validate(const Mesh3d& mesh) { return mesh._topology.validate(mesh._vertexColl.size()); }
  template <class TOut, class TIn>
  friend void cast(const Mesh3d<TIn>& mesh, Mesh3d<TOut>& result);

  eMesh3dType _mesh3dType = eM3DT_Exterior;
  VertexColl _vertexColl;
  MeshTopology _topology;
};

/// `mesh.addTriangle`.
template <class T>
BoolResult addTriangle(std::size_t vertexIdx0, std::size_t vertexIdx1, std::size_t vertexIdx2, Mesh3d<T>& mesh) {
  return mesh.addTriangle(vertexIdx0, vertexIdx1, vertexIdx2);
}

/// Calls `visit(p0, p1, p2)` with the vertices of each triangle, in order.
template <class T, class Visit>
void visitTriangles(const Mesh3d<T>& mesh, Visit visit) {
  const Point3dData<T>* vertices = mesh.getVertexColl().data();
  visitTriangleIndices(mesh.getTopology(),
                       [&](omUInt32 i0, omUInt32 i1, omUInt32 i2) { visit(vertices[i0], vertices[i1], vertices[i2]); });
}

/// Vertices and triangles: "[vertices=[[0, 0, 0], [1, 0, 0], [0, 1, 0]], triangles=[[0, 1, 2]]]".
template <class T>
std::ostream& operator<<(std::ostream& stream, const Mesh3d<T>& mesh);

/// Whether the meshes have the same role, as many vertices, at most `tolerance` apart one by one (see points), and the
/// same triangles in the same order, each with the same first vertex.
template <class T>
bool compare(const Mesh3d<T>& a, const Mesh3d<T>& b, std::common_type_t<T> tolerance);

/// Converts each vertex as points are cast; triangles and role are copied.
template <class TOut, class TIn>
Mesh3d<TOut> cast(const Mesh3d<TIn>& mesh);
/// The same into an existing mesh, whose memory is used again. \param result may be `mesh` itself
template <class TOut, class TIn>
void cast(const Mesh3d<TIn>& mesh, Mesh3d<TOut>& result);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(extern, Mesh3d)
