#pragma once

#include <ORMIXMath/MeshSimplification/CollapsingMesh.h>

/// \file
/// The quadrics that a surface gives its vertices; not installed.

namespace ormix::detail {

/// Quadrics of vertices as their triangles are now.
struct VertexQuadrics {
  omReal64 boundaryWeight;  ///< of the planes that hold boundaries and features, beside the surface's

  /// The planes of the triangles around a vertex, each with the root of the triangle's area as its weight, and for each
  /// boundary and each feature that ends at the vertex a plane through it that is perpendicular to the triangle, with
  /// its length as the weight. All of them pass through the vertex.
  /// \param fan of the vertex
  Quadric of(const CollapsingMesh& mesh, const std::vector<omUInt32>& fan) const;
};

/// Marks the edges along which normals turn by more than an angle, on both of their sides.
void markFeatures(CollapsingMesh& mesh, omReal64 angle);

}  // namespace ormix::detail
