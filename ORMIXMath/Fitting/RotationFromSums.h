#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>

namespace ormix {

/// The rotation that maps a set of source vectors best to their targets by least squares, as a unit quaternion
/// w + xi + yj + zk whose component of largest magnitude is positive. By default no rotation.
struct BestRotation {
  omReal64 w = 1;  ///< Real part.
  omReal64 x = 0;  ///< Coefficient of i.
  omReal64 y = 0;  ///< Coefficient of j.
  omReal64 z = 0;  ///< Coefficient of k.
  /// Sum over the pairs of the inner product of the rotated source with its target: the largest of all rotations.
  omReal64 sum = 0;
  /// The largest eigenvalue less the second one: by how much `sum` exceeds that of the next stationary rotation, which
  /// differs by a half turn. 0 when the best rotation is not unique.
  omReal64 gap = 0;
};

/// The best rotation from nine sums over all pairs (source (x1, y1, z1), target (x2, y2, z2)): those of x1 x2, x1 y2,
/// x1 z2, y1 x2, y1 y2, y1 z2, z1 x2, z1 y2, z1 z2. For a rigid motion both are relative to their means.
///
/// The quaternion is the eigenvector of the largest eigenvalue of a symmetric matrix of 4 rows (Horn1987), so the
/// result is always a rotation, never a reflection. Returns false, the output untouched, when a sum is NaN or infinite.
/// Constant time, no allocation.
ORMIX_MATH_API bool rotationFromSums(const std::array<omReal64, 9>& sums, BestRotation& rotation);

}  // namespace ormix
