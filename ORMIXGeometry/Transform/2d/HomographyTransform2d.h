#pragma once

#include <ORMIXGeometry/Transform/2d/LinearTransform2d.h>
#include <ORMIXMath/Transform/2d/Homography2d.h>

ORMIX_GEOMETRY_LINEAR_TRANSFORM2D_LEVELS(extern, HomographyTransform2d, Homography2d)

namespace ormix::geom {

/// Maps planar entities by a projective map.
class ORMIX_GEOMETRY_API HomographyTransform2d : public LinearTransform2d<HomographyTransform2d, Homography2d> {
 public:
  static constexpr const char* s_className = "ormix::geom::HomographyTransform2d";
  static constexpr eTransform2dType s_transform2dType = eT2DT_HomographyTransform;

  /// The identity.
  HomographyTransform2d() = default;
  explicit HomographyTransform2d(const Homography2d& transform) : LinearTransform(transform) {}
  explicit HomographyTransform2d(const Matrix3x3& matrix) : LinearTransform(Homography2d(matrix)) {}

  /// Replaces the matrix.
  void init(const Matrix3x3& matrix) { _transform = Homography2d(matrix); }
};

}  // namespace ormix::geom
