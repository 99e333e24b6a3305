#include <ORMIXGeometry/Entity/2d/Ellipse/Ellipse2d.h>
#include <ORMIXGeometry/Estimation/2d/ErrorEllipse.h>
#include <ORMIXGeometry/Estimation/FitReport.h>
#include <gtest/gtest.h>

#include <cmath>

#include "support/Random.h"

namespace {

using namespace ormix;
using namespace ormix::geom;

FitReport reportOf(omReal64 xx, omReal64 xy, omReal64 yy) {
  FitResult result;
  result.params = {3, 10, -20};
  result.covariance = {1, 0, 0, 0, xx, xy, 0, xy, yy};
  return {"Circle2d", {"radius", "center x", "center y"}, result};
}

TEST(ErrorEllipse, EveryPointOfTheBoundaryIsEquallyUnlikely) {
  support::Random random(18);
  for (int trial = 0; trial < 200; ++trial) {
    const omReal64 a = random.uniform(), b = random.uniform(), c = random.uniform(0.01, 1);
    const omReal64 xx = a * a, xy = a * b, yy = b * b + c * c;
    const omReal64 probability = random.uniform(0.1, 0.99);
    Ellipse2d<omReal64> ellipse;
    ASSERT_TRUE(errorEllipse(reportOf(xx, xy, yy), 1, 2, probability, ellipse));
    for (const omReal64 angle : {0.0, 1.0, 2.0, 4.0, 5.5}) {
      const Point2dData<omReal64> point = ellipse.boundaryPoint(angle);
      const omReal64 x = point.getX() - 10, y = point.getY() + 20;
      const omReal64 unlikeliness = (x * x * yy - 2 * x * y * xy + y * y * xx) / (xx * yy - xy * xy);
      EXPECT_NEAR(std::exp(-unlikeliness / 2), 1 - probability, 1e-9);
    }
  }
}

TEST(ErrorEllipse, RefusesWhatHasNoRegionAndLeavesTheEllipse) {
  const Ellipse2d<omReal64> before({1, 2}, 4, 3, 0.5);
  Ellipse2d<omReal64> ellipse = before;
  const FitReport report = reportOf(1, 0, 1);
  EXPECT_FALSE(errorEllipse(report, 1, 3, 0.9, ellipse));
  EXPECT_FALSE(errorEllipse(report, 1, 1, 0.9, ellipse));
  for (const omReal64 probability : {0.0, 1.0, -1.0, std::nan("")})
    EXPECT_FALSE(errorEllipse(report, 1, 2, probability, ellipse)) << probability;
  EXPECT_FALSE(errorEllipse(reportOf(1, std::nan(""), 1), 1, 2, 0.9, ellipse));
  EXPECT_EQ(ellipse.center(), before.center());
  EXPECT_EQ(ellipse.getMajorRadius(), before.getMajorRadius());
  EXPECT_EQ(ellipse.getTheta(), before.getTheta());
}

}  // namespace
