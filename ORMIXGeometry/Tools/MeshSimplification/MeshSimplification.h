#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexTriMesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXMath/MeshSimplification/MeshSimplificationOptions.h>
#include <ORMIXUtil/ProcessingResult.h>

namespace ormix::geom {

// The options and the report belong to the computation, see ORMIXMath/MeshSimplification.
using ormix::eCollapsePlacement;
using ormix::eCollapseRefusal;
using ormix::MeshSimplificationOptions;
using ormix::MeshSimplificationReport;
using ormix::SampledDistance;

/// Simplification of meshes by collapsing edges to vertices, to a number of triangles or up to an error, as
/// simplifyTriangles() describes it: the topology stays, closed meshes stay closed, no triangle is turned. The same
/// mesh gives the same result everywhere.
///
/// Integer coordinates are rounded before a place is judged, so that what is said of the result holds for what it
/// stores.
///
/// \tparam T omInt32, omUInt32, omReal32 or omReal64
template <class T>
class MeshSimplification {
 public:
  /// Simplifies a mesh. Its role stays; vertices without triangles go. Boundaries stay boundaries, and two fans that
  /// meet in one vertex still do.
  ///
  /// `options` must name a number of triangles or a greatest error. When no edge can collapse any more, more triangles
  /// are left than asked for, which is no failure: the report has their number, and why collapses were refused.
  /// \param report if not null, set on success; distances are only measured for it
  /// \return a failure, with mesh and report unchanged, for options out of range, for a coordinate that is not finite or
  ///         beyond 2^1020, and when the progress callback stops it; the text says which. Unchanged too when memory
  ///         runs out.
  ORMIX_GEOMETRY_API static BoolResult simplify(Mesh3d<T>& mesh, const MeshSimplificationOptions& options = {},
                                                MeshSimplificationReport* report = nullptr);

  /// The same for triangles of any kind. Edges that do not have exactly two triangles, one in each direction, are
  /// boundaries; of those with more than one the vertices stay, as they do where several fans meet. Triangles with
  /// equal corners go. Fails also for an index out of range, see FaceVertexTriMesh3d::checkIntegrity().
  ORMIX_GEOMETRY_API static BoolResult simplify(FaceVertexTriMesh3d<T>& mesh,
                                                const MeshSimplificationOptions& options = {},
                                                MeshSimplificationReport* report = nullptr);
};

}  // namespace ormix::geom
