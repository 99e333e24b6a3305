#pragma once

#include <ORMIXMath/Transform/2d/AffineTransform2d.h>

namespace ormix {

/// The affine map x' = xx·x + xy·y + tx, y' = yx·x + yy·y + ty; its parameters are the two rows.
class ORMIX_MATH_API Affine2d : public AffineTransform2d<Affine2d, 6> {
 public:
  static constexpr eGeometricTransform2dType s_type = eGT2DT_Affine;

  /// The identity.
  Affine2d() : Affine2d(1, 0, 0, 0, 1, 0) {}
  Affine2d(omReal64 xx, omReal64 xy, omReal64 tx, omReal64 yx, omReal64 yy, omReal64 ty)
      : AffineTransform2d({xx, xy, tx, yx, yy, ty}) {}

  omReal64 getXx() const { return _params[0]; }
  omReal64 getXy() const { return _params[1]; }
  omReal64 getTx() const { return _params[2]; }
  omReal64 getYx() const { return _params[3]; }
  omReal64 getYy() const { return _params[4]; }
  omReal64 getTy() const { return _params[5]; }

  /// The matrix of a vector of parameters.
  static AffineCoefficients2d coefficients(const Params& params);
};

extern template class ParametricTransform<Affine2d, BaseGeometricTransform2d, 6>;

}  // namespace ormix
