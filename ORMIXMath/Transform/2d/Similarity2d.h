#pragma once

#include <ORMIXMath/Transform/2d/AffineTransform2d.h>

namespace ormix {

/// The rotation about the origin by theta radians, scaled by one factor, then the shift by (tx, ty).
class ORMIX_MATH_API Similarity2d : public AffineTransform2d<Similarity2d, 4> {
 public:
  static constexpr eGeometricTransform2dType s_type = eGT2DT_Similarity;

  /// The identity.
  Similarity2d() : Similarity2d(1, 0, 0, 0) {}
  Similarity2d(omReal64 scale, omReal64 theta, omReal64 tx, omReal64 ty) : AffineTransform2d({scale, theta, tx, ty}) {}

  omReal64 getScale() const { return _params[0]; }
  omReal64 getTheta() const { return _params[1]; }
  omReal64 getTx() const { return _params[2]; }
  omReal64 getTy() const { return _params[3]; }

  /// The matrix of a vector of parameters.
  static AffineCoefficients2d coefficients(const Params& params);
};

extern template class ParametricTransform<Similarity2d, BaseGeometricTransform2d, 4>;

}  // namespace ormix
