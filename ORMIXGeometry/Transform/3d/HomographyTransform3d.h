#pragma once

#include <ORMIXGeometry/Transform/3d/LinearTransform3d.h>
#include <ORMIXMath/Transform/3d/Homography3d.h>

ORMIX_GEOMETRY_LINEAR_TRANSFORM3D_LEVELS(extern, HomographyTransform3d, Homography3d)

namespace ormix::geom {

/// Maps spatial entities by a projective map.
class ORMIX_GEOMETRY_API HomographyTransform3d : public LinearTransform3d<HomographyTransform3d, Homography3d> {
 public:
  static constexpr const char* s_className = "ormix::geom::HomographyTransform3d";
  static constexpr eTransform3dType s_transform3dType = eT3DT_HomographyTransform;

  /// The identity.
  HomographyTransform3d() = default;
  explicit HomographyTransform3d(const Homography3d& transform) : LinearTransform(transform) {}
  explicit HomographyTransform3d(const Matrix4x4& matrix) : LinearTransform(Homography3d(matrix)) {}

  /// Replaces the matrix.
  void init(const Matrix4x4& matrix) { _transform = Homography3d(matrix); }
};

}  // namespace ormix::geom
