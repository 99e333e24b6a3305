#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexAdjTriMesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexTriMesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Enumeration.h>

#include <array>
#include <cstddef>
#include <iosfwd>
#include <limits>
#include <string_view>
#include <vector>

namespace ormix::geom {

/// What keeps triangles from being the surface of bodies. Only triangles with three different valid indices take part
/// in the kinds from `eMD_CollinearCorners` on.
enum eMeshDefect {
  eMD_InvalidIndex,       ///< a triangle with an index that is not that of a vertex
  eMD_NotFiniteVertex,    ///< a vertex with a coordinate that is NaN or infinite
  eMD_UnusedVertex,       ///< a vertex that no triangle has
  eMD_EqualCorners,       ///< a triangle with two equal indices
  eMD_CollinearCorners,   ///< a triangle whose corners, different by their indices, lie on one line, exactly
  eMD_DuplicateTriangle,  ///< a triangle with the corners of an earlier one, in any order
  eMD_BoundaryEdge,       ///< an edge of one triangle
  eMD_NonManifoldEdge,    ///< an edge of three triangles and more
  eMD_FlippedNeighbours,  ///< an edge of two triangles that have it in the same direction
  eMD_NonManifoldVertex,  ///< a vertex whose triangles are not all connected by edges that end in it
  eMD_InsideOutShell,     ///< a closed shell that is turned inward around a body, or outward around a cavity
  eMD_SelfIntersection    ///< two triangles that intersect, see findSelfIntersections()
};
/// The number of kinds of defects.
inline constexpr std::size_t s_nbMeshDefects = 12;

/// In place of a triangle or a vertex that a defect does not have.
inline constexpr omUInt32 s_noIndex = std::numeric_limits<omUInt32>::max();

/// One defect and where it is.
struct MeshDefect {
  eMeshDefect kind = eMD_InvalidIndex;  ///< what is wrong
  /// The triangles concerned: the one itself; the earlier one and its duplicate; the first two of an edge; one of a
  /// vertex; the first one of a shell; the two that intersect.
  std::array<omUInt32, 2> triangles{s_noIndex, s_noIndex};
  /// The vertices concerned: the one itself; the invalid index; the two ends of an edge, ascending.
  std::array<omUInt32, 2> vertices{s_noIndex, s_noIndex};
  /// Coordinates: of the vertex, of the middle of the edge, of the centre of the first triangle; for an invalid index
  /// NaN.
  Point3dData<omReal64> place{};
};

/// What `validate` does.
struct MeshValidationOptions {
  bool findsInsideOut = true;              ///< whether shells are found and nested
  bool findsSelfIntersections = true;      ///< whether pairs of triangles are tested, which takes most of the time
  std::size_t maxNbListed = 100;           ///< most defects that are listed, of each kind
  std::size_t maxNbTestedATriangle = 200;  ///< see SelfIntersectionOptions
};

/// All defects of a mesh.
struct ORMIX_GEOMETRY_API MeshValidation {
  std::size_t nbVertices = 0;                         ///< of the mesh
  std::size_t nbTriangles = 0;                        ///< of the mesh
  std::array<std::size_t, s_nbMeshDefects> counts{};  ///< how many defects there are, by kind
  std::vector<MeshDefect> defectColl{};               ///< the first of each kind, ascending by kind and indices
  std::size_t nbBoundaryLoops = 0;  ///< chains of boundary edges; those that touch in a vertex are one
  bool allPairsTested = true;       ///< false where the search for self-intersections was cut short

  /// The number of defects of a kind.
  std::size_t getNb(eMeshDefect kind) const { return counts[kind]; }
  /// The number of defects of all kinds.
  std::size_t getNb() const;
  /// Whether nothing was found: the triangles are the oriented closed surfaces of bodies and their cavities, without
  /// contact.
  bool isClean() const { return getNb() == 0; }
};

/// Finds every defect of a mesh, counts them by kind and lists the first of each kind. Nothing is taken for granted:
/// indices may be invalid and coordinates NaN. A mesh without defects is closed. O(n log n) plus that of
/// findSelfIntersections().
/// \throw ORMIXGeometryException, logged, for more vertices or triangles than a mesh holds, see `checkIndices`
template <class T>
ORMIX_GEOMETRY_API MeshValidation validate(const TriMesh3d<T>& mesh, const MeshValidationOptions& options = {});
template <class Mesh, class View = TriMesh3dOf<Mesh>>
MeshValidation validate(const Mesh& mesh, const MeshValidationOptions& options = {}) {
  return validate(View(mesh), options);
}

/// "eMD_BoundaryEdge: triangle 3, vertices 1 and 2, at [0.5, 0, 0]".
ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream& stream, const MeshDefect& defect);
/// "8 vertices, 12 triangles: no defects", or "…: 2 defects" and a line for each kind that there is, with the count,
/// and for each defect that is listed.
ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream& stream, const MeshValidation& validation);

}  // namespace ormix::geom

namespace ormix {

/// The texts of eMeshDefect.
template <>
struct EnumerationNames<geom::eMeshDefect> {
  static constexpr std::string_view typeName = "eMeshDefect";  ///< name of the enumeration
  /// Names of the enumerators, in order.
  static constexpr std::array<std::string_view, geom::s_nbMeshDefects> names{
      "eMD_InvalidIndex",      "eMD_NotFiniteVertex",   "eMD_UnusedVertex",   "eMD_EqualCorners",
      "eMD_CollinearCorners",  "eMD_DuplicateTriangle", "eMD_BoundaryEdge",   "eMD_NonManifoldEdge",
      "eMD_FlippedNeighbours", "eMD_NonManifoldVertex", "eMD_InsideOutShell", "eMD_SelfIntersection"};
};

}  // namespace ormix
