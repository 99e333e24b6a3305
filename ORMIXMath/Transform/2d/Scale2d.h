#pragma once

#include <ORMIXMath/Transform/2d/AffineTransform2d.h>

namespace ormix {

/// The scaling about the origin by one factor.
class ORMIX_MATH_API Scale2d : public AffineTransform2d<Scale2d, 1> {
 public:
  static constexpr eGeometricTransform2dType s_type = eGT2DT_Scale;

  /// The identity.
  Scale2d() : Scale2d(1) {}
  explicit Scale2d(omReal64 scale) : AffineTransform2d({scale}) {}

  omReal64 getScale() const { return _params[0]; }

  /// The matrix of a vector of parameters.
  static AffineCoefficients2d coefficients(const Params& params);
};

extern template class ParametricTransform<Scale2d, BaseGeometricTransform2d, 1>;

}  // namespace ormix
