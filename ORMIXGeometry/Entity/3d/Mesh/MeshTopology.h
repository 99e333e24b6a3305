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
  eNMP_Refuse,      ///< building the mesh fails
  eNMP_OwnVertices  ///< it gets three vertices of its own at the same positions, and therefore no neighbours
};

/// The connectivity of a mesh of triangles, as half-edges. Vertices are known by their indices, 0 to `nbVertices` - 1;
/// their coordinates belong to `Mesh3d`.
///
/// Each triangle has three half-edges, linked to a cycle by `next`; there are no half-edges without a triangle. The
/// rules that always hold:
/// - a triangle has three different vertices, in order of its half-edges beginning with its first one;
/// - no two half-edges run from the same vertex to the same vertex;
/// - two half-edges between the same vertices in opposite directions are opposites of each other.
/// It follows that neighbours are consistently oriented and that an edge has at most two triangles. Two fans of
/// triangles may touch in a vertex without sharing an edge there ("bow-tie").
///
/// Indices are `std::size_t` in the interface and stored with 32 bits; larger ones are refused.
class ORMIX_GEOMETRY_API MeshTopology {
 public:
  using HalfEdgeColl = std::vector<HalfEdge>;  ///< half-edges in order of their indices
  using IndexColl = std::vector<omUInt32>;     ///< indices of vertices, triangles or half-edges

  static constexpr std::size_t s_maxNbTriangles = s_noHalfEdge / 3;  ///< most triangles of a mesh
  static constexpr std::size_t s_maxNbVertices = s_noHalfEdge;       ///< most vertices of a mesh

  MeshTopology() = default;
  MeshTopology(const MeshTopology&) = default;
  MeshTopology(MeshTopology&&) noexcept = default;
  /// Reuses the memory of this object. When more is needed and allocation fails, nothing changes.
  MeshTopology& operator=(const MeshTopology& other);
  MeshTopology& operator=(MeshTopology&&) noexcept = default;
  ~MeshTopology() = default;

  /// Whether there are no triangles.
  bool isEmpty() const { return _halfEdgeColl.empty(); }
  /// Counts, in constant time; there are three half-edges for each triangle.
  /// @{
  std::size_t getNbTriangles() const { return _triangleToHalfEdgeColl.size(); }
  std::size_t getNbHalfEdges() const { return _halfEdgeColl.size(); }
  /// @}
  /// The number of half-edges without an opposite. Linear in the half-edges.
  std::size_t getNbBoundaryHalfEdges() const;
  /// The number of undirected edges. Linear in the half-edges.
  std::size_t getNbEdges() const { return (getNbHalfEdges() + getNbBoundaryHalfEdges()) / 2; }
  /// Whether every half-edge has an opposite; true for an empty mesh. Linear in the half-edges.
  bool isClosed() const;

  /// All half-edges.
  const HalfEdgeColl& getHalfEdgeColl() const { return _halfEdgeColl; }
  /// The first half-edge of each triangle. In a mesh built by `addTriangle` and `build` the triangle t has the
  /// half-edges 3t, 3t + 1 and 3t + 2 in this order; in one that was read from an archive they may be others.
  const IndexColl& getTriangleToHalfEdgeColl() const { return _triangleToHalfEdgeColl; }

  /// The vertices of all triangles, three each in order of their half-edges. Loops over triangles use this collection,
  /// which has a quarter of the size of the half-edges.
  const IndexColl& getVertexIndexColl() const { return _vertexIndexColl; }

  /// A half-edge; an index out of range is logged and thrown as ORMIXGeometryException, as by the functions below.
  const HalfEdge& getHalfEdge(std::size_t halfEdgeIdx) const {
    if (halfEdgeIdx >= _halfEdgeColl.size()) throwInvalidHalfEdge(halfEdgeIdx);
    return _halfEdgeColl[halfEdgeIdx];
  }
  /// The index of the first half-edge of a triangle.
  std::size_t getTriangleHalfEdgeIdx(std::size_t triangleIdx) const {
    if (triangleIdx >= _triangleToHalfEdgeColl.size()) throwInvalidTriangle(triangleIdx);
    return _triangleToHalfEdgeColl[triangleIdx];
  }
  /// The vertices of a triangle, in order of its half-edges.
  std::array<std::size_t, 3> getTriangleVertexIndices(std::size_t triangleIdx) const;
  /// The half-edge of the same triangle that ends where this one starts.
  std::size_t getPreviousHalfEdgeIdx(std::size_t halfEdgeIdx) const;
  /// The vertex where the half-edge ends.
  std::size_t getEndVertexIdx(std::size_t halfEdgeIdx) const;
  /// The half-edge from the start vertex of the first to the start vertex of the second, searched in the fan of the
  /// first (`visitFan`). Linear in that fan.
  /// \throw ORMIXGeometryException, logged, when there is none and for an index out of range
  std::size_t getHalfEdgeBetween(std::size_t halfEdgeIdx0, std::size_t halfEdgeIdx1) const;

  /// Adds a triangle. Fails, with nothing changed, for a vertex index that is not below `nbVertices`, for equal
  /// vertices, for an edge that is already used in the same direction (the message has the index of that half-edge),
  /// and when there are `s_maxNbTriangles` already. Amortised expected constant time; the first call after a copy, a
  /// read or a build is linear.
  BoolResult addTriangle(std::size_t vertexIdx0, std::size_t vertexIdx1, std::size_t vertexIdx2,
                         std::size_t nbVertices);

  /// Replaces everything by the given triangles, with the same result as adding them one by one. Linear.
  /// \param vertexIndexColl three vertex indices for each triangle
  /// \param ownerColl set to the triangles that got vertices of their own, ascending; empty for `eNMP_Refuse`. The k-th
  ///        of them has the vertices nbVertices + 3 k and the two following ones, which the caller adds.
  /// \param originColl set to the index of the given vertex whose position each vertex to be added has
  /// \return a failure, with nothing changed, for an index out of range, a number of indices that is not a multiple of
  ///         three, too many triangles or vertices, and with `eNMP_Refuse` for a triangle that `addTriangle` refuses
  BoolResult build(std::size_t nbVertices, IndexColl vertexIndexColl, eNonManifoldPolicy policy, IndexColl& ownerColl,
                   IndexColl& originColl);

  /// Reserves memory for that many triangles in total.
  void reserve(std::size_t nbTriangles);
  /// Reverses the orientation of every triangle: (a, b, c) becomes (a, c, b). Triangles keep their indices, half-edges
  /// do not. Linear.
  void reverseOrientation();
  /// Removes all triangles.
  void clear() noexcept;

  /// Success, or a text that names the first of the rules above that is broken, and where; also where the vertex
  /// indices do not agree with the half-edges. Linear.
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
  /// As `checkIntegrity`; the text begins with the archive key of the collection that breaks the rule.
  BoolResult validate(std::size_t nbVertices) const;
  /// Computes the vertex indices and clears the table; to be called after the collections have been read.
  void refresh();

  HalfEdgeColl _halfEdgeColl;
  IndexColl _triangleToHalfEdgeColl;
  /// Computed from the two above; not archived.
  IndexColl _vertexIndexColl;
  HalfEdgeTable _halfEdgeTable;
};

/// Whether the triangles have the same vertices one by one, in order of their half-edges beginning with the first.
ORMIX_GEOMETRY_API bool haveSameTriangles(const MeshTopology& a, const MeshTopology& b);

/// Calls `visit(i0, i1, i2)` with the vertex indices of each triangle, in order of the triangles.
template <class Visit>
void visitTriangleIndices(const MeshTopology& topology, Visit visit) {
  const MeshTopology::IndexColl& indices = topology.getVertexIndexColl();
  for (std::size_t first = 0; first < indices.size(); first += 3)
    visit(indices[first], indices[first + 1], indices[first + 2]);
}

}  // namespace ormix::geom

namespace ormix {

/// The texts of eNonManifoldPolicy.
template <>
struct EnumerationNames<geom::eNonManifoldPolicy> {
  static constexpr std::string_view typeName = "eNonManifoldPolicy";  ///< name of the enumeration
  /// Names of the enumerators, in order.
  static constexpr std::array<std::string_view, 2> names{"eNMP_Refuse", "eNMP_OwnVertices"};
};

}  // namespace ormix
