#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/HalfEdge.h>
#include <ORMIXGeometry/Entity/3d/Mesh/HalfEdgeTable.h>
#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>
#include <ORMIXGeometry/Enumeration.h>
#include <ORMIXSerialization/Object/RegisteredObject.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace ormix::geom {

/// What happens to a triangle that has two equal vertices, or an edge that an earlier triangle uses in the same
/// direction.
enum eNonManifoldPolicy {
  eNMP_Refuse,      ///< the whole mesh is refused
  eNMP_OwnVertices  ///< it gets three vertices of its own, where the given ones lie, and so has no neighbours
};

/// Which triangles are neighbours in a mesh of `nbVertices` vertices, of which only the indices are known here.
///
/// Each triangle has three half-edges, each the `next` of the one before; nothing else has half-edges, so that there
/// are three times as many half-edges as triangles. Always:
/// - a triangle has three different vertices, in order of its half-edges from the one recorded for it;
/// - no two half-edges run from the same vertex to the same vertex;
/// - two that run between the same vertices in opposite directions are each other's opposite ones.
/// So neighbours are oriented alike, and an edge has at most two triangles. Two fans of triangles may touch in a vertex
/// without sharing an edge there ("bow-tie").
///
/// Indices are `std::size_t` outside and 32 bits wide inside; what would not fit is refused.
class ORMIX_GEOMETRY_API MeshTopology {
 public:
  using HalfEdgeColl = std::vector<HalfEdge>;
  using IndexColl = std::vector<omUInt32>;

  static constexpr std::size_t s_maxNbTriangles = s_noHalfEdge / 3;
  static constexpr std::size_t s_maxNbVertices = s_noHalfEdge;

  bool isEmpty() const { return _halfEdgeColl.empty(); }
  std::size_t getNbTriangles() const { return _triangleToHalfEdgeColl.size(); }
  std::size_t getNbHalfEdges() const { return _halfEdgeColl.size(); }
  /// The half-edges without an opposite one. Linear in the half-edges, as are the two below.
  std::size_t getNbBoundaryHalfEdges() const;
  std::size_t getNbEdges() const { return (getNbHalfEdges() + getNbBoundaryHalfEdges()) / 2; }
  /// Whether every half-edge has an opposite one; so of an empty mesh.
  bool isClosed() const;

  const HalfEdgeColl& getHalfEdgeColl() const { return _halfEdgeColl; }
  /// For each triangle one of its half-edges, which is its first. In a mesh that was built here triangle t has the
  /// half-edges 3t, 3t + 1 and 3t + 2 in this order; one that is read from an archive may differ.
  const IndexColl& getTriangleToHalfEdgeColl() const { return _triangleToHalfEdgeColl; }

  /// The vertices of all triangles, three each in order of their half-edges: what loops over triangles read, a quarter
  /// of the half-edges' bytes.
  const IndexColl& getVertexIndexColl() const { return _vertexIndexColl; }

  /// \name Checked access. An index out of range is logged and thrown as ORMIXGeometryException.
  /// @{
  const HalfEdge& getHalfEdge(std::size_t halfEdgeIdx) const {
    if (halfEdgeIdx >= _halfEdgeColl.size()) throwInvalidHalfEdge(halfEdgeIdx);
    return _halfEdgeColl[halfEdgeIdx];
  }
  /// The first half-edge of a triangle.
  std::size_t getTriangleHalfEdgeIdx(std::size_t triangleIdx) const {
    if (triangleIdx >= _triangleToHalfEdgeColl.size()) throwInvalidTriangle(triangleIdx);
    return _triangleToHalfEdgeColl[triangleIdx];
  }
  /// The vertices of a triangle, in order of its half-edges.
  std::array<std::size_t, 3> getTriangleVertexIndices(std::size_t triangleIdx) const;
  std::size_t getPreviousHalfEdgeIdx(std::size_t halfEdgeIdx) const;
  std::size_t getEndVertexIdx(std::size_t halfEdgeIdx) const;
  /// The half-edge from the start of the first to the start of the second one, sought in the first one's fan
  /// (`visitFan`). Where there is none, that is logged and thrown too.
  std::size_t getHalfEdgeBetween(std::size_t halfEdgeIdx0, std::size_t halfEdgeIdx1) const;
  /// @}

  /// Adds a triangle. Refused, with nothing changed: a vertex index that is not below `nbVertices`, equal vertices, an
  /// edge that is used in that direction already (the message has the index of that half-edge), and a triangle beyond
  /// `s_maxNbTriangles`. Amortised expected constant time; the first call after a copy, a read or a build is linear.
  BoolResult addTriangle(std::size_t vertexIdx0, std::size_t vertexIdx1, std::size_t vertexIdx2,
                         std::size_t nbVertices);

  /// Replaces everything by the given triangles, with the same result as adding them one by one. Linear.
  /// \param vertexIndexColl three vertex indices a triangle
  /// \param ownerColl for `eNMP_OwnVertices` set to the triangles that got vertices of their own, ascending: the k-th
  ///        has the vertices nbVertices + 3 k and the two following ones, which the caller adds. Otherwise left empty.
  /// \param originColl for each vertex to be added the given vertex where it lies
  /// \return a failure, with nothing changed: an index out of range, a number of indices that three does not divide,
  /// too
  ///         many triangles or vertices, and for `eNMP_Refuse` the first triangle that `addTriangle` would refuse
  BoolResult build(std::size_t nbVertices, IndexColl vertexIndexColl, eNonManifoldPolicy policy, IndexColl& ownerColl,
                   IndexColl& originColl);

  /// Room for that many triangles.
  void reserve(std::size_t nbTriangles);
  /// Turns every triangle: (a, b, c) becomes (a, c, b). Triangles keep their indices, half-edges do not.
  void reverseOrientation();
  void clear() noexcept;

  /// Good, or a text that names the first statement of the class's comment that does not hold, and where.
  BoolResult checkIntegrity(std::size_t nbVertices) const;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_halfEdgeColl", self._halfEdgeColl) && item("_triangleToHalfEdgeColl", self._triangleToHalfEdgeColl);
  }
  template <class T>
  friend class Mesh3d;

  [[noreturn]] void throwInvalidHalfEdge(std::size_t halfEdgeIdx) const;
  [[noreturn]] void throwInvalidTriangle(std::size_t triangleIdx) const;
  /// As `checkIntegrity`, the text led by the archive key of the collection at fault.
  BoolResult validate(std::size_t nbVertices) const;
  /// To be called after the collections have been read.
  void refresh();

  HalfEdgeColl _halfEdgeColl;
  IndexColl _triangleToHalfEdgeColl;
  /// Follows from the two above, and so is not archived.
  IndexColl _vertexIndexColl;
  HalfEdgeTable _halfEdgeTable;
};

/// Whether the triangles have the same vertices one by one, from the first half-edge recorded for each.
ORMIX_GEOMETRY_API bool haveSameTriangles(const MeshTopology& a, const MeshTopology& b);

/// Calls `visit(i0, i1, i2)` with the vertex indices of each triangle, in order.
template <class Visit>
void visitTriangleIndices(const MeshTopology& topology, Visit visit) {
  const MeshTopology::IndexColl& indices = topology.getVertexIndexColl();
  for (std::size_t first = 0; first < indices.size(); first += 3)
    visit(indices[first], indices[first + 1], indices[first + 2]);
}

}  // namespace ormix::geom

namespace ormix {

template <>
struct EnumerationNames<geom::eNonManifoldPolicy> {
  static constexpr std::string_view typeName = "eNonManifoldPolicy";
  static constexpr std::array<std::string_view, 2> names{"eNMP_Refuse", "eNMP_OwnVertices"};
};

}  // namespace ormix
