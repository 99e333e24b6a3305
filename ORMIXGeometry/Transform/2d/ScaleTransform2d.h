#pragma once

#include <ORMIXGeometry/Transform/2d/LinearTransform2d.h>
#include <ORMIXMath/Transform/2d/Scale2d.h>

namespace ormix {
extern template class VersionedLevel<geom::ScaleTransform2d, geom::BaseGeometryTransform2d>;
extern template class RegisteredObject<geom::ScaleTransform2d, geom::BaseGeometryTransform2d>;
}  // namespace ormix

namespace ormix::geom {

extern template class LinearTransform2d<ScaleTransform2d, Scale2d>;

/// Scales planar entities about the origin.
class ORMIX_GEOMETRY_API ScaleTransform2d : public LinearTransform2d<ScaleTransform2d, Scale2d> {
 public:
  static constexpr const char* s_className = "ormix::geom::ScaleTransform2d";
  static constexpr eTransform2dType s_transform2dType = eT2DT_Scale;

  /// The identity.
  ScaleTransform2d() = default;
  explicit ScaleTransform2d(const Scale2d& transform) : LinearTransform2d(transform) {}
  explicit ScaleTransform2d(omReal64 scale) : LinearTransform2d(Scale2d(scale)) {}
};

}  // namespace ormix::geom
