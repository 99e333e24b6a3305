#include <ORMIXGeometry/ORMIXGeometry.h>

#include "../EstimationSamples.h"
#include "support/LogCapture.h"

namespace {

using namespace estimation;
using namespace ormix::geom;

template <class T>
class SpatialSamples : public ::testing::Test {};
using Scalars = ::testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(SpatialSamples, Scalars);

template <class Point, class T>
void expectSamples() {
  const T largest = NumericLimits<T>::s_max;
  const std::vector<Point> points{{1, 2, 3}, {4, 5, largest}};
  const std::vector<Point> others{{6, 7, 8}, {9, 10, 11}};
  const omReal64 max = static_cast<omReal64>(largest);
  const DataSet single = toDataSet(points);
  ASSERT_EQ(single.size(), 2u);
  EXPECT_EQ(valuesOf(single[0]), (Values{1, 2, 3}));
  EXPECT_EQ(valuesOf(single[1]), (Values{4, 5, max}));
  const DataSet paired = toDataSet(points, others);
  ASSERT_EQ(paired.size(), 2u);
  EXPECT_EQ(valuesOf(paired[1]), (Values{4, 5, max, 9, 10, 11}));
  const Samples samples = toSamples(points, others);
  EXPECT_EQ(samples.view().nbSamples, 2u);
  EXPECT_EQ(samples.view().dimension, 6u);
  EXPECT_EQ(Values(samples.view()[0], samples.view()[0] + 6), (Values{1, 2, 3, 6, 7, 8}));
  const Samples run = toSamples(points);
  EXPECT_EQ(Values(run.view()[0], run.view()[0] + 6), (Values{1, 2, 3, 4, 5, max}));
  EXPECT_EQ(run.isBorrowed(), (std::is_same_v<Point, Point3dData<omReal64>>));
  const std::vector<Point> none;
  EXPECT_TRUE(toDataSet(none).empty());
  EXPECT_TRUE(toSamples(none).view().empty());
}

TYPED_TEST(SpatialSamples, AreTheCoordinates) {
  expectSamples<Point3d<TypeParam>, TypeParam>();
  expectSamples<Point3dData<TypeParam>, TypeParam>();
}

template <class Point>
void expectMismatch() {
  const support::LogCapture log(getORMIXGeometryLoggerName());
  const std::string mismatch = "First collection of points size 3 mismatch with second one size 4";
  const std::vector<Point> three(3);
  const std::vector<Point> four(4);
  const auto expectThrow = [&](const auto& call) {
    try {
      call();
      FAIL() << "nothing was thrown";
    } catch (const ORMIXGeometryException& exception) {
      EXPECT_EQ(exception.getMessage(), mismatch);
    }
  };
  expectThrow([&] { toDataSet(three, four); });
  expectThrow([&] { toSamples(three, four); });
  ASSERT_EQ(log.messages().size(), 2u);
  EXPECT_EQ(log.messages()[0].second, mismatch);
}

TYPED_TEST(SpatialSamples, CollectionsOfUnequalSizesThrow) {
  expectMismatch<Point3d<TypeParam>>();
  expectMismatch<Point3dData<TypeParam>>();
}

TEST(Fit3d, GivesEntitiesFromPoints) {
  // Whole coordinates at the distance 7 from (1, 2, 3).
  std::vector<Point3d<omInt32>> points;
  for (const auto& p : std::vector<Point3d<omInt32>>{{2, 3, 6},
                                                     {3, 6, -2},
                                                     {6, -2, 3},
                                                     {-2, -3, -6},
                                                     {-3, 6, 2},
                                                     {-6, 2, -3},
                                                     {2, -3, 6},
                                                     {3, 6, 2},
                                                     {6, 2, -3},
                                                     {-6, -3, -2},
                                                     {7, 0, 0},
                                                     {0, -7, 0}})
    points.emplace_back(p.getX() + 1, p.getY() + 2, p.getZ() + 3);
  Sphere3d<omReal64> sphere;
  ASSERT_TRUE(fitSphere(toSamples(points), sphere));
  EXPECT_NEAR(sphere.getRadius(), 7, 1e-13);
  EXPECT_NEAR(sphere.centerZ(), 3, 1e-13);
  Ellipsoid3d<omReal64> ellipsoid;
  ASSERT_TRUE(fitEllipsoid(toSamples(points), ellipsoid));
  EXPECT_NEAR(ellipsoid.getMinorRadius(), 7, 1e-12);
  EXPECT_NEAR(ellipsoid.centerY(), 2, 1e-12);
  Plan3d plan;
  ASSERT_TRUE(fitPlan(toSamples(std::vector<Point3d<omReal32>>{{1, 2, -5}, {7, 1, -5}, {3, 9, -5}, {0, 0, -5}}), plan));
  const Point3dData<omReal64> nearest = plan.getNearestPointFromOrigin();
  EXPECT_LE(distance(nearest, {0, 0, -5}), 1e-14);
  EXPECT_FALSE(fitSphere(toSamples(std::vector<Point3d<omReal64>>(5)), sphere));
  EXPECT_NEAR(sphere.getRadius(), 7, 1e-13);
}

TEST(Fit3d, GivesTransformsFromPairs) {
  const std::vector<Point3dData<omReal64>> sources{{1, 2, 0}, {4, 3, 1}, {-2, 5, 7}, {0, -3, 2}, {7, 1, -4}, {3, 3, 9}};
  std::vector<Point3dData<omReal64>> targets;
  // A quarter turn about z, then a shift.
  for (const auto& point : sources) targets.emplace_back(3 - point.getY(), point.getX() - 1, point.getZ() + 2);
  const Samples pairs = toSamples(sources, targets);
  const auto expectImages = [&](const BaseGeometryTransform3d& transform) {
    for (std::size_t i = 0; i < sources.size(); ++i) {
      Point3d<omReal64> image(sources[i]);
      ASSERT_TRUE(transform.applyInSitu(image));
      EXPECT_LE(distance(image.getCoords(), targets[i]), 1e-13);
    }
  };
  for (const bool areApart : {false, true}) {
    RigidTransform3d rigid;
    SimilarityTransform3d similarity;
    TranslationTransform3d translation;
    if (areApart) {
      ASSERT_TRUE(fitRigid(toSamples(sources), toSamples(targets), rigid));
      ASSERT_TRUE(fitSimilarity(toSamples(sources), toSamples(targets), similarity));
      ASSERT_TRUE(fitTranslation(toSamples(sources), toSamples(targets), translation));
    } else {
      ASSERT_TRUE(fitRigid(pairs, rigid));
      ASSERT_TRUE(fitSimilarity(pairs, similarity));
      ASSERT_TRUE(fitTranslation(pairs, translation));
    }
    expectImages(rigid);
    expectImages(similarity);
    Point3d<omReal64> origin;
    ASSERT_TRUE(translation.applyInSitu(origin));
    EXPECT_NEAR(origin.getZ(), 2, 1e-14);
  }
  HomographyTransform3d homography;
  ASSERT_TRUE(fitHomography(pairs, homography));
  expectImages(homography);
}

}  // namespace
