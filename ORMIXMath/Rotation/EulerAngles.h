#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>

/// \file
/// Rotations of space as Euler angles, matrices and quaternions. Angles are in radians; composition goes through
/// matrices. All functions are constant time and do not allocate.

namespace ormix {

/// The rotation Rz(alpha)·Ry(beta)·Rx(chi) about fixed axes: first chi about x, then beta about y, then alpha about z.
/// Every finite real is an angle; the conversions below return alpha and chi in [-pi, pi] and beta in [-pi/2, pi/2].
struct EulerAngles {
  omReal64 alpha = 0;  ///< About the z axis, applied last.
  omReal64 beta = 0;   ///< About the y axis.
  omReal64 chi = 0;    ///< About the x axis, applied first.
};

/// The rows of a rotation matrix R, which rotates the column vector v to R v.
using RotationMatrix = std::array<std::array<omReal64, 3>, 3>;

/// The matrix Rz(alpha)·Ry(beta)·Rx(chi). An angle that is not finite makes elements NaN.
ORMIX_MATH_API RotationMatrix eulerToMatrix(const EulerAngles& angles);
/// The same from three angles.
inline RotationMatrix eulerToMatrix(omReal64 alpha, omReal64 beta, omReal64 chi) {
  return eulerToMatrix(EulerAngles{alpha, beta, chi});
}

/// The angles of a rotation matrix. eulerToMatrix() of them restores each element to 1e-15, near gimbal lock too, as
/// far as the given matrix is a rotation. At gimbal lock (beta = ±pi/2), where only chi - alpha or chi + alpha is
/// determined, alpha is 0. A NaN in the matrix gives NaN angles; for a matrix that is no rotation the angles have no
/// meaning.
ORMIX_MATH_API EulerAngles matrixToEuler(const RotationMatrix& matrix);

/// The derivatives of alpha, beta and chi, a row each, by the vector of a small rotation that follows that of the
/// angles: how the angles of exp(v)·R change with v. Within 1e-6 of gimbal lock those of alpha and chi have no bound;
/// there alpha is held, as matrixToEuler() holds it, and a rotation about the axis that is at a right angle to those of
/// beta and chi changes no angle.
ORMIX_MATH_API RotationMatrix eulerByRotation(const EulerAngles& angles);

/// The product left·right: the rotation by `right`, then by `left`.
ORMIX_MATH_API RotationMatrix composed(const RotationMatrix& left, const RotationMatrix& right);
/// The angles of the rotation by `right`, then by `left`.
ORMIX_MATH_API EulerAngles composed(const EulerAngles& left, const EulerAngles& right);

/// The matrix of the rotation p -> q·p·q⁻¹ by the quaternion q = w + xi + yj + zk, which may have any length but zero.
/// Returns false, the output untouched, when q is zero or a component is not finite.
ORMIX_MATH_API bool quaternionToMatrix(omReal64 w, omReal64 x, omReal64 y, omReal64 z, RotationMatrix& matrix);
/// The angles of the rotation by the quaternion. Returns false, the outputs untouched, as quaternionToMatrix().
ORMIX_MATH_API bool quaternionToEuler(omReal64 w, omReal64 x, omReal64 y, omReal64 z, omReal64& alpha, omReal64& beta,
                                      omReal64& chi);

}  // namespace ormix
