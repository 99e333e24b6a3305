#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>

/// \file
/// Rotations of space as angles, matrices and quaternions. Only values: composing and rebuilding go through matrices.

namespace ormix {

/// The rotation Rz(alpha)·Ry(beta)·Rx(chi), in radians: first chi about the x axis, then beta about y, then alpha about
/// z. Any real is an angle; the conversions below give alpha and chi in [-pi, pi], beta in [-pi/2, pi/2].
struct EulerAngles {
  omReal64 alpha = 0;
  omReal64 beta = 0;
  omReal64 chi = 0;
};

/// The rows of the matrix of a rotation, which multiplies columns from the left.
using RotationMatrix = std::array<std::array<omReal64, 3>, 3>;

/// Rz(alpha)·Ry(beta)·Rx(chi). Angles that are not finite give NaN.
ORMIX_MATH_API RotationMatrix eulerToMatrix(const EulerAngles& angles);
inline RotationMatrix eulerToMatrix(omReal64 alpha, omReal64 beta, omReal64 chi) {
  return eulerToMatrix(EulerAngles{alpha, beta, chi});
}

/// The angles of a rotation matrix: the matrix rebuilt from them is the one given to 1e-15 an element, everywhere, as
/// far as the one given is a rotation. At gimbal lock, where beta is ±pi/2 and only chi -+ alpha is determined, alpha
/// is 0. A NaN in the matrix gives NaN angles; of a reflection or a shear the angles mean nothing.
ORMIX_MATH_API EulerAngles matrixToEuler(const RotationMatrix& matrix);

/// left·right: the rotation by `right`, then by `left`.
ORMIX_MATH_API RotationMatrix composed(const RotationMatrix& left, const RotationMatrix& right);
/// The angles of the rotation by `right`, then by `left`.
ORMIX_MATH_API EulerAngles composed(const EulerAngles& left, const EulerAngles& right);

/// The matrix of the rotation p -> q·p·q⁻¹ by the quaternion q = w + xi + yj + zk, of any length but zero. False, the
/// output untouched, when q is zero or not finite.
ORMIX_MATH_API bool quaternionToMatrix(omReal64 w, omReal64 x, omReal64 y, omReal64 z, RotationMatrix& matrix);
/// The angles of the rotation by the quaternion. False, the outputs untouched, when it is zero or not finite.
ORMIX_MATH_API bool quaternionToEuler(omReal64 w, omReal64 x, omReal64 y, omReal64 z, omReal64& alpha, omReal64& beta,
                                      omReal64& chi);

}  // namespace ormix
