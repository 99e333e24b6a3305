#pragma once

#include <ORMIXMath/Transform/2d/AffineTransform2d.h>

namespace ormix {

/// The rotation about the origin by theta radians, then the shift by (tx, ty).
class ORMIX_MATH_API Rigid2d : public AffineTransform2d<Rigid2d, 3> {
 public:
  static constexpr eGeometricTransform2dType s_type = eGT2DT_Rigid;

  /// The identity.
  Rigid2d() : Rigid2d(0, 0, 0) {}
  Rigid2d(omReal64 theta, omReal64 tx, omReal64 ty) : AffineTransform2d({theta, tx, ty}) {}

  omReal64 getTheta() const { return _params[0]; }
  omReal64 getTx() const { return _params[1]; }
  omReal64 getTy() const { return _params[2]; }

  /// The matrix of a vector of parameters.
  static AffineCoefficients2d coefficients(const Params& params);
};

extern template class ParametricTransform<Rigid2d, BaseGeometricTransform2d, 3>;

}  // namespace ormix
