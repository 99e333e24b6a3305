#pragma once

#include <ORMIXGeometry/Transform/3d/LinearTransform3d.h>
#include <ORMIXMath/Transform/3d/Similarity3d.h>

ORMIX_GEOMETRY_LINEAR_TRANSFORM3D_LEVELS(extern, SimilarityTransform3d, Similarity3d)

namespace ormix::geom {

/// Rotates spatial entities about the origin by Rz(alpha)·Ry(beta)·Rx(chi) and scales them, then shifts them.
class ORMIX_GEOMETRY_API SimilarityTransform3d : public LinearTransform3d<SimilarityTransform3d, Similarity3d> {
 public:
  static constexpr const char* s_className = "ormix::geom::SimilarityTransform3d";
  static constexpr eTransform3dType s_transform3dType = eT3DT_SimilarityTransform;

  /// The identity.
  SimilarityTransform3d() = default;
  explicit SimilarityTransform3d(const Similarity3d& transform) : LinearTransform(transform) {}
  SimilarityTransform3d(omReal64 scale, omReal64 alpha, omReal64 beta, omReal64 chi, omReal64 tx, omReal64 ty,
                        omReal64 tz)
      : LinearTransform(Similarity3d(scale, alpha, beta, chi, tx, ty, tz)) {}
};

}  // namespace ormix::geom
