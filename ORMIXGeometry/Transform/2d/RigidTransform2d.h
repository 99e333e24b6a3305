#pragma once

#include <ORMIXGeometry/Transform/2d/LinearTransform2d.h>
#include <ORMIXMath/Transform/2d/Rigid2d.h>

ORMIX_GEOMETRY_LINEAR_TRANSFORM2D_LEVELS(extern, RigidTransform2d, Rigid2d)

namespace ormix::geom {

/// Rotates planar entities about the origin, then shifts them.
class ORMIX_GEOMETRY_API RigidTransform2d : public LinearTransform2d<RigidTransform2d, Rigid2d> {
 public:
  static constexpr const char* s_className = "ormix::geom::RigidTransform2d";
  static constexpr eTransform2dType s_transform2dType = eT2DT_RigidTransform;

  /// The identity.
  RigidTransform2d() = default;
  explicit RigidTransform2d(const Rigid2d& transform) : LinearTransform(transform) {}
  RigidTransform2d(omReal64 theta, omReal64 tx, omReal64 ty) : LinearTransform(Rigid2d(theta, tx, ty)) {}
};

}  // namespace ormix::geom
