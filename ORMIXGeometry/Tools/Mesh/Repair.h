#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexTriMesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

namespace ormix::geom {

/// Which steps `repair` takes; by default all, without moving a vertex.
struct RepairOptions {
  bool mergesVertices = true;  ///< merge the vertices of open edges that are equal, or at most `tolerance` apart
  omReal64 tolerance = 0;      ///< greatest distance of vertices that are merged, at least 0, in the mesh's unit
  bool dropsTriangles = true;  ///< drop degenerate, duplicate, flat and not finite triangles, fins and single triangles
  bool orientsTriangles = true;  ///< orient neighbours consistently, and closed shells outwards
  bool splitsVertices = true;    ///< give the sheets that meet in an edge or a vertex vertices of their own
  bool fillsLoops = true;        ///< close boundary loops; only where triangles are oriented
  /// Most edges of a loop that is filled.
  std::size_t longestLoop = std::numeric_limits<std::size_t>::max();
  bool dropsVertices = true;  ///< drop vertices that no triangle uses
};

/// What `repair` found and changed.
struct RepairReport {
  std::size_t nbMergedVertices = 0;  ///< vertices that became an earlier one
  std::size_t nbNotFinite = 0;       ///< triangles dropped: a coordinate is NaN or infinite
  std::size_t nbDegenerate = 0;      ///< triangles dropped: equal corners
  std::size_t nbDuplicate = 0;       ///< triangles dropped: the corners of an earlier one, in any order
  std::size_t nbFins = 0;            ///< triangles dropped: joined only by edges of three triangles and more
  std::size_t nbSingle = 0;          ///< triangles dropped: joined to none, in a mesh of mostly joined ones
  std::size_t nbFlat = 0;            ///< triangles taken out: corners on one line, exactly
  std::size_t nbTurned = 0;          ///< triangles turned to agree with their neighbours or to face outwards
  std::size_t nbCutEdges = 0;        ///< edges cut open since no orientation agrees there, as on a Moebius strip
  std::size_t nbSeparatedEdges = 0;  ///< edges of three triangles and more, whose triangles were paired by angle
  std::size_t nbSplitVertices = 0;   ///< vertices added where sheets touch
  std::size_t nbSplitEdges = 0;      ///< edges halved since two of them had the same ends
  std::size_t nbFilledLoops = 0;     ///< boundary loops closed
  std::size_t nbAddedTriangles = 0;  ///< triangles added to fill loops and to halve edges
  std::size_t nbAddedVertices = 0;   ///< vertices added amid edges
  std::size_t nbOpenLoops = 0;       ///< boundary loops left open, see `log` for why
  std::size_t nbUnusedVertices = 0;  ///< vertices dropped
  omReal64 areaBefore = 0;           ///< area of the mesh given
  omReal64 areaAfter = 0;            ///< area of the mesh repaired
  omReal64 volumeBefore = 0;         ///< signed volume of the mesh given; without meaning where it is open
  omReal64 volumeAfter = 0;          ///< signed volume of the mesh repaired
  bool isClosed = false;             ///< whether every edge of the result has two triangles
  std::vector<std::string> log;      ///< what was done and what was not, one line each, in words
};

/// Makes a mesh what a solid's surface is, as far as that can be: closed, manifold and consistently oriented. In order:
///
/// 1. Triangles that are no triangles are dropped, and triangles that an earlier one repeats.
/// 2. Vertices of open edges with equal coordinates become one, the one with the lowest index. Vertices within a closed
///    surface stay apart, so that bodies that touch do not grow together. A tolerance above 0 joins each vertex to the
///    nearest earlier one that was kept.
/// 3. Where an edge has more than two triangles, those are dropped that are joined by such edges alone. The others are
///    paired by their angles around the edge, such that the wedges between them are inside (Gueziec2001).
/// 4. Neighbours are oriented like most of their component. Where that contradicts itself the surface is cut open.
///    Triangles whose corners lie on one line, exactly, are taken out: the edge that a corner lies on is flipped, and
///    one without length becomes a vertex; the shape stays.
/// 5. Boundary loops are filled: up to 12 edges by cutting ears, those with the greatest least angle first; up to 128
///    edges by the triangulation of least area (BarequetSharir1995); longer ones by cutting ears. Diagonals that are
///    edges already are avoided. The loop of a single triangle is left open.
/// 6. Sheets that touch in a vertex get vertices of their own. Where two edges still have the same ends, all but one
///    are halved.
/// 7. Closed shells that lie in no other one are turned outward, those inside these inward, as the surfaces of
/// cavities,
///    and so on, see `findShells`.
/// 8. Vertices without triangles are dropped.
///
/// Triangles keep their order and their first corners as far as they are kept; new ones come last. Repairing twice is
/// the same as repairing once. Triangles that intersect are neither found nor changed. O(n log n), and at most 6,200
/// comparisons for each edge of a loop.
///
/// \return a failure, with the mesh unchanged, for a tolerance that is negative or NaN and when more triangles or
///         vertices are needed than a mesh can hold. The mesh is unchanged also when memory runs out, which is thrown.
template <class T>
ORMIX_GEOMETRY_API BoolResult repair(FaceVertexTriMesh3d<T>& mesh, const RepairOptions& options, RepairReport& report);

/// The same to a mesh of half-edges; what `options` leave of non-manifold places becomes `eNMP_OwnVertices`.
/// \param result replaced, but for its role; unchanged on failure
template <class T>
ORMIX_GEOMETRY_API BoolResult repair(const TriMesh3d<T>& mesh, Mesh3d<T>& result, const RepairOptions& options,
                                     RepairReport& report);
template <class Mesh, class View = TriMesh3dOf<Mesh>>
BoolResult repair(const Mesh& mesh, Mesh3d<typename View::CoordinateType>& result, const RepairOptions& options,
                  RepairReport& report) {
  return repair(View(mesh), result, options, report);
}

}  // namespace ormix::geom
