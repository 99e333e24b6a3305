#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>

namespace ormix {

/// The rotation that turns one set of vectors best towards another, as a unit quaternion w + xi + yj + zk.
struct BestRotation {
  omReal64 w = 1;
  omReal64 x = 0;
  omReal64 y = 0;
  omReal64 z = 0;
  omReal64 sum = 0;  ///< Of the products of each turned vector with its target: the largest that a rotation reaches.
  omReal64 gap = 0;  ///< By how much turning half way round the worst axis lessens the sum: 0 when another is as good.
};

/// From the sums over all pairs of the products of a source's coordinates with a target's, row by row: (x1 x2, x1 y2,
/// x1 z2, y1 x2, ..., z1 z2), both about their means for a rigid motion. The quaternion is the eigenvector of the
/// largest eigenvalue of the symmetric matrix of Horn 1987, so always a rotation, never a reflection; `gap` is that
/// eigenvalue less the next one. The component of largest magnitude is positive. False, the output untouched, when a
/// sum is NaN or infinite. Constant time, nothing is allocated.
ORMIX_MATH_API bool rotationFromSums(const std::array<omReal64, 9>& sums, BestRotation& rotation);

}  // namespace ormix
