#pragma once

#include <ORMIXGeometry/Transform/2d/LinearTransform2d.h>
#include <ORMIXMath/Transform/2d/Translation2d.h>

ORMIX_GEOMETRY_LINEAR_TRANSFORM2D_LEVELS(extern, TranslationTransform2d, Translation2d)

namespace ormix::geom {

/// Shifts planar entities.
class ORMIX_GEOMETRY_API TranslationTransform2d : public LinearTransform2d<TranslationTransform2d, Translation2d> {
 public:
  static constexpr const char* s_className = "ormix::geom::TranslationTransform2d";
  static constexpr eTransform2dType s_transform2dType = eT2DT_Translation;

  /// The identity.
  TranslationTransform2d() = default;
  explicit TranslationTransform2d(const Translation2d& transform) : LinearTransform(transform) {}
  TranslationTransform2d(omReal64 tx, omReal64 ty) : LinearTransform(Translation2d(tx, ty)) {}
};

}  // namespace ormix::geom
