// From points and lines to samples, and from samples to entities and transforms in one call.

#include <ORMIXGeometry/ORMIXGeometry.h>

#include "support/EstimationSamples.h"
#include "support/LogCapture.h"

namespace {

using namespace estimation;
using namespace ormix::geom;

/// A point of coordinates from `first` up; the last one given.
template <class Point, class T>
Point pointFrom(T first, T last) {
  if constexpr (std::is_constructible_v<Point, T, T, T>)
    return Point(first, T(first + 1), last);
  else
    return Point(first, last);
}

template <class Point, class T>
void expectSamples(bool isBorrowed) {
  constexpr std::size_t D = std::is_constructible_v<Point, T, T, T> ? 3 : 2;
  const T largest = NumericLimits<T>::s_max;
  const std::vector<Point> points{pointFrom<Point, T>(1, 7), pointFrom<Point, T>(4, largest)}, none;
  const std::vector<Point> others{pointFrom<Point, T>(20, 22), pointFrom<Point, T>(30, 32)};
  const omReal64 max = static_cast<omReal64>(largest);
  const Values first = D == 2 ? Values{1, 7} : Values{1, 2, 7}, second = D == 2 ? Values{4, max} : Values{4, 5, max};
  Values all = first, pair = second;
  all.insert(all.end(), second.begin(), second.end());
  for (const omReal64 value : D == 2 ? Values{30, 32} : Values{30, 31, 32}) pair.push_back(value);

  ASSERT_EQ(toDataSet(points).size(), 2u);
  EXPECT_EQ(valuesOf(toDataSet(points)[0]), first);
  EXPECT_EQ(valuesOf(toDataSet(points)[1]), second);
  EXPECT_EQ(valuesOf(toDataSet(points, others).at(1)), pair);
  const Samples run = toSamples(points), pairs = toSamples(points, others);
  EXPECT_EQ(Values(run.view().data, run.view().data + 2 * D), all);
  EXPECT_EQ(run.isBorrowed(), isBorrowed);
  EXPECT_EQ(static_cast<const void*>(run.view().data) == points.data(), isBorrowed) << "packed points are not copied";
  EXPECT_TRUE(pairs.view().nbSamples == 2u && pairs.view().dimension == 2 * D);
  const Samples copied(pairs);
  EXPECT_EQ(Values(copied.view()[1], copied.view()[1] + 2 * D), pair);
  EXPECT_TRUE(toDataSet(none).empty() && toSamples(none).view().empty());

  const support::LogCapture log(getORMIXGeometryLoggerName());
  const std::vector<Point> three(3), four(4);
  const std::string mismatch = formatMessage<eEstimationMessage>(eEstimationMessage::eEsM_CollectionSizeMismatch, 3, 4);
  EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { toDataSet(three, four); }), mismatch);
  EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { toSamples(three, four); }), mismatch);
  EXPECT_EQ(log.messages(), (support::LogCapture::Messages{{40000, mismatch}, {40000, mismatch}}));
}

template <class T>
class PointSamples : public ::testing::Test {};
TYPED_TEST_SUITE(PointSamples, support::Scalars);

TYPED_TEST(PointSamples, AreTheCoordinates) {
  constexpr bool isReal64 = std::is_same_v<TypeParam, omReal64>;
  expectSamples<Point2d<TypeParam>, TypeParam>(false);
  expectSamples<Point2dData<TypeParam>, TypeParam>(isReal64);
  expectSamples<Point3d<TypeParam>, TypeParam>(false);
  expectSamples<Point3dData<TypeParam>, TypeParam>(isReal64);
}

TEST(LineSamples, AreThetaAndRho) {
  const std::vector<Line2d> lines{{3, 0.5}, {-1, 2}};
  EXPECT_EQ(valuesOf(toDataSet(lines).at(1)), (Values{2, -1}));
  EXPECT_EQ(toSamples(lines).view()[0][1], 3);
}

TEST(Fit, GivesEntitiesFromPoints) {
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
  EXPECT_FALSE(fitIntersection(toSamples(std::vector<Line2d>{{3, 1}, {2, 1}}), point));
  EXPECT_LE(distance(point, {3, 2}), 1e-15) << "left by the failure";

  // Whole coordinates at the distance 7 from (1, 2, 3).
  std::vector<Point3d<omInt32>> ball;
  for (int signs = 0; signs < 8; ++signs)
    for (const auto& [x, y, z] : {std::array{2, 3, 6}, {3, 6, 2}, {6, 2, 3}})
      ball.emplace_back(1 + (signs & 1 ? x : -x), 2 + (signs & 2 ? y : -y), 3 + (signs & 4 ? z : -z));
  Sphere3d<omReal64> sphere;
  ASSERT_TRUE(fitSphere(toSamples(ball), sphere));
  EXPECT_FALSE(fitSphere(toSamples(std::vector<Point3d<omReal64>>(5)), sphere));
  EXPECT_NEAR(sphere.getRadius(), 7, 1e-13);
  EXPECT_NEAR(sphere.centerZ(), 3, 1e-13);
  Ellipsoid3d<omReal64> ellipsoid;
  ASSERT_TRUE(fitEllipsoid(toSamples(ball), ellipsoid));
  EXPECT_NEAR(ellipsoid.getMinorRadius(), 7, 1e-12);
  EXPECT_NEAR(ellipsoid.centerY(), 2, 1e-12);
  Plan3d plan;
  ASSERT_TRUE(fitPlan(toSamples(std::vector<Point3d<omReal32>>{{1, 2, -5}, {7, 1, -5}, {3, 9, -5}, {0, 0, -5}}), plan));
  EXPECT_LE(distance(plan.getNearestPointFromOrigin(), {0, 0, -5}), 1e-14);
}

TEST(Fits, PredictTheScatterOfShapesWithAnAxis) {
  Random random(35);
  const auto expectScatter = [&](auto entity, const Values& expected, auto at, auto fit) {
    constexpr omReal64 sigma = 0.01;
    constexpr int nbTrials = 60;
    Values squares(expected.size(), 0), variances(expected.size(), 0);
    for (int trial = 0; trial < nbTrials; ++trial) {
      std::vector<Point3dData<omReal64>> points;
      for (int i = 0; i < 40; ++i) {
        const Point3dData<omReal64> p = at(6.2832 * i / 40, random.uniform(0, 1));
        const auto noisy = [&](omReal64 value) { return 1000 + value + sigma * random.noise(); };
        points.emplace_back(noisy(p.getX()), noisy(p.getY()), noisy(p.getZ()));
      }
      FitReport report;
      const BoolResult result = fit(toSamples(points), FitOptions(), entity, report);
      ASSERT_TRUE(result) << result.getMessage();
      ASSERT_EQ(report.params.size(), expected.size());
      ASSERT_EQ(report.residuals.size(), 40u);
      // Either direction of an axis.
      const omReal64 sign = report.params[4] < 0 ? -1 : 1;
      for (std::size_t k = 0; k < expected.size(); ++k) {
        const omReal64 off = (k >= 3 && k < 6 ? sign : 1) * report.params[k] - expected[k] - (k < 3 ? 1000 : 0);
        squares[k] += off * off;
        variances[k] += std::pow(report.standardUncertainty(k), 2);
      }
    }
    // Of 60 trials the sum of squares is within half and twice its mean, but for one in 10⁵.
    for (std::size_t k = 0; k < expected.size(); ++k) {
      const bool isKnown = variances[k] < 1e-10 * nbTrials;
      EXPECT_TRUE(isKnown || (squares[k] > 0.5 * variances[k] && squares[k] < 2 * variances[k]))
          << entity << " parameter " << k << ": " << squares[k] / variances[k];
    }
  };
  using P = Point3dData<omReal64>;
  expectScatter(
      Circle3d<omReal64>(), {1, 2, 3, 0, 1, 0, 5},
      [](omReal64 u, omReal64) { return P(1 + 5 * std::cos(u), 2, 3 + 5 * std::sin(u)); },
      [](auto&&... x) { return fitCircle(x...); });
  expectScatter(
      Torus3d<omReal64>(), {1, 2, 3, 0, 1, 0, 5, 2},
      [](omReal64 u, omReal64 v) {
        const omReal64 rho = 5 + 2 * std::cos(7 * v);
        return P(1 + rho * std::cos(u), 2 + 2 * std::sin(7 * v), 3 + rho * std::sin(u));
      },
      [](auto&&... x) { return fitTorus(x...); });
  expectScatter(
      Cone3d<omReal64>(), {1, 2, 3, 0, 1, 0, std::atan(0.5)},
      [](omReal64 u, omReal64 v) { return P(1 + (1 + v) * std::cos(u), 4 + 2 * v, 3 + (1 + v) * std::sin(u)); },
      [](auto&&... x) { return fitCone(x...); });
}

TEST(Fits, FindTheEntityWhoseSurfaceIsSampledAndWhereItEnds) {
  Random random(34);
  const auto expectFitted = [&](const auto& entity, auto fit) {
    // The nearest points of the surface to places around it, and the ends of the axis where there are any.
    using Entity = std::decay_t<decltype(entity)>;
    std::vector<Point3dData<omReal64>> points;
    for (int i = 0; i < 400; ++i) {
      const omReal64 u = random.uniform(0, 6.3), v = i < 20 ? i % 2 : random.uniform(0, 1), c = std::cos(u),
                     s = std::sin(u);
      if constexpr (std::is_same_v<Entity, Cylinder3d<omReal64>>)
        points.emplace_back(1 + 3 * c, 2 + 6 * v, 3 + 3 * s);
      else if constexpr (std::is_same_v<Entity, Cone3d<omReal64>>)
        points.emplace_back(1 + (2 + 2 * v) * c, 2 + 6 * v, 3 + (2 + 2 * v) * s);
      else if constexpr (std::is_same_v<Entity, Torus3d<omReal64>>)
        points.emplace_back(1 + (5 + 2 * std::cos(9 * v)) * c, 2 + 2 * std::sin(9 * v),
                            3 + (5 + 2 * std::cos(9 * v)) * s);
      else if constexpr (std::is_same_v<Entity, Circle3d<omReal64>>)
        points.emplace_back(1 + 5 * c, 2, 3 + 5 * s);
      else
        points.emplace_back(1 + 3 * v, 2 - v, 3 + 7 * v);
    }
    Entity found;
    const BoolResult result = fit(toSamples(points), found);
    ASSERT_TRUE(result) << result.getMessage();
    for (int i = 0; i < 50; ++i) {
      const Point3d<omReal64> p(random.uniform(-9, 9), random.uniform(-9, 9), random.uniform(-9, 9));
      EXPECT_NEAR(distance(found, p), distance(entity, p), 1e-9) << found;
    }
    const std::string before = support::printed(found);
    points.assign(20, {1, 2, 3});
    const BoolResult refused = fit(toSamples(points), found);
    EXPECT_NE(std::string(refused.getMessage()).find("to the samples (eEC_Coincident): "), std::string::npos)
        << refused.getMessage();
    EXPECT_EQ(support::printed(found), before);
  };
  expectFitted(Cylinder3d<omReal64>({1, 2, 3}, {1, 8, 3}, 3), [](auto&&... x) { return fitCylinder(x...); });
  expectFitted(Cone3d<omReal64>({1, 2, 3}, {1, 8, 3}, 2, 4), [](auto&&... x) { return fitCone(x...); });
  expectFitted(Torus3d<omReal64>({1, 2, 3}, {0, 1, 0}, 5, 2), [](auto&&... x) { return fitTorus(x...); });
  expectFitted(Circle3d<omReal64>({1, 2, 3}, {0, 1, 0}, 5), [](auto&&... x) { return fitCircle(x...); });
  expectFitted(Line3d({1, 2, 3}, {3, -1, 7}), [](auto&&... x) { return fitLine(x...); });
  FitReport report;
  FitOptions options;
  options.sigma = -1;
  Torus3d<omReal64> torus;
  EXPECT_FALSE(fitTorus(toSamples(std::vector<Point3d<omReal64>>(9)), options, torus, report));
  EXPECT_EQ(report.status.code, eEC_InvalidInput);
  std::vector<Point2dData<omReal64>> points;
  const Arc2d<omReal64> arc({4, -3}, 20, -2, 1.25);
  for (int i = 0; i <= 90; ++i) points.push_back(arc.pointAt(i / 90.0));
  Arc2d<omReal64> found;
  ASSERT_TRUE(fitArc(toSamples(points), found));
  points[20] = {90, 70};  // an outlier beyond the arc
  Arc2d<omReal64> robust;
  RobustOptions robustOptions;
  robustOptions.threshold = 0.01;
  options = FitOptions();
  options.robust = &robustOptions;
  ASSERT_TRUE(fitArc(toSamples(points), options, robust, report));
  EXPECT_EQ(report.inliers[20], false);
  EXPECT_LE(report.standardUncertainty(2), 1e-9);
  EXPECT_NEAR(distance(robust.pointAt(1), arc.pointAt(1)), 0, 1e-9) << robust;
  for (const omReal64 share : {0.0, 0.4, 1.0})
    EXPECT_NEAR(distance(found.pointAt(share), arc.pointAt(share)), 0, 1e-10) << found;
}

template <class Point, class... Transforms>
void expectImages(const std::vector<Point>& sources, const std::vector<Point>& targets,
                  const Transforms&... transforms) {
  const auto expect = [&](const auto& transform) {
    for (std::size_t i = 0; i < sources.size(); ++i) {
      Point image = sources[i];
      ASSERT_TRUE(transform.applyInSitu(image));
      EXPECT_LE(distance(image, targets[i]), 1e-13);
    }
  };
  (expect(transforms), ...);
}

// A quarter turn about z, then a shift.
TEST(Fit, GivesTransformsFromPairs) {
  const std::vector<Point3d<omReal64>> sources{{1, 2, 0}, {4, 3, 1}, {-2, 5, 7}, {0, -3, 2}, {7, 1, -4}, {3, 3, 9}};
  std::vector<Point3d<omReal64>> targets;
  std::vector<Point2d<omReal64>> flatSources, flatTargets;
  for (const auto& p : sources) {
    targets.emplace_back(3 - p.getY(), p.getX() - 1, p.getZ() + 2);
    flatSources.emplace_back(p.getX(), p.getY());
    flatTargets.emplace_back(3 - p.getY(), p.getX() - 1);
  }
  RigidTransform2d rigid2d;
  SimilarityTransform2d similarity2d;
  HomographyTransform2d homography2d;
  TranslationTransform2d translation2d;
  const Samples flat = toSamples(flatSources, flatTargets);
  ASSERT_TRUE(fitRigid(flat, rigid2d) && fitSimilarity(flat, similarity2d) && fitHomography(flat, homography2d));
  expectImages(flatSources, flatTargets, rigid2d, similarity2d, homography2d);
  ASSERT_TRUE(fitTranslation(toSamples(flatSources, flatSources), translation2d));
  expectImages(flatSources, flatSources, translation2d);

  RigidTransform3d rigid, rigidApart;
  SimilarityTransform3d similarity, similarityApart;
  HomographyTransform3d homography;
  TranslationTransform3d translation, translationApart;
  const Samples pairs = toSamples(sources, targets), from = toSamples(sources), to = toSamples(targets);
  ASSERT_TRUE(fitRigid(pairs, rigid) && fitSimilarity(pairs, similarity) && fitHomography(pairs, homography));
  ASSERT_TRUE(fitRigid(from, to, rigidApart) && fitSimilarity(from, to, similarityApart));
  expectImages(sources, targets, rigid, similarity, homography, rigidApart, similarityApart);
  ASSERT_TRUE(fitTranslation(toSamples(sources, sources), translation) && fitTranslation(from, from, translationApart));
  expectImages(sources, sources, translation, translationApart);
}

}  // namespace
