#pragma once

#include <ORMIXMath/Transform/2d/AffineTransform2d.h>

namespace ormix {

/// The shift by (tx, ty).
class ORMIX_MATH_API Translation2d : public AffineTransform2d<Translation2d, 2> {
 public:
  static constexpr eGeometricTransform2dType s_type = eGT2DT_Translation;

  /// The identity.
  Translation2d() : Translation2d(0, 0) {}
  Translation2d(omReal64 tx, omReal64 ty) : AffineTransform2d({tx, ty}) {}

  omReal64 getTx() const { return _params[0]; }
  omReal64 getTy() const { return _params[1]; }

  /// The matrix of a vector of parameters.
  static AffineCoefficients2d coefficients(const Params& params);
};

extern template class ParametricTransform<Translation2d, BaseGeometricTransform2d, 2>;

}  // namespace ormix
