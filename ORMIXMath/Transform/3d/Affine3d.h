#pragma once

#include <ORMIXMath/Transform/3d/AffineTransform3d.h>

namespace ormix {

/// The affine map x' = xx·x + xy·y + xz·z + tx, likewise y' and z'; its parameters are the three rows.
class ORMIX_MATH_API Affine3d : public AffineTransform3d<Affine3d, 12> {
 public:
  static constexpr eGeometricTransform3dType s_type = eGT3DT_Affine;

  /// The identity.
  Affine3d() : Affine3d(AffineCoefficients3d()) {}
  explicit Affine3d(const AffineCoefficients3d& rows);

  /// The matrix of a vector of parameters.
  static AffineCoefficients3d coefficients(const Params& params);
};

extern template class ParametricTransform<Affine3d, BaseGeometricTransform3d, 12>;

}  // namespace ormix
