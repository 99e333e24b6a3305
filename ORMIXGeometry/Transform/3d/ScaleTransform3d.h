#pragma once

#include <ORMIXGeometry/Transform/3d/LinearTransform3d.h>
#include <ORMIXMath/Transform/3d/Scale3d.h>

ORMIX_GEOMETRY_LINEAR_TRANSFORM3D_LEVELS(extern, ScaleTransform3d, Scale3d)

namespace ormix::geom {

/// Scales spatial entities about the origin by one factor.
class ORMIX_GEOMETRY_API ScaleTransform3d : public LinearTransform3d<ScaleTransform3d, Scale3d> {
 public:
  static constexpr const char* s_className = "ormix::geom::ScaleTransform3d";
  static constexpr eTransform3dType s_transform3dType = eT3DT_Scale;

  /// The identity.
  ScaleTransform3d() = default;
  explicit ScaleTransform3d(const Scale3d& transform) : LinearTransform(transform) {}
  explicit ScaleTransform3d(omReal64 scale) : LinearTransform(Scale3d(scale)) {}
};

}  // namespace ormix::geom
