#include <ORMIXMath/Algebra/EigenBridge.h>
#include <ORMIXMath/Fitting/RotationFromSums.h>

#include <Eigen/Eigenvalues>
#include <algorithm>
#include <cmath>

namespace ormix {

bool rotationFromSums(const std::array<omReal64, 9>& sums, BestRotation& rotation) {
  omReal64 largest = 0;
  // Not std::max, which would ignore a NaN.
  for (const omReal64 sum : sums)
    if (std::isnan(sum) || std::abs(sum) > largest) largest = std::abs(sum);
  if (!std::isfinite(largest)) return false;
  // Scaled by a power of two, which is exact, so that nothing overflows.
  const int exponent = largest > 0 ? std::ilogb(largest) + 2 : 0;
  std::array<omReal64, 9> s;
  std::transform(sums.begin(), sums.end(), s.begin(), [&](omReal64 sum) { return std::scalbn(sum, -exponent); });
  const auto& [xx, xy, xz, yx, yy, yz, zx, zy, zz] = s;
  Eigen::Matrix4d matrix;
  matrix << xx + yy + zz, yz - zy, zx - xz, xy - yx,  //
      yz - zy, xx - yy - zz, xy + yx, zx + xz,        //
      zx - xz, xy + yx, yy - xx - zz, yz + zy,        //
      xy - yx, zx + xz, yz + zy, zz - xx - yy;
  const Eigen::SelfAdjointEigenSolver<Eigen::Matrix4d> solver(matrix);
  const Eigen::Vector4d values = solver.eigenvalues();
  if (solver.info() != Eigen::Success || !values.allFinite()) return false;
  Eigen::Vector4d q = solver.eigenvectors().col(3);
  detail::fixSign(q);
  rotation = {q(0), q(1), q(2), q(3), std::scalbn(values(3), exponent), std::scalbn(values(3) - values(2), exponent)};
  return true;
}

}  // namespace ormix
