#pragma once

#include <ORMIXMath/Contact/FacingTree.h>
#include <ORMIXMath/Contact/SurfaceMeshes.h>

#include <vector>

/// \file
/// The triangles of surfaces in a tree, for triangles that face another one; not installed.

namespace ormix::detail {

/// Whether two triangles face each other: their normals are at more than a right angle, by the margin of the plane's
/// isFacing().
inline bool isFacing(const SurfaceTriangle& triangle, const SurfaceTriangle& other) {
  return dot(triangle.normal, other.normal) < -1e-6;
}

inline IndexBox<3> boxOf(const SurfaceTriangle& triangle) {
  IndexBox<3> box;
  for (const SpatialPoint& corner : triangle.corners) box.add(IndexPoint<3>{corner.x, corner.y, corner.z});
  return box;
}

/// Triangles whose normals fall into 54 sectors, nine on each side of a cube.
class FacingTriangles {
 public:
  /// O(n log n).
  ORMIX_MATH_API explicit FacingTriangles(std::vector<SurfaceTriangle> triangles);

  const std::vector<SurfaceTriangle>& triangles() const { return _triangles; }

  /// FacingTree::visit() of the triangles that face one.
  template <class Visit>
  void visitFacing(const SurfaceTriangle& triangle, omReal64 squareBound, Visit&& visit) const {
    _tree.visit(boxOf(triangle), opposingSectors(triangle.normal), squareBound, [&](std::size_t other, omReal64 bound) {
      return isFacing(triangle, _triangles[other]) ? visit(other, bound) : bound;
    });
  }

 private:
  /// The sectors with a normal that opposes one of the same sector as this normal.
  ORMIX_MATH_API static omUInt64 opposingSectors(const SpatialPoint& normal);

  std::vector<SurfaceTriangle> _triangles;
  FacingTree<3> _tree;
};

}  // namespace ormix::detail
