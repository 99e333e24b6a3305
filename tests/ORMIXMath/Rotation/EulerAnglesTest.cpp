#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXMath/Scalar/Constants.h>

#include "support/Checks.h"
#include "support/Random.h"

namespace {

using namespace ormix;
using Wide = long double;
using WideMatrix = std::array<std::array<Wide, 3>, 3>;

WideMatrix product(const WideMatrix& left, const WideMatrix& right) {
  WideMatrix result{};
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t j = 0; j < 3; ++j)
      for (std::size_t k = 0; k < 3; ++k) result[i][j] += left[i][k] * right[k][j];
  return result;
}

/// The product of the three elementary rotations, written out.
WideMatrix wideMatrix(Wide alpha, Wide beta, Wide chi) {
  const WideMatrix z{{{std::cos(alpha), -std::sin(alpha), 0}, {std::sin(alpha), std::cos(alpha), 0}, {0, 0, 1}}};
  const WideMatrix y{{{std::cos(beta), 0, std::sin(beta)}, {0, 1, 0}, {-std::sin(beta), 0, std::cos(beta)}}};
  const WideMatrix x{{{1, 0, 0}, {0, std::cos(chi), -std::sin(chi)}, {0, std::sin(chi), std::cos(chi)}}};
  return product(z, product(y, x));
}

template <class Left, class Right>
omReal64 largestDifference(const Left& left, const Right& right) {
  Wide largest = 0;
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t j = 0; j < 3; ++j) largest = std::max(largest, std::abs(Wide(left[i][j]) - Wide(right[i][j])));
  return static_cast<omReal64>(largest);
}

RotationMatrix rounded(const WideMatrix& wide) {
  RotationMatrix matrix{};
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t j = 0; j < 3; ++j) matrix[i][j] = static_cast<omReal64>(wide[i][j]);
  return matrix;
}

struct Rotations : ::testing::Test {
  omReal64 angle() { return random.uniform(-s_pi, s_pi); }
  /// Anywhere, or near and at the multiples of a right angle, at every order of magnitude of the distance to it.
  omReal64 hardAngle() {
    const omReal64 offset = std::pow(10, random.uniform(-20, 0));
    const omReal64 rightAngle = s_pi / 2 * (omReal64(random.below(5)) - 2);
    const omReal64 angles[] = {angle(), rightAngle, rightAngle - offset, rightAngle + offset};
    return angles[random.below(4)];
  }

  support::Random random{1707};
};

TEST_F(Rotations, AreRebuiltFromTheirAnglesAlsoNearTheLock) {
  for (int count = 0; count < 200000; ++count) {
    const RotationMatrix matrix = rounded(wideMatrix(hardAngle(), hardAngle(), hardAngle()));
    const EulerAngles angles = matrixToEuler(matrix);
    ASSERT_LE(largestDifference(eulerToMatrix(angles), matrix), 1e-15)
        << angles.alpha << ' ' << angles.beta << ' ' << angles.chi;
    ASSERT_LE(std::abs(angles.alpha), s_pi);
    ASSERT_LE(std::abs(angles.beta), s_pi / 2);
    ASSERT_LE(std::abs(angles.chi), s_pi);
  }
}

TEST_F(Rotations, HaveNoAlphaAtTheLock) {
  for (int count = 0; count < 10000; ++count) {
    const omReal64 alpha = angle(), chi = angle(), beta = count % 2 == 0 ? s_pi / 2 : -s_pi / 2;
    const EulerAngles angles = matrixToEuler(eulerToMatrix(alpha, beta, chi));
    ASSERT_EQ(angles.alpha, 0);
    ASSERT_EQ(angles.beta, beta);
    ASSERT_LE(largestDifference(eulerToMatrix(angles), wideMatrix(alpha, beta, chi)), 1e-15);
    // A turn about z before the lock is one about x after it, and stays at the lock.
    const EulerAngles turned = composed(EulerAngles{angle(), 0, 0}, EulerAngles{alpha, beta, chi});
    ASSERT_EQ(turned.alpha, 0);
    ASSERT_EQ(turned.beta, beta);
  }
}

TEST(EulerAngles, AreThoseOfTheNamedAxes) {
  const auto expectAngles = [](const EulerAngles& angles, omReal64 alpha, omReal64 beta, omReal64 chi) {
    EXPECT_DOUBLE_EQ(angles.alpha, alpha);
    EXPECT_DOUBLE_EQ(angles.beta, beta);
    EXPECT_DOUBLE_EQ(angles.chi, chi);
    EXPECT_FALSE(std::signbit(angles.alpha) && angles.alpha == 0);
    EXPECT_FALSE(std::signbit(angles.beta) && angles.beta == 0);
  };
  expectAngles(matrixToEuler({{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}), 0, 0, 0);
  expectAngles(matrixToEuler({{{0, -1, 0}, {1, 0, 0}, {0, 0, 1}}}), s_pi / 2, 0, 0);
  expectAngles(matrixToEuler({{{0, 0, 1}, {0, 1, 0}, {-1, 0, 0}}}), 0, s_pi / 2, 0);
  expectAngles(matrixToEuler({{{1, 0, 0}, {0, 0, -1}, {0, 1, 0}}}), 0, 0, s_pi / 2);
  expectAngles(matrixToEuler({{{-1, -0.0, 0}, {-0.0, -1, 0}, {-0.0, 0, 1}}}), s_pi, 0, 0);
  // Turning about x, then y, then z, each by a right angle: about y alone.
  expectAngles(matrixToEuler(eulerToMatrix(s_pi / 2, s_pi / 2, s_pi / 2)), 0, s_pi / 2, 0);
  const RotationMatrix aboutX = eulerToMatrix(0, 0, 0.3);
  EXPECT_EQ(composed(aboutX, eulerToMatrix(0, 0, 0))[2][1], std::sin(0.3));
}

TEST_F(Rotations, OfQuaternionsTurnPointsAsTheSandwichProduct) {
  for (int count = 0; count < 20000; ++count) {
    std::array<omReal64, 4> q{random.noise(), random.noise(), random.noise(), random.noise()};
    // Every other one close to the lock, w = y and x = -z.
    const omReal64 offset = std::pow(10, random.uniform(-20, -1));
    if (count % 2 == 0) q = {q[0], q[1], q[0] * (1 + offset), -q[1]};
    const auto [w, x, y, z] = q;
    // The columns are q·i·q⁻¹, q·j·q⁻¹, q·k·q⁻¹.
    const Wide W = w, X = x, Y = y, Z = z, n = W * W + X * X + Y * Y + Z * Z;
    const WideMatrix expected{
        {{(W * W + X * X - Y * Y - Z * Z) / n, 2 * (X * Y - W * Z) / n, 2 * (X * Z + W * Y) / n},
         {2 * (X * Y + W * Z) / n, (W * W - X * X + Y * Y - Z * Z) / n, 2 * (Y * Z - W * X) / n},
         {2 * (X * Z - W * Y) / n, 2 * (Y * Z + W * X) / n, (W * W - X * X - Y * Y + Z * Z) / n}}};
    for (const omReal64 length : {1.0, -3.0, 1e-300, 1e300}) {
      RotationMatrix matrix{};
      ASSERT_TRUE(quaternionToMatrix(length * w, length * x, length * y, length * z, matrix));
      ASSERT_LE(largestDifference(matrix, expected), 1e-15);
      EulerAngles angles;
      ASSERT_TRUE(
          quaternionToEuler(length * w, length * x, length * y, length * z, angles.alpha, angles.beta, angles.chi));
      ASSERT_LE(largestDifference(eulerToMatrix(angles), expected), 2e-15);
    }
  }
}

TEST(Quaternion, OfTheLockHasNoAlphaAndThatOfNothingIsRefused) {
  omReal64 alpha = 1, beta = 2, chi = 3;
  const omReal64 inf = support::s_infinity;
  EXPECT_FALSE(quaternionToEuler(0, 0, 0, 0, alpha, beta, chi));
  EXPECT_FALSE(quaternionToEuler(1, 0, support::s_nan, 0, alpha, beta, chi));
  EXPECT_FALSE(quaternionToEuler(1, inf, 0, -inf, alpha, beta, chi));
  EXPECT_TRUE(alpha == 1 && beta == 2 && chi == 3);

  ASSERT_TRUE(quaternionToEuler(0.3, -0.7, 0.3, 0.7, alpha, beta, chi));
  EXPECT_EQ(alpha, 0);
  EXPECT_EQ(beta, s_pi / 2);
  EXPECT_NEAR(chi, 2 * std::atan2(-0.7, 0.3), 1e-15);
  // About (1, 1, 1) by a third of a turn: x goes to y, y to z, z to x.
  RotationMatrix matrix{};
  ASSERT_TRUE(quaternionToMatrix(0.5, 0.5, 0.5, 0.5, matrix));
  EXPECT_EQ(matrix, (RotationMatrix{{{0, 0, 1}, {1, 0, 0}, {0, 1, 0}}}));
  // All but the smallest of the smallest, and all of the largest.
  for (const omReal64 q : {5e-324, std::numeric_limits<omReal64>::max()}) {
    ASSERT_TRUE(quaternionToMatrix(q, q, q, q, matrix));
    EXPECT_EQ(matrix[1][0], 1);
  }
}

}  // namespace
