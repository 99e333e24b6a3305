#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace ormix {
namespace {

/// The magnitude of cos(beta) up to which a matrix counts as at gimbal lock. Setting alpha to 0 there changes the
/// elements that have cos(beta) as a factor by at most this, so the matrix rebuilt is right to 1e-15. It is large
/// enough for a product of two rotations that is at gimbal lock but for rounding.
constexpr omReal64 s_lockedCosine = 4 * std::numeric_limits<omReal64>::epsilon();

/// The angle of the direction (cosine, sine) in (-pi, pi]; a sine of -0 counts as +0 and so gives pi, not -pi.
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
  // Near gimbal lock alpha comes from small elements with large relative errors. Multiplying the matrix by Rz(-alpha)
  // leaves Ry(beta)·Rx(chi) for the alpha used, so chi is taken from the second row of that product and corrects it.
  const omReal64 alpha = angleOf(y[0], x[0]);
  const omReal64 ca = std::cos(alpha);
  const omReal64 sa = std::sin(alpha);
  return {alpha, angleOf(-z[0], cosBeta), angleOf(sa * x[2] - ca * y[2], ca * y[1] - sa * x[1])};
}

RotationMatrix eulerByRotation(const EulerAngles& angles) {
  constexpr omReal64 smallestCosine = 1e-6;
  const omReal64 ca = std::cos(angles.alpha), sa = std::sin(angles.alpha);
  const omReal64 cb = std::cos(angles.beta), sb = std::sin(angles.beta);
  // The axes of the angles are z, (-sa, ca, 0) and (ca cb, sa cb, -sb): the inverse of the matrix of these columns.
  if (std::abs(cb) < smallestCosine) return {{{0, 0, 0}, {-sa, ca, 0}, {0, 0, -sb}}};
  return {{{ca * sb / cb, sa * sb / cb, 1}, {-sa, ca, 0}, {ca / cb, sa / cb, 0}}};
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
  // Sum of quarters, which cannot overflow and is NaN or infinite when a component is.
  if (!std::isfinite(w / 4 + x / 4 + y / 4 + z / 4)) return false;
  const omReal64 largest = std::max({std::abs(w), std::abs(x), std::abs(y), std::abs(z)});
  if (largest == 0) return false;
  // Scaled by a power of two, which is exact, so that squares neither overflow nor underflow.
  const int exponent = -std::ilogb(largest);
  w = std::scalbn(w, exponent);
  x = std::scalbn(x, exponent);
  y = std::scalbn(y, exponent);
  z = std::scalbn(z, exponent);
  const omReal64 squaredNorm = w * w + x * x + y * y + z * z;
  const auto twice = [&](omReal64 sum) { return 2 * sum / squaredNorm; };
  // Differences of squares as products: no digits cancel in the elements that are small near gimbal lock.
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
