#pragma once

#include <ORMIXMath/Transform/3d/AffineTransform3d.h>

namespace ormix {

/// The rotation by Rz(alpha)·Ry(beta)·Rx(chi) as of Rotation3d, then the shift by (tx, ty, tz).
class ORMIX_MATH_API Rigid3d : public AffineTransform3d<Rigid3d, 6> {
 public:
  static constexpr eGeometricTransform3dType s_type = eGT3DT_Rigid;

  /// The identity.
  Rigid3d() : Rigid3d(0, 0, 0, 0, 0, 0) {}
  Rigid3d(omReal64 alpha, omReal64 beta, omReal64 chi, omReal64 tx, omReal64 ty, omReal64 tz)
      : AffineTransform3d({alpha, beta, chi, tx, ty, tz}) {}

  omReal64 getAlpha() const { return _params[0]; }
  omReal64 getBeta() const { return _params[1]; }
  omReal64 getChi() const { return _params[2]; }
  omReal64 getTx() const { return _params[3]; }
  omReal64 getTy() const { return _params[4]; }
  omReal64 getTz() const { return _params[5]; }

  /// The matrix of a vector of parameters.
  static AffineCoefficients3d coefficients(const Params& params);
};

extern template class ParametricTransform<Rigid3d, BaseGeometricTransform3d, 6>;

}  // namespace ormix
