#pragma once

#include <ORMIXGeometry/Transform/2d/LinearTransform2d.h>
#include <ORMIXMath/Transform/2d/Scale2d.h>

ORMIX_GEOMETRY_LINEAR_TRANSFORM2D_LEVELS(extern, ScaleTransform2d, Scale2d)

namespace ormix::geom {

/// Scales planar entities about the origin.
class ORMIX_GEOMETRY_API ScaleTransform2d : public LinearTransform2d<ScaleTransform2d, Scale2d> {
 public:
  static constexpr const char* s_className = "ormix::geom::ScaleTransform2d";
  static constexpr eTransform2dType s_transform2dType = eT2DT_Scale;

  /// The identity.
  ScaleTransform2d() = default;
  explicit ScaleTransform2d(const Scale2d& transform) : LinearTransform(transform) {}
  explicit ScaleTransform2d(omReal64 scale) : LinearTransform(Scale2d(scale)) {}
};

}  // namespace ormix::geom
