#include <ORMIXGeometry/ORMIXGeometry.h>

#include "../EstimationSamples.h"
#include "support/LogCapture.h"

namespace {

using namespace estimation;
using namespace ormix::geom;

const std::string s_mismatch = "First collection of points size 3 mismatch with second one size 4";

template <class T>
class PlanarSamples : public ::testing::Test {};
using Scalars = ::testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(PlanarSamples, Scalars);

template <class T>
T largest() {
  return NumericLimits<T>::s_max;
}

template <class Point, class T>
void expectSamples() {
  const std::vector<Point> points{{1, 2}, {3, largest<T>()}};
  const std::vector<Point> others{{5, 6}, {7, 8}};
  const omReal64 max = static_cast<omReal64>(largest<T>());
  const DataSet single = toDataSet(points);
  ASSERT_EQ(single.size(), 2u);
  EXPECT_EQ(valuesOf(single[0]), (Values{1, 2}));
  EXPECT_EQ(valuesOf(single[1]), (Values{3, max}));
  const DataSet paired = toDataSet(points, others);
  ASSERT_EQ(paired.size(), 2u);
  EXPECT_EQ(valuesOf(paired[1]), (Values{3, max, 7, 8}));
  const Samples samples = toSamples(points, others);
  EXPECT_EQ(samples.view().nbSamples, 2u);
  EXPECT_EQ(samples.view().dimension, 4u);
  EXPECT_EQ(Values(samples.view()[1], samples.view()[1] + 4), (Values{3, max, 7, 8}));
  const Samples run = toSamples(points);
  EXPECT_EQ(Values(run.view()[0], run.view()[0] + 4), (Values{1, 2, 3, max}));
  EXPECT_EQ(run.isBorrowed(), (std::is_same_v<Point, Point2dData<omReal64>>));
  EXPECT_TRUE(toDataSet(std::vector<Point>{}).empty());
  const std::vector<Point> none;
  EXPECT_TRUE(toSamples(none).view().empty());
}

TYPED_TEST(PlanarSamples, AreTheCoordinates) {
  expectSamples<Point2d<TypeParam>, TypeParam>();
  expectSamples<Point2dData<TypeParam>, TypeParam>();
}

TYPED_TEST(PlanarSamples, CollectionsOfUnequalSizesThrow) {
  const support::LogCapture log(getORMIXGeometryLoggerName());
  const std::vector<Point2d<TypeParam>> three(3);
  const std::vector<Point2d<TypeParam>> four(4);
  const std::vector<Point2dData<TypeParam>> threeData(3);
  const std::vector<Point2dData<TypeParam>> fourData(4);
  const auto expectThrow = [](const auto& call) {
    try {
      call();
      FAIL() << "nothing was thrown";
    } catch (const ORMIXGeometryException& exception) {
      EXPECT_EQ(exception.getMessage(), s_mismatch);
    }
  };
  expectThrow([&] { toDataSet(three, four); });
  expectThrow([&] { toDataSet(threeData, fourData); });
  expectThrow([&] { toSamples(three, four); });
  expectThrow([&] { toSamples(threeData, fourData); });
  ASSERT_EQ(log.messages().size(), 4u);
  EXPECT_EQ(log.messages()[0].second, s_mismatch);
}

TEST(PlanarSamples, OfLinesAreThetaAndRho) {
  const std::vector<Line2d> lines{{3, 0.5}, {-1, 2}};
  const DataSet dataSet = toDataSet(lines);
  ASSERT_EQ(dataSet.size(), 2u);
  EXPECT_EQ(valuesOf(dataSet[1]), (Values{2, -1}));
  EXPECT_EQ(toSamples(lines).view()[0][1], 3);
}

TEST(PlanarSamples, OfPackedPointsAreNotCopied) {
  const std::vector<Point2dData<omReal64>> points{{1, 2}, {3, 4}};
  const Samples samples = toSamples(points);
  EXPECT_EQ(static_cast<const void*>(samples.view().data), static_cast<const void*>(points.data()));
  const Samples copied = toSamples(std::vector<Point2d<omReal64>>{{1, 2}});
  const Samples moved = Samples(copied);
  EXPECT_EQ(moved.view()[0][1], 2);
}

TEST(Fit2d, GivesEntitiesFromPoints) {
  const std::vector<Point2d<omInt32>> points{{5, 0}, {3, 4}, {0, 5}, {-4, 3}, {-3, -4}, {4, -3}};
  Circle2d<omReal64> circle;
  ASSERT_TRUE(fitCircle(toSamples(points), circle));
  EXPECT_NEAR(circle.getRadius(), 5, 1e-14);
  Ellipse2d<omReal64> ellipse;
  ASSERT_TRUE(fitEllipse(toSamples(points), ellipse));
  EXPECT_NEAR(ellipse.getMinorRadius(), 5, 1e-13);
  Line2d line;
  ASSERT_TRUE(fitLine(toSamples(std::vector<Point2d<omReal32>>{{0, -2}, {5, -2}, {9, -2}}), line));
  EXPECT_NEAR(line.getRho(), 2, 1e-15);
  EXPECT_NEAR(line.getSinTheta(), -1, 1e-15);
  Point2d<omReal64> point;
  ASSERT_TRUE(fitIntersection(toSamples(std::vector<Line2d>{{3, 0}, {2, 1.5707963267948966}}), point));
  EXPECT_NEAR(point.getX(), 3, 1e-15);
  EXPECT_NEAR(point.getY(), 2, 1e-15);
  EXPECT_FALSE(fitIntersection(toSamples(std::vector<Line2d>{{3, 1}, {2, 1}}), point));
  EXPECT_NEAR(point.getX(), 3, 1e-15);
}

TEST(Fit2d, GivesTransformsFromPairs) {
  const std::vector<Point2d<omReal64>> sources{{1, 2}, {4, 3}, {-2, 5}, {0, -3}, {7, 1}};
  std::vector<Point2d<omReal64>> targets;
  for (const auto& point : sources) targets.emplace_back(3 - point.getY(), point.getX() - 1);
  const Samples pairs = toSamples(sources, targets);
  RigidTransform2d rigid;
  SimilarityTransform2d similarity;
  HomographyTransform2d homography;
  ASSERT_TRUE(fitRigid(pairs, rigid));
  ASSERT_TRUE(fitSimilarity(pairs, similarity));
  ASSERT_TRUE(fitHomography(pairs, homography));
  for (const BaseGeometryTransform2d* transform :
       {static_cast<const BaseGeometryTransform2d*>(&rigid), static_cast<const BaseGeometryTransform2d*>(&similarity),
        static_cast<const BaseGeometryTransform2d*>(&homography)})
    for (std::size_t i = 0; i < sources.size(); ++i) {
      Point2d<omReal64> image = sources[i];
      ASSERT_TRUE(transform->applyInSitu(image));
      EXPECT_LE(distance(image, targets[i]), 1e-13);
    }
  TranslationTransform2d translation;
  ASSERT_TRUE(fitTranslation(toSamples(sources, sources), translation));
}

}  // namespace
