#pragma once

#include <ORMIXMath/Transform/3d/AffineTransform3d.h>

namespace ormix {

/// The rotation by Rz(alpha)·Ry(beta)·Rx(chi) as of Rotation3d, scaled by one factor, then the shift by (tx, ty, tz).
class ORMIX_MATH_API Similarity3d : public AffineTransform3d<Similarity3d, 7> {
 public:
  static constexpr eGeometricTransform3dType s_type = eGT3DT_Similarity;

  /// The identity.
  Similarity3d() : Similarity3d(1, 0, 0, 0, 0, 0, 0) {}
  Similarity3d(omReal64 scale, omReal64 alpha, omReal64 beta, omReal64 chi, omReal64 tx, omReal64 ty, omReal64 tz)
      : AffineTransform3d({scale, alpha, beta, chi, tx, ty, tz}) {}

  omReal64 getScale() const { return _params[0]; }
  omReal64 getAlpha() const { return _params[1]; }
  omReal64 getBeta() const { return _params[2]; }
  omReal64 getChi() const { return _params[3]; }
  omReal64 getTx() const { return _params[4]; }
  omReal64 getTy() const { return _params[5]; }
  omReal64 getTz() const { return _params[6]; }

  /// The matrix of a vector of parameters.
  static AffineCoefficients3d coefficients(const Params& params);
};

extern template class ParametricTransform<Similarity3d, BaseGeometricTransform3d, 7>;

}  // namespace ormix
