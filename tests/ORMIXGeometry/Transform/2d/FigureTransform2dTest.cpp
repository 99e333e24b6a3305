#include <ORMIXGeometry/ORMIXGeometry.h>

#include "support/Random.h"
#include "support/SampleObjects.h"

namespace {

using namespace samples;
using support::s_infinity;
constexpr omReal64 s_piValue = 3.141592653589793;

// Boundary points of the image are images of boundary points: whatever the fields say, the entity is the image.
TEST(FigureTransform2d, MapsRoundAndRectangularFigures) {
  support::Random random(20211);
  const auto number = [&random] { return random.uniform(-10, 10); };
  for (int count = 0; count < 50; ++count) {
    const Similarity2d map(number(), number(), number(), number());
    const Point2dData<omReal64> center(number(), number());
    const auto mapped = [&map](const Point2dData<omReal64>& point) {
      omReal64 x = 0, y = 0;
      EXPECT_TRUE(map.apply(point.getX(), point.getY(), x, y));
      return Point2dData<omReal64>(x, y);
    };
    const Ellipse2d<omReal64> ellipse(center, 5, 3, number());
    const Rectangle2d<omReal64> rectangle(center, 4, 2, number());
    Ellipse2d<omReal64> ellipseImage = ellipse;
    Rectangle2d<omReal64> rectangleImage = rectangle;
    ASSERT_TRUE(SimilarityTransform2d(map).applyInSitu(ellipseImage));
    ASSERT_TRUE(SimilarityTransform2d(map).applyInSitu(rectangleImage));
    for (omReal64 angle = 0; angle < 6.3; angle += 0.7) {
      const Point2dData<omReal64> image = mapped(ellipse.boundaryPoint(angle));
      EXPECT_TRUE(compare(ellipseImage.boundaryPoint(angle), image, 1e-12) ||
                  compare(ellipseImage.boundaryPoint(angle + s_piValue), image, 1e-12));
    }
    // A negative scale turns the rectangle by half a turn through its half sizes already.
    const Point2dData<omReal64> corner = mapped(rectangle.topLeftCorner());
    EXPECT_TRUE(compare(rectangleImage.topLeftCorner(), corner, 1e-12) ||
                compare(rectangleImage.bottomRightCorner(), corner, 1e-12));
    EXPECT_NEAR(std::abs(rectangleImage.getHalfLength()), 4 * std::abs(map.getScale()), 1e-12);
  }
}

TEST(FigureTransform2d, RoundsOnceAndKeepsTheSignOfScaledRadii) {
  Point2d<omInt32> point(3, 0);
  ASSERT_TRUE(ScaleTransform2d(0.5).applyInSitu(point));
  EXPECT_EQ(point, Point2d<omInt32>(2, 0));
  Point2d<omUInt32> below(3, 4);
  ASSERT_TRUE(TranslationTransform2d(-10, 0).applyInSitu(below));
  EXPECT_EQ(below, Point2d<omUInt32>(0, 4));
  Circle2d<omInt32> circle({1, 1}, 3);
  ASSERT_TRUE(ScaleTransform2d(-1.5).applyInSitu(circle));
  EXPECT_EQ(circle.getRadius(), -5);
}

// Lines are shifted by their direction too, as vectors are: stored results rely on it.
TEST(FigureTransform2d, ShiftsTheDirectionOfLines) {
  Line2d line(2, 0);
  ASSERT_TRUE(TranslationTransform2d(1, 0).applyInSitu(line));
  Line2d expected;
  Vector2d direction;
  direction.setCoords(Point2dData<omReal64>(1, 1));
  expected.setCoords(Point2dData<omReal64>(3, 0), direction);
  EXPECT_NEAR(line.getRho(), expected.getRho(), 1e-14);
  EXPECT_NEAR(line.getTheta(), expected.getTheta(), 1e-14);
}

TEST(FigureTransform2d, MakesAnEllipseOfACircleByAnAnisotropicScale) {
  const Circle2d<omReal64> circle({1, 2}, 3);
  const auto image = [&circle](omReal64 sx, omReal64 sy) {
    return describe(AnisotropicScaleTransform2d::anisotropicScale(circle, sx, sy));
  };
  EXPECT_EQ(image(4, 2), describe(Ellipse2d<omReal64>({4, 4}, 12, 6, 0)));
  EXPECT_EQ(image(2, 4), describe(Ellipse2d<omReal64>({2, 8}, 12, 6, s_piValue / 2)));
  // The tie goes to pi/2.
  EXPECT_EQ(image(2, 2), describe(Ellipse2d<omReal64>({2, 4}, 6, 6, s_piValue / 2)));
  EXPECT_THROW(image(s_infinity, 1), ORMIXGeometryException);
}

TEST(FigureTransform2d, ChangesNothingWhereAnAngleHasNoImage) {
  for (const omReal64 bad : {s_infinity, std::nan("")}) {
    Square2d<omReal64> square({1, 2}, 3, bad);
    EXPECT_FALSE(RotationTransform2d(0.5).applyInSitu(square));
    EXPECT_EQ(square.center(), Point2dData<omReal64>(1, 2));
  }
  Point2d<omReal32> large(3e38f, 0);
  EXPECT_FALSE(ScaleTransform2d(2).applyInSitu(large));
  EXPECT_EQ(large, Point2d<omReal32>(3e38f, 0));
}

}  // namespace
