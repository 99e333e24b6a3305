#pragma once

#include <ORMIXGeometry/Transform/3d/LinearTransform3d.h>
#include <ORMIXMath/Transform/3d/Rigid3d.h>

ORMIX_GEOMETRY_LINEAR_TRANSFORM3D_LEVELS(extern, RigidTransform3d, Rigid3d)

namespace ormix::geom {

/// Rotates spatial entities about the origin by Rz(alpha)·Ry(beta)·Rx(chi), then shifts them.
class ORMIX_GEOMETRY_API RigidTransform3d : public LinearTransform3d<RigidTransform3d, Rigid3d> {
 public:
  static constexpr const char* s_className = "ormix::geom::RigidTransform3d";
  static constexpr eTransform3dType s_transform3dType = eT3DT_RigidTransform;

  /// The identity.
  RigidTransform3d() = default;
  explicit RigidTransform3d(const Rigid3d& transform) : LinearTransform(transform) {}
  RigidTransform3d(omReal64 alpha, omReal64 beta, omReal64 chi, omReal64 tx, omReal64 ty, omReal64 tz)
      : LinearTransform(Rigid3d(alpha, beta, chi, tx, ty, tz)) {}
};

}  // namespace ormix::geom
