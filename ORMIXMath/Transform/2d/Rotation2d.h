#pragma once

#include <ORMIXMath/Transform/2d/AffineTransform2d.h>

namespace ormix {

/// The rotation about the origin by theta radians, counter-clockwise with y up.
class ORMIX_MATH_API Rotation2d : public AffineTransform2d<Rotation2d, 1> {
 public:
  static constexpr eGeometricTransform2dType s_type = eGT2DT_Rotation;

  /// The identity.
  Rotation2d() : Rotation2d(0) {}
  explicit Rotation2d(omReal64 theta) : AffineTransform2d({theta}) {}

  omReal64 getTheta() const { return _params[0]; }

  /// The matrix of a vector of parameters.
  static AffineCoefficients2d coefficients(const Params& params);
};

extern template class ParametricTransform<Rotation2d, BaseGeometricTransform2d, 1>;

}  // namespace ormix
