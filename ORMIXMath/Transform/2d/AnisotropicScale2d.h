#pragma once

#include <ORMIXMath/Transform/2d/AffineTransform2d.h>

namespace ormix {

/// The scaling about the origin by one factor along x and one along y.
class ORMIX_MATH_API AnisotropicScale2d : public AffineTransform2d<AnisotropicScale2d, 2> {
 public:
  static constexpr eGeometricTransform2dType s_type = eGT2DT_AnisotropicScale;

  /// The identity.
  AnisotropicScale2d() : AnisotropicScale2d(1, 1) {}
  AnisotropicScale2d(omReal64 sx, omReal64 sy) : AffineTransform2d({sx, sy}) {}

  omReal64 getSx() const { return _params[0]; }
  omReal64 getSy() const { return _params[1]; }

  /// The matrix of a vector of parameters.
  static AffineCoefficients2d coefficients(const Params& params);
};

extern template class ParametricTransform<AnisotropicScale2d, BaseGeometricTransform2d, 2>;

}  // namespace ormix
