#pragma once

#include <ORMIXGeometry/Transform/2d/LinearTransform2d.h>
#include <ORMIXMath/Transform/2d/Similarity2d.h>

ORMIX_GEOMETRY_LINEAR_TRANSFORM2D_LEVELS(extern, SimilarityTransform2d, Similarity2d)

namespace ormix::geom {

/// Rotates and scales planar entities about the origin, then shifts them.
class ORMIX_GEOMETRY_API SimilarityTransform2d : public LinearTransform2d<SimilarityTransform2d, Similarity2d> {
 public:
  static constexpr const char* s_className = "ormix::geom::SimilarityTransform2d";
  static constexpr eTransform2dType s_transform2dType = eT2DT_SimilarityTransform;

  /// The identity.
  SimilarityTransform2d() = default;
  explicit SimilarityTransform2d(const Similarity2d& transform) : LinearTransform(transform) {}
  SimilarityTransform2d(omReal64 scale, omReal64 theta, omReal64 tx, omReal64 ty)
      : LinearTransform(Similarity2d(scale, theta, tx, ty)) {}
};

}  // namespace ormix::geom
