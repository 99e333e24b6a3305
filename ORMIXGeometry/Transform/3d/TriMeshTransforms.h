#pragma once

#include <ORMIXGeometry/Entity/3d/BoundingBox/BoundingBox3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexAdjTriMesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexTriMesh3d.h>
#include <ORMIXGeometry/Transform/3d/BaseGeometryTransform3d.h>

/// \file
/// Transforms of meshes of triangles that are no entities. All vertices take part, used or not, as they do where a
/// `Mesh3d` is transformed.

namespace ormix::geom {

/// The smallest box that contains all vertices, as of `EnvelopeTransform3d`.
/// \throw ORMIXGeometryException, logged, where there are no vertices or one is not finite
template <class T>
ORMIX_GEOMETRY_API BoundingBox3d<T> envelope(const TriMesh3d<T>& mesh);
template <class Mesh, class View = TriMesh3dOf<Mesh>>
auto envelope(const Mesh& mesh) {
  return envelope(View(mesh));
}

/// Maps the vertices by a linear transform, with the bits that it gives for a `PointCloud3d` and a `Mesh3d`.
/// \return a failure, with nothing changed, where a vertex has no image, and for a transform that is not linear
/// @{
template <class T>
ORMIX_GEOMETRY_API BoolResult applyInSitu(const BaseGeometryTransform3d& transform, FaceVertexTriMesh3d<T>& mesh);
template <class T>
ORMIX_GEOMETRY_API BoolResult applyInSitu(const BaseGeometryTransform3d& transform, FaceVertexAdjTriMesh3d<T>& mesh);
/// @}

/// The image of a mesh under a linear transform.
/// \throw ORMIXGeometryException, logged, instead of a failure
/// @{
template <class T>
ORMIX_GEOMETRY_API FaceVertexTriMesh3d<T> apply(const BaseGeometryTransform3d& transform,
                                                const FaceVertexTriMesh3d<T>& mesh);
template <class T>
ORMIX_GEOMETRY_API FaceVertexAdjTriMesh3d<T> apply(const BaseGeometryTransform3d& transform,
                                                   const FaceVertexAdjTriMesh3d<T>& mesh);
/// @}

}  // namespace ormix::geom
