#pragma once

#include <ORMIXMath/Transform/3d/AffineTransform3d.h>

namespace ormix {

/// The scaling about the origin by one factor.
class ORMIX_MATH_API Scale3d : public AffineTransform3d<Scale3d, 1> {
 public:
  static constexpr eGeometricTransform3dType s_type = eGT3DT_Scale;

  /// The identity.
  Scale3d() : Scale3d(1) {}
  explicit Scale3d(omReal64 scale) : AffineTransform3d({scale}) {}

  omReal64 getScale() const { return _params[0]; }

  /// The matrix of a vector of parameters.
  static AffineCoefficients3d coefficients(const Params& params);
};

extern template class ParametricTransform<Scale3d, BaseGeometricTransform3d, 1>;

}  // namespace ormix
