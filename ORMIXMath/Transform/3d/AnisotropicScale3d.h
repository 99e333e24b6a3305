#pragma once

#include <ORMIXMath/Transform/3d/AffineTransform3d.h>

namespace ormix {

/// The scaling about the origin by one factor along each axis.
class ORMIX_MATH_API AnisotropicScale3d : public AffineTransform3d<AnisotropicScale3d, 3> {
 public:
  static constexpr eGeometricTransform3dType s_type = eGT3DT_AnisotropicScale;

  /// The identity.
  AnisotropicScale3d() : AnisotropicScale3d(1, 1, 1) {}
  AnisotropicScale3d(omReal64 sx, omReal64 sy, omReal64 sz) : AffineTransform3d({sx, sy, sz}) {}

  omReal64 getSx() const { return _params[0]; }
  omReal64 getSy() const { return _params[1]; }
  omReal64 getSz() const { return _params[2]; }

  /// The matrix of a vector of parameters.
  static AffineCoefficients3d coefficients(const Params& params);
};

extern template class ParametricTransform<AnisotropicScale3d, BaseGeometricTransform3d, 3>;

}  // namespace ormix
