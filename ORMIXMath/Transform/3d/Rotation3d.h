#pragma once

#include <ORMIXMath/Transform/3d/AffineTransform3d.h>

namespace ormix {

/// The rotation about the origin by the matrix Rz(alpha)·Ry(beta)·Rx(chi), the angles in radians: first chi about the x
/// axis, then beta about the y axis, then alpha about the z axis.
class ORMIX_MATH_API Rotation3d : public AffineTransform3d<Rotation3d, 3> {
 public:
  static constexpr eGeometricTransform3dType s_type = eGT3DT_Rotation;

  /// The identity.
  Rotation3d() : Rotation3d(0, 0, 0) {}
  Rotation3d(omReal64 alpha, omReal64 beta, omReal64 chi) : AffineTransform3d({alpha, beta, chi}) {}

  omReal64 getAlpha() const { return _params[0]; }
  omReal64 getBeta() const { return _params[1]; }
  omReal64 getChi() const { return _params[2]; }

  /// The matrix of a vector of parameters.
  static AffineCoefficients3d coefficients(const Params& params);
};

extern template class ParametricTransform<Rotation3d, BaseGeometricTransform3d, 3>;

}  // namespace ormix
