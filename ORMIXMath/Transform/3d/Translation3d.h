#pragma once

#include <ORMIXMath/Transform/3d/AffineTransform3d.h>

namespace ormix {

/// The shift by (tx, ty, tz).
class ORMIX_MATH_API Translation3d : public AffineTransform3d<Translation3d, 3> {
 public:
  static constexpr eGeometricTransform3dType s_type = eGT3DT_Translation;

  /// The identity.
  Translation3d() : Translation3d(0, 0, 0) {}
  Translation3d(omReal64 tx, omReal64 ty, omReal64 tz) : AffineTransform3d({tx, ty, tz}) {}

  omReal64 getTx() const { return _params[0]; }
  omReal64 getTy() const { return _params[1]; }
  omReal64 getTz() const { return _params[2]; }

  /// The matrix of a vector of parameters.
  static AffineCoefficients3d coefficients(const Params& params);
};

extern template class ParametricTransform<Translation3d, BaseGeometricTransform3d, 3>;

}  // namespace ormix
