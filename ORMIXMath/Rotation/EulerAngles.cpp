#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace ormix {
namespace {

/// The magnitude of cos(beta) up to which a matrix is at gimbal lock. What is lost with alpha there is at most this in
/// the elements that have cos(beta) as a factor, so the matrix rebuilt keeps to 1e-15; and a lock survives the rounding
/// of a product of two rotations.
constexpr omReal64 s_lockedCosine = 4 * std::numeric_limits<omReal64>::epsilon();

/// The direction of (cosine, sine); a negative zero as a sine does not make -pi of pi.
omReal64 angleOf(omReal64 sine, omReal64 cosine) { return std::atan2(sine + 0.0, cosine); }

}  // namespace

RotationMatrix eulerToMatrix(const EulerAngles& angles) {
  const omReal64 ca = std::cos(angles.alpha);
  const omReal64 sa = std::sin(angles.alpha);
  const omReal64 cb = std::cos(angles.beta);
  const omReal64 sb = std::sin(angles.beta);
  const omReal64 cc = std::cos(angles.chi);
  const omReal64 sc = std::sin(angles.chi);
  return {{{ca * cb, ca * sb * sc - sa * cc, ca * sb * cc + sa * sc},
           {sa * cb, sa * sb * sc + ca * cc, sa * sb * cc - ca * sc},
           {-sb, cb * sc, cb * cc}}};
}

EulerAngles matrixToEuler(const RotationMatrix& matrix) {
  const auto& [x, y, z] = matrix;
  const omReal64 cosBeta = std::hypot(x[0], y[0]);
  if (cosBeta <= s_lockedCosine && std::hypot(z[1], z[2]) <= s_lockedCosine)
    return {0, std::copysign(s_pi / 2, -z[0]), angleOf(-y[2], y[1])};
  // Near the lock alpha is only as good as the small elements that it is read from. Whatever it is, turning the matrix
  // back by it leaves Ry(beta)·Rx(chi), whose second row gives the chi that belongs to it.
  const omReal64 alpha = angleOf(y[0], x[0]);
  const omReal64 ca = std::cos(alpha);
  const omReal64 sa = std::sin(alpha);
  return {alpha, angleOf(-z[0], cosBeta), angleOf(sa * x[2] - ca * y[2], ca * y[1] - sa * x[1])};
}

RotationMatrix composed(const RotationMatrix& left, const RotationMatrix& right) {
  RotationMatrix product{};
  for (std::size_t row = 0; row < 3; ++row)
    for (std::size_t column = 0; column < 3; ++column)
      product[row][column] =
          left[row][0] * right[0][column] + left[row][1] * right[1][column] + left[row][2] * right[2][column];
  return product;
}

EulerAngles composed(const EulerAngles& left, const EulerAngles& right) {
  return matrixToEuler(composed(eulerToMatrix(left), eulerToMatrix(right)));
}

bool quaternionToMatrix(omReal64 w, omReal64 x, omReal64 y, omReal64 z, RotationMatrix& matrix) {
  // Quarters, as their sum does not overflow; NaN and infinities stay in it.
  if (!std::isfinite(w / 4 + x / 4 + y / 4 + z / 4)) return false;
  const omReal64 largest = std::max({std::abs(w), std::abs(x), std::abs(y), std::abs(z)});
  if (largest == 0) return false;
  // By a power of two, exactly, so that squares neither overflow nor vanish.
  const int exponent = -std::ilogb(largest);
  w = std::scalbn(w, exponent);
  x = std::scalbn(x, exponent);
  y = std::scalbn(y, exponent);
  z = std::scalbn(z, exponent);
  const omReal64 squaredNorm = w * w + x * x + y * y + z * z;
  const auto twice = [&](omReal64 sum) { return 2 * sum / squaredNorm; };
  // Differences of squares as products: the small elements near gimbal lock keep their digits.
  const omReal64 wMinusY = (w - y) * (w + y);
  const omReal64 xMinusZ = (x - z) * (x + z);
  const omReal64 middle = (w - x) * (w + x) + (y - z) * (y + z);
  matrix = {{{(wMinusY + xMinusZ) / squaredNorm, twice(x * y - w * z), twice(x * z + w * y)},
             {twice(x * y + w * z), middle / squaredNorm, twice(y * z - w * x)},
             {twice(x * z - w * y), twice(y * z + w * x), (wMinusY - xMinusZ) / squaredNorm}}};
  return true;
}

bool quaternionToEuler(omReal64 w, omReal64 x, omReal64 y, omReal64 z, omReal64& alpha, omReal64& beta, omReal64& chi) {
  RotationMatrix matrix;
  if (!quaternionToMatrix(w, x, y, z, matrix)) return false;
  const EulerAngles angles = matrixToEuler(matrix);
  alpha = angles.alpha;
  beta = angles.beta;
  chi = angles.chi;
  return true;
}

}  // namespace ormix
