#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <sstream>

#include "ORMIXGeometry/Transform/LinearTransformChecks.h"

namespace {

using namespace transforms;

constexpr omReal64 s_infinity = std::numeric_limits<omReal64>::infinity();
constexpr omReal64 s_piValue = 3.141592653589793;

const TranslationTransform2d s_translation(3, 5);
const RotationTransform2d s_rotation(0.5);
const RigidTransform2d s_rigid(0.5, 30, 5);
const ScaleTransform2d s_scale(2);
const SimilarityTransform2d s_similarity(2, 0.5, 30, 5);
const AnisotropicScaleTransform2d s_anisotropic(2, 3);
const HomographyTransform2d s_homography(matrix({1, 0.25, 3, 0.5, 2, 5, 0.001, 0.002, 1}));

const std::array<const BaseGeometryTransform2d*, 7> s_transforms{&s_translation, &s_rotation,    &s_rigid,     &s_scale,
                                                                 &s_similarity,  &s_anisotropic, &s_homography};

/// In place and, after the bar, as a copy: which of the seven transforms, in this order, accept the class.
const std::map<std::string, std::string> s_support{
    {"Point2d", "1111111|1111111"},     {"Vector2d", "1111111|1111111"},  {"BoundingBox2d", "1001010|1001010"},
    {"Segment2d", "1111111|1111111"},   {"Line2d", "1110000|1110000"},    {"Circle2d", "1111100|1111110"},
    {"Ellipse2d", "1111100|1111100"},   {"Square2d", "1111100|1111100"},  {"Rectangle2d", "1111100|1111100"},
    {"Parabola2d", "1110000|1110000"},  {"Polygon2d", "1111111|1111111"}, {"PolygonWithHoles2d", "1111111|1111111"},
    {"PointCloud2d", "1111111|1111111"}};

class LinearTransformSupport : public ::testing::TestWithParam<ClassCase> {};
INSTANTIATE_TEST_SUITE_P(, LinearTransformSupport, ::testing::ValuesIn(classCases(AllEntities2d())));

TEST_P(LinearTransformSupport, IsWhatTheTableSays) {
  const std::string space = "ormix::geom::";
  const std::string name = GetParam().name.substr(space.size(), GetParam().name.find('<') - space.size());
  EXPECT_EQ(supportOf(GetParam(), s_transforms), s_support.at(name));
}

/// Points enough for several blocks and a part of one; from `bad` on, where it is there, points of no image.
template <class T>
std::vector<Point2dData<T>> manyPoints(std::size_t bad = 700) {
  std::vector<Point2dData<T>> points;
  for (std::size_t index = 0; index < 700; ++index)
    points.emplace_back(static_cast<T>(3 * index % 251), static_cast<T>(index));
  for (std::size_t index = bad; index < points.size(); index += 40) points[index].setX(1000);
  return points;
}

/// A cloud, a polygon and a tree of polygons with islands, the points at the end of each.
template <class T>
GeometryEntity2dPtrColl entitiesOfRuns(const std::vector<Point2dData<T>>& points) {
  const auto polygon = boost::make_shared<Polygon2d<T>>();
  polygon->setPolygon2dType(eP2DT_Interior);
  polygon->getPointColl() = points;
  const auto tree = boost::make_shared<PolygonWithHoles2d<T>>(Sample<PolygonWithHoles2d<T>>::make());
  tree->getPolygonHoles()[0]->getPolygonHoles()[0]->getExteriorPolygon() = *polygon;
  tree->getPolygonHoles().insert(tree->getPolygonHoles().begin(), nullptr);
  // Named after the island above, which is visited first.
  tree->getPolygonHoles().back()->getExteriorPolygon().getPointColl().push_back({points.back().getX(), 9999});
  return {boost::make_shared<PointCloud2d<T>>(points), polygon, tree};
}

template <class T>
std::string printed(const BaseGeometryEntity2d& entity) {
  std::ostringstream stream;
  stream.precision(17);
  if (const auto* cloud = dynamic_cast<const PointCloud2d<T>*>(&entity)) stream << *cloud;
  if (const auto* polygon = dynamic_cast<const Polygon2d<T>*>(&entity))
    stream << toString(polygon->getPolygon2dType()) << *polygon;
  if (const auto* tree = dynamic_cast<const PolygonWithHoles2d<T>*>(&entity)) stream << *tree;
  return stream.str();
}

template <class T>
class ImageOfRuns : public ::testing::Test {};
using ScalarTypes = ::testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(ImageOfRuns, ScalarTypes, );

TYPED_TEST(ImageOfRuns, IsTheEntityTransformedInPlace) {
  for (const GeometryEntity2dPtr& entity : entitiesOfRuns(manyPoints<TypeParam>()))
    expectImagesAreThoseInPlace(*entity, s_transforms, printed<TypeParam>);
}

TYPED_TEST(ImageOfRuns, IsNoneAndIsLoggedAsInPlaceWhereAPointHasNone) {
  const HomographyTransform2d homography(matrix({1, 0, 0, 0, 1, 0, -1, 0, 1000}));
  for (const std::size_t bad : {0, 255, 256, 511, 512, 699})
    for (const GeometryEntity2dPtr& entity : entitiesOfRuns(manyPoints<TypeParam>(bad)))
      expectNoImage(homography, *entity, printed<TypeParam>,
                    "Failed to apply eT2DT_HomographyTransform transformation on point 2d with coordinates "
                    "{1000.000000, " +
                        std::to_string(bad) + ".000000}");
}

/// A class of its own is copied as it says.
struct NamedCloud : PointCloud2d<omReal64> {
  boost::shared_ptr<BaseDynamicObject> duplicateShared() const override {
    return boost::make_shared<NamedCloud>(*this);
  }
  std::string name;
};

TEST(ImageOfEntities, OfADerivedClassAndOfATreeKeepsWhatBelongsToThem) {
  NamedCloud cloud;
  cloud.name = "left camera";
  cloud.push_back({1, 2});
  const auto image = boost::dynamic_pointer_cast<NamedCloud>(s_scale.apply(cloud));
  ASSERT_TRUE(image);
  EXPECT_EQ(image->name, cloud.name);
  EXPECT_EQ(image->getCollection()[0], Point2dData<omReal64>(2, 4));

  const auto tree = boost::dynamic_pointer_cast<PolygonWithHoles2d<omReal64>>(
      s_scale.apply(Sample<PolygonWithHoles2d<omReal64>>::make()));
  ASSERT_TRUE(tree);
  const auto& hole = tree->getPolygonHoles()[0];
  EXPECT_FALSE(tree->getParent());
  EXPECT_EQ(hole->getParent(), tree);
  EXPECT_EQ(hole->getPolygonHoles()[0]->getParent(), hole);
}

// Boundary points of the image are images of boundary points: whatever the fields say, the entity is the image.
TEST(LinearTransformImage, OfRoundAndRectangularEntities) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  std::uniform_real_distribution<omReal64> number(-10, 10);
  for (int count = 0; count < 50; ++count) {
    const Similarity2d map(number(random), number(random), number(random), number(random));
    const SimilarityTransform2d transform(map);
    const Point2dData<omReal64> center(number(random), number(random));
    const auto mapped = [&map](Point2dData<omReal64> point) {
      omReal64 x = 0;
      omReal64 y = 0;
      EXPECT_TRUE(map.apply(point.getX(), point.getY(), x, y));
      return Point2dData<omReal64>(x, y);
    };
    Ellipse2d<omReal64> ellipse(center, 5, 3, number(random));
    Rectangle2d<omReal64> rectangle(center, 4, 2, number(random));
    const Ellipse2d<omReal64> ellipseBefore = ellipse;
    const Rectangle2d<omReal64> rectangleBefore = rectangle;
    ASSERT_TRUE(transform.applyInSitu(ellipse));
    ASSERT_TRUE(transform.applyInSitu(rectangle));
    for (omReal64 angle = 0; angle < 6.3; angle += 0.7)
      EXPECT_TRUE(compare(ellipse.boundaryPoint(angle), mapped(ellipseBefore.boundaryPoint(angle)), 1e-12) ||
                  compare(ellipse.boundaryPoint(angle + s_piValue), mapped(ellipseBefore.boundaryPoint(angle)), 1e-12));
    // A negative scale turns the rectangle by half a turn through its half sizes already.
    EXPECT_TRUE(compare(rectangle.topLeftCorner(), mapped(rectangleBefore.topLeftCorner()), 1e-12) ||
                compare(rectangle.bottomRightCorner(), mapped(rectangleBefore.topLeftCorner()), 1e-12));
    EXPECT_NEAR(std::abs(rectangle.getHalfLength()), 4 * std::abs(map.getScale()), 1e-12);
  }
}

TEST(LinearTransformImage, OfVerticesIsThatOfTheMap) {
  const auto polygon = Sample<PolygonWithHoles2d<omReal64>>::make();
  const auto image = boost::dynamic_pointer_cast<PolygonWithHoles2d<omReal64>>(s_homography.apply(polygon));
  ASSERT_TRUE(image);
  const auto& island = polygon.getPolygonHoles()[0]->getPolygonHoles()[0]->getExteriorPolygon().getPointColl();
  const auto& islandImage = image->getPolygonHoles()[0]->getPolygonHoles()[0]->getExteriorPolygon().getPointColl();
  for (std::size_t index = 0; index < island.size(); ++index) {
    omReal64 x = 0;
    omReal64 y = 0;
    ASSERT_TRUE(s_homography.getGeometricTransform().apply(island[index].getX(), island[index].getY(), x, y));
    EXPECT_EQ(islandImage[index], Point2dData<omReal64>(x, y));
  }
}

TEST(LinearTransformImage, OfIntegersIsRoundedOnce) {
  Point2d<omInt32> point(3, 0);
  ASSERT_TRUE(ScaleTransform2d(0.5).applyInSitu(point));
  EXPECT_EQ(point, Point2d<omInt32>(2, 0));
  Point2d<omUInt32> below(3, 4);
  ASSERT_TRUE(TranslationTransform2d(-10, 0).applyInSitu(below));
  EXPECT_EQ(below, Point2d<omUInt32>(0, 4));
  Circle2d<omInt32> circle({1, 1}, 3);
  ASSERT_TRUE(ScaleTransform2d(1.5).applyInSitu(circle));
  EXPECT_EQ(circle.getRadius(), 5);
}

// Vectors are shifted as positions are, and so is the direction of a line: stored results rely on it.
TEST(LinearTransformOddity, TranslationShiftsVectorsAndLines) {
  Vector2d vector(1, 0);
  ASSERT_TRUE(s_translation.applyInSitu(vector));
  EXPECT_TRUE(compare(Point2dData<omReal64>(vector.getX(), vector.getY()), {4, 5}, 1e-14));
  Line2d line(2, 0);
  ASSERT_TRUE(TranslationTransform2d(1, 0).applyInSitu(line));
  Line2d expected;
  Vector2d direction;
  direction.setCoords(Point2dData<omReal64>(1, 1));
  expected.setCoords(Point2dData<omReal64>(3, 0), direction);
  EXPECT_NEAR(line.getRho(), expected.getRho(), 1e-14);
  EXPECT_NEAR(line.getTheta(), expected.getTheta(), 1e-14);
}

TEST(LinearTransformOddity, ScaledRadiiKeepTheirSign) {
  Circle2d<omReal64> circle({1, 2}, 3);
  ASSERT_TRUE(ScaleTransform2d(-2).applyInSitu(circle));
  EXPECT_EQ(circle.getRadius(), -6);
}

TEST(AnisotropicScale, MakesAnEllipseOfACircle) {
  const Circle2d<omReal64> circle({1, 2}, 3);
  const auto image = [&circle](omReal64 sx, omReal64 sy) {
    return boost::dynamic_pointer_cast<Ellipse2d<omReal64>>(AnisotropicScaleTransform2d(sx, sy).apply(circle));
  };
  const auto wide = image(4, 2);
  ASSERT_TRUE(wide);
  EXPECT_EQ(describe(*wide), describe(Ellipse2d<omReal64>({4, 4}, 12, 6, 0)));
  EXPECT_EQ(describe(*image(2, 4)), describe(Ellipse2d<omReal64>({2, 8}, 12, 6, s_piValue / 2)));
  // The tie goes to pi/2.
  EXPECT_EQ(describe(*image(2, 2)), describe(Ellipse2d<omReal64>({2, 4}, 6, 6, s_piValue / 2)));
  EXPECT_EQ(describe(AnisotropicScaleTransform2d::anisotropicScale(circle, 4, 2)), describe(*wide));
  EXPECT_THROW(AnisotropicScaleTransform2d::anisotropicScale(circle, s_infinity, 1), ORMIXGeometryException);
}

TEST(LinearTransformFailure, ChangesNothingAndIsLogged) {
  // The last vertex lies on the line that the homography sends to infinity.
  const HomographyTransform2d homography(matrix({1, 0, 0, 0, 1, 0, -1, 0, 1}));
  PolygonWithHoles2d<omReal64> polygon = Sample<PolygonWithHoles2d<omReal64>>::make();
  polygon.getPolygonHoles()[1]->getExteriorPolygon().getPointColl().push_back({1, 7});
  const std::string before = describe(polygon);
  {
    const support::LogCapture log(getORMIXGeometryLoggerName());
    EXPECT_FALSE(homography.applyInSitu(polygon));
    EXPECT_EQ(
        log.messages(),
        (support::LogCapture::Messages{{40000,
                                        "Failed to apply eT2DT_HomographyTransform transformation on point 2d with "
                                        "coordinates {1.000000, 7.000000}"}}));
  }
  EXPECT_EQ(describe(polygon), before);
  EXPECT_FALSE(homography.apply(polygon));

  for (const omReal64 bad : {s_infinity, std::nan("")}) {
    Polygon2d<omReal64> ringOfReals = ring<omReal64>(eP2DT_Exterior, 0, 0, 1);
    ringOfReals.getPointColl()[3].setY(bad);
    const std::string ringBefore = describe(ringOfReals);
    EXPECT_FALSE(s_rigid.applyInSitu(ringOfReals));
    EXPECT_EQ(describe(ringOfReals), ringBefore);
    Circle2d<omReal64> circle({0, 0}, bad);
    EXPECT_FALSE(s_scale.applyInSitu(circle));
    EXPECT_EQ(circle.center(), Point2dData<omReal64>(0, 0));
    Square2d<omReal64> square({1, 2}, 3, bad);
    EXPECT_FALSE(s_rotation.applyInSitu(square));
    EXPECT_EQ(square.center(), Point2dData<omReal64>(1, 2));
  }
  Point2d<omReal32> large(3e38f, 0);
  EXPECT_FALSE(s_scale.applyInSitu(large));
  EXPECT_EQ(large, Point2d<omReal32>(3e38f, 0));
}

TEST(LinearTransformFailure, OfNullPointersIsAResult) { expectNullPointersFail(s_scale); }

TEST(Convert, GivesTheTransformOfTheSameParameters) {
  const Point2d<omReal64> point(3, 4);
  expectConverted(s_translation, point);
  expectConverted(s_rotation, point);
  expectConverted(s_rigid, point);
  expectConverted(s_scale, point);
  expectConverted(s_similarity, point);
  expectConverted(s_anisotropic, point);
  expectConverted(s_homography, point);
}

TEST(Convert, RefusesAnAffineTransform) { expectAffineIsRefused(Affine2d(1, 0, 0, 0, 1, 0)); }

TEST(ApplyAll, StopsAtTheFirstFailure) {
  const auto circle = [] { return boost::make_shared<Circle2d<omReal64>>(Point2dData<omReal64>(1, 1), 1.0); };
  expectApplyAllStopsAtTheFirstFailure(s_scale, circle, boost::make_shared<Line2d>(1, 0));
}

}  // namespace
