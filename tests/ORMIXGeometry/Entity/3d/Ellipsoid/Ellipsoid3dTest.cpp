#include <ORMIXGeometry/Entity/3d/Ellipsoid/Ellipsoid3d.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>

#include "support/ArchivedCopy.h"

namespace ormix::geom {
namespace {

constexpr omReal64 s_pi = 3.141592653589793;

template <class T>
class Ellipsoid3dTest : public testing::Test {};
using Scalars = testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(Ellipsoid3dTest, Scalars);

void expectMatrix(const Matrix3x3& matrix, const omReal64 (&rows)[3][3]) {
  for (std::size_t row = 0; row < 3; ++row)
    for (std::size_t column = 0; column < 3; ++column)
      EXPECT_NEAR(matrix(row, column), rows[row][column], 1e-15) << row << ' ' << column;
}

TYPED_TEST(Ellipsoid3dTest, AccessorsAndPrint) {
  using T = TypeParam;
  Ellipsoid3d<T> ellipsoid(1, 2, 3, 6, 5, 4, 0.25, 0.5, 0.75);
  const char* printed = "[center=[1, 2, 3], a=6, b=5, c=4, chi=0.75, beta=0.5, alpha=0.25]";
  std::ostringstream text;
  text << ellipsoid;
  EXPECT_EQ(text.str(), printed);
  ellipsoid.setCoords(9, 9, 9, 9, 9, 9, 9, 9, 9);
  ellipsoid.setCenter(Point3d<T>(1, 2, 3));
  ellipsoid.setMajorRadius(6);
  ellipsoid.setMediumRadius(5);
  ellipsoid.setMinorRadius(4);
  ellipsoid.setOrientation(0.25, 0.5, 0.75);
  text.str("");
  text << ellipsoid;
  EXPECT_EQ(text.str(), printed);
  EXPECT_EQ(ellipsoid.centerZ(), T(3));
  EXPECT_TRUE(compare(ellipsoid, Ellipsoid3d<T>({1, 2, 3}, 6, 5, 4, 0.25, 0.5, 0.75), T(0), 0.0));
}

TYPED_TEST(Ellipsoid3dTest, SurfaceIsThatOfTheQuadric) {
  using T = TypeParam;
  const Ellipsoid3d<T> ellipsoid(10, 20, 30, 6, 5, 4, 0.25, 0.5, 0.75);
  const Matrix3x3& matrix = ellipsoid.getMatRot();
  const unsigned seed = 8;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 draw(seed);
  std::uniform_real_distribution<omReal64> angle(-4, 4);
  for (int i = 0; i < 200; ++i) {
    const omReal64 theta = angle(draw);
    const omReal64 phi = angle(draw);
    const auto offset = ellipsoid.boundaryPoint(theta, phi) - Point3dData<omReal64>(10, 20, 30);
    const omReal64 radii[] = {6, 5, 4};
    omReal64 sum = 0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const omReal64 along =
          matrix(0, axis) * offset.getX() + matrix(1, axis) * offset.getY() + matrix(2, axis) * offset.getZ();
      sum += along * along / (radii[axis] * radii[axis]);
    }
    ASSERT_NEAR(sum, 1, 1e-13) << theta << ' ' << phi;
    ASSERT_NEAR(offset.normL2(), ellipsoid.radius(theta, phi), 1e-13) << theta << ' ' << phi;
  }
  EXPECT_DOUBLE_EQ(ellipsoid.volume(), 160 * s_pi);
  EXPECT_DOUBLE_EQ(ellipsoid.excentricity(), std::sqrt(20.0) / 6);
  EXPECT_DOUBLE_EQ((Ellipsoid3d<T>(0, 0, 0, 3, 3, 3, 1, 1, 1).area()), 36 * s_pi);
}

TEST(Ellipsoid3d, OrientationIsChiThenBetaThenAlpha) {
  Ellipsoid3d<omReal64> ellipsoid;
  expectMatrix(ellipsoid.getMatRot(), {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
  ellipsoid.setOrientation(s_pi / 2, 0, 0);
  expectMatrix(ellipsoid.getMatRot(), {{0, -1, 0}, {1, 0, 0}, {0, 0, 1}});
  ellipsoid.setOrientation(0, s_pi / 2, 0);
  expectMatrix(ellipsoid.getMatRot(), {{0, 0, 1}, {0, 1, 0}, {-1, 0, 0}});
  ellipsoid.setOrientation(0, 0, s_pi / 2);
  expectMatrix(ellipsoid.getMatRot(), {{1, 0, 0}, {0, 0, -1}, {0, 1, 0}});
  // z goes to -y by chi, and that to x by alpha.
  ellipsoid.setOrientation(s_pi / 2, 0, s_pi / 2);
  expectMatrix(ellipsoid.getMatRot(), {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}});
}

TEST(Ellipsoid3d, ComparesEachFieldWithItsTolerance) {
  const Ellipsoid3d<omReal64> ellipsoid(1, 2, 3, 6, 5, 4, 0.25, 0.5, 0.75);
  const auto differs = [&ellipsoid](omReal64 z, omReal64 a, omReal64 b, omReal64 c, omReal64 alpha, omReal64 beta,
                                    omReal64 chi) {
    return !compare(ellipsoid,
                    Ellipsoid3d<omReal64>(1, 2, 3 + z, 6 + a, 5 + b, 4 + c, 0.25 + alpha, 0.5 + beta, 0.75 + chi), 0.5,
                    0.125);
  };
  EXPECT_FALSE(differs(0.5, -0.5, 0.5, -0.5, 0.125, -0.125, 0.125));
  EXPECT_TRUE(differs(0.75, 0, 0, 0, 0, 0, 0));
  EXPECT_TRUE(differs(0, 0.75, 0, 0, 0, 0, 0));
  EXPECT_TRUE(differs(0, 0, 0.75, 0, 0, 0, 0));
  EXPECT_TRUE(differs(0, 0, 0, 0.75, 0, 0, 0));
  EXPECT_TRUE(differs(0, 0, 0, 0, 0.25, 0, 0));
  EXPECT_TRUE(differs(0, 0, 0, 0, 0, 0.25, 0));
  EXPECT_TRUE(differs(0, 0, 0, 0, 0, 0, 0.25));
}

TEST(Ellipsoid3d, CopiesAndArchivesKeepTheMatrix) {
  const Ellipsoid3d<omReal64> ellipsoid(1, 2, 3, 6, 5, 4, 0.25, 0.5, 0.75);
  Ellipsoid3d<omReal64> copied;
  copied.copy(ellipsoid);
  for (const auto& copy : {copied, archivedCopy(ellipsoid)})
    EXPECT_EQ(copy.boundaryPoint(0.5, 1), ellipsoid.boundaryPoint(0.5, 1));
}

}  // namespace
}  // namespace ormix::geom
