#pragma once

#include <ORMIXGeometry/Transform/3d/LinearTransform3d.h>
#include <ORMIXMath/Transform/3d/Translation3d.h>

ORMIX_GEOMETRY_LINEAR_TRANSFORM3D_LEVELS(extern, TranslationTransform3d, Translation3d)

namespace ormix::geom {

/// Moves spatial entities by an offset along each axis.
class ORMIX_GEOMETRY_API TranslationTransform3d : public LinearTransform3d<TranslationTransform3d, Translation3d> {
 public:
  static constexpr const char* s_className = "ormix::geom::TranslationTransform3d";
  static constexpr eTransform3dType s_transform3dType = eT3DT_Translation;

  /// The identity.
  TranslationTransform3d() = default;
  explicit TranslationTransform3d(const Translation3d& transform) : LinearTransform(transform) {}
  TranslationTransform3d(omReal64 tx, omReal64 ty, omReal64 tz) : LinearTransform(Translation3d(tx, ty, tz)) {}
};

}  // namespace ormix::geom
