#pragma once

#include <ORMIXGeometry/Transform/2d/LinearTransform2d.h>
#include <ORMIXMath/Transform/2d/Rotation2d.h>

ORMIX_GEOMETRY_LINEAR_TRANSFORM2D_LEVELS(extern, RotationTransform2d, Rotation2d)

namespace ormix::geom {

/// Rotates planar entities about the origin; theta in radians.
class ORMIX_GEOMETRY_API RotationTransform2d : public LinearTransform2d<RotationTransform2d, Rotation2d> {
 public:
  static constexpr const char* s_className = "ormix::geom::RotationTransform2d";
  static constexpr eTransform2dType s_transform2dType = eT2DT_Rotation;

  /// The identity.
  RotationTransform2d() = default;
  explicit RotationTransform2d(const Rotation2d& transform) : LinearTransform(transform) {}
  explicit RotationTransform2d(omReal64 theta) : LinearTransform(Rotation2d(theta)) {}
};

}  // namespace ormix::geom
