#pragma once

#include <ORMIXGeometry/Transform/3d/LinearTransform3d.h>
#include <ORMIXMath/Transform/3d/Rotation3d.h>

ORMIX_GEOMETRY_LINEAR_TRANSFORM3D_LEVELS(extern, RotationTransform3d, Rotation3d)

namespace ormix::geom {

/// Rotates spatial entities about the origin by the matrix Rz(alpha)·Ry(beta)·Rx(chi), the angles in radians.
class ORMIX_GEOMETRY_API RotationTransform3d : public LinearTransform3d<RotationTransform3d, Rotation3d> {
 public:
  static constexpr const char* s_className = "ormix::geom::RotationTransform3d";
  static constexpr eTransform3dType s_transform3dType = eT3DT_Rotation;

  /// The identity.
  RotationTransform3d() = default;
  explicit RotationTransform3d(const Rotation3d& transform) : LinearTransform(transform) {}
  RotationTransform3d(omReal64 alpha, omReal64 beta, omReal64 chi) : LinearTransform(Rotation3d(alpha, beta, chi)) {}
};

}  // namespace ormix::geom
