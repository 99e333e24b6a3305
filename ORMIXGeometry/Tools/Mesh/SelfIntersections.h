#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexAdjTriMesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexTriMesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>

#include <array>
#include <cstddef>
#include <vector>

namespace ormix::geom {

/// Pairs of triangles of one mesh that intersect.
struct SelfIntersections {
  std::size_t nbPairs = 0;                          ///< how many were found
  std::vector<std::array<omUInt32, 2>> pairColl{};  ///< the first of them, each ascending, in ascending order
  bool isComplete = true;                           ///< whether all pairs whose boxes meet were tested
};

/// How much findSelfIntersections() does.
struct SelfIntersectionOptions {
  std::size_t maxNbListed = 1000000;  ///< most pairs that are listed; all are counted
  /// Most pairs of triangles that are tested, beside 10^6: so many for each triangle. In surfaces the boxes of about
  /// ten others meet that of a triangle, but on a crafted edge of 10^6 triangles all of them do.
  std::size_t maxNbTestedATriangle = 200;
};

/// Finds the triangles that meet in more than the vertices and edges that they have in common by their indices, or meet
/// without having any: exactly, by the boxes of a tree. Triangles that overlap in their plane intersect, and so do
/// those that merely touch at a place where they have no common vertex, as a vertex at the same place with another
/// index.
///
/// Left out are triangles that are no surface, with equal or collinear corners or one that is not finite, and pairs
/// with the same three corners, which `validate` reports as such. O(n log n + tested pairs).
/// \throw ORMIXGeometryException, logged, for invalid indices
template <class T>
ORMIX_GEOMETRY_API SelfIntersections findSelfIntersections(const TriMesh3d<T>& mesh,
                                                           const SelfIntersectionOptions& options = {});
template <class Mesh, class View = TriMesh3dOf<Mesh>>
SelfIntersections findSelfIntersections(const Mesh& mesh, const SelfIntersectionOptions& options = {}) {
  return findSelfIntersections(View(mesh), options);
}

}  // namespace ormix::geom
