#include <ORMIXGeometry/ORMIXGeometry.h>
#include <gtest/gtest.h>

#include <array>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <cmath>
#include <limits>
#include <map>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/LogCapture.h"
#include "support/SampleObjects.h"

// What is asked of the transforms of the plane and of space alike.
namespace {

using namespace samples;
using Messages = support::LogCapture::Messages;

struct Plane {
  using Entity = BaseGeometryEntity2d;
  using Transform = BaseGeometryTransform2d;
  using Scale = ScaleTransform2d;
  using Affine = Affine2d;
  using Homography = HomographyTransform2d;
  template <class T>
  using Point = Point2d<T>;
  template <class T>
  using PointData = Point2dData<T>;
  template <class T>
  using Cloud = PointCloud2d<T>;
  template <class T>
  using Segment = Segment2d<T>;
  template <class T>
  using Box = BoundingBox2d<T>;
  template <class T>
  using Tree = PolygonWithHoles2d<T>;
  using Vector = Vector2d;
  using Round = Circle2d<omReal64>;
  using Flat = Line2d;
  static constexpr const char* type = "2DT";
  static std::string typeName(const Entity& entity) { return toString(entity.getEntity2dType()); }
  /// Sends the points with x = 1000 to infinity.
  static Homography horizon() { return Homography(matrix({1, 0, 0, 0, 1, 0, -1, 0, 1000})); }
  static Round round() { return Round(Point2dData<omReal64>(1, 1), 1); }
  static Flat flat() { return Flat(1, 0); }
  template <class Node>
  static auto& holes(Node& tree) {
    return tree.getPolygonHoles();
  }
  template <class Node>
  static auto& exteriorPoints(Node& node) {
    return node.getExteriorPolygon().getPointColl();
  }
};

struct Space {
  using Entity = BaseGeometryEntity3d;
  using Transform = BaseGeometryTransform3d;
  using Scale = ScaleTransform3d;
  using Affine = Affine3d;
  using Homography = HomographyTransform3d;
  template <class T>
  using Point = Point3d<T>;
  template <class T>
  using PointData = Point3dData<T>;
  template <class T>
  using Cloud = PointCloud3d<T>;
  template <class T>
  using Segment = Segment3d<T>;
  template <class T>
  using Box = BoundingBox3d<T>;
  template <class T>
  using Tree = MeshWithHoles3d<T>;
  using Vector = Vector3d;
  using Round = Sphere3d<omReal64>;
  using Flat = Plan3d;
  static constexpr const char* type = "3DT";
  static std::string typeName(const Entity& entity) { return toString(entity.getEntity3dType()); }
  static Homography horizon() { return Homography(matrix<4>({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, -1, 0, 0, 1000})); }
  static Round round() { return Round(1, 1, 1, 1); }
  static Flat flat() { return Flat(1, 0, 0); }
  template <class Node>
  static auto& holes(Node& tree) {
    return tree.getMeshHoles();
  }
  template <class Node>
  static auto& exteriorPoints(Node& node) {
    return node.getExteriorMesh().getVertexColl();
  }
};

template <class S>
using Entities = std::vector<boost::shared_ptr<typename S::Entity>>;
template <class S>
using Transforms = std::array<const typename S::Transform*, 7>;

/// One of each class, in the order of the columns of the support tables.
template <class S, class... T>
const Transforms<S>& samplesOf(::testing::Types<T...>) {
  static const std::tuple<T...> all{Sample<T>::make()...};
  static const Transforms<S> pointers{&std::get<T>(all)...};
  return pointers;
}
template <class S>
const Transforms<S>& transforms() {
  if constexpr (std::is_same_v<S, Plane>)
    return samplesOf<S>(LinearTransforms2d());
  else
    return samplesOf<S>(LinearTransforms3d());
}

/// In place and, after the bar, as a copy: which of the seven transforms accept the class, without its scalar type.
const std::map<std::string, std::string> s_support{
    {"Point2d", "1111111|1111111"},       {"Vector2d", "1111111|1111111"},
    {"BoundingBox2d", "1001010|1001010"}, {"Segment2d", "1111111|1111111"},
    {"Line2d", "1110000|1110000"},        {"Circle2d", "1111100|1111110"},
    {"Ellipse2d", "1111100|1111100"},     {"Square2d", "1111100|1111100"},
    {"Rectangle2d", "1111100|1111100"},   {"Parabola2d", "1110000|1110000"},
    {"Polygon2d", "1111111|1111111"},     {"PolygonWithHoles2d", "1111111|1111111"},
    {"PointCloud2d", "1111111|1111111"},  {"Point3d", "1111111|1111111"},
    {"Vector3d", "1111111|1111111"},      {"Segment3d", "1111111|1111111"},
    {"BoundingBox3d", "1001010|1001010"}, {"Triangle3d", "1111110|1111110"},
    {"Plan3d", "0000000|0000000"},        {"Sphere3d", "1111100|1111110"},
    {"Ellipsoid3d", "1111100|1111100"},   {"Cube3d", "1111100|1111100"},
    {"Cuboid3d", "1111100|1111100"},      {"PointCloud3d", "1111111|1111111"},
    {"Mesh3d", "1111111|1111111"},        {"MeshWithHoles3d", "1111111|1111111"},
    {"Shape3d", "1111111|1111111"}};

class LinearTransformSupport : public ::testing::TestWithParam<ClassCase> {
 protected:
  /// Both ways give the same image; a refusal says what was refused and changes nothing.
  template <class S>
  static std::string support() {
    const auto makeSample = [] { return boost::dynamic_pointer_cast<typename S::Entity>(GetParam().makeSample()); };
    const auto sample = makeSample();
    const std::string before = GetParam().describe(*sample);
    std::string inSitu;
    std::string copied;
    for (const auto* transform : transforms<S>()) {
      const std::string name = transform->getClassName();
      const auto entity = makeSample();
      const BoolResult result = transform->applyInSitu(*entity);
      inSitu += result ? '1' : '0';
      EXPECT_EQ(GetParam().describe(*entity) != before, static_cast<bool>(result)) << name;
      EXPECT_EQ(result.getMessage(),
                result ? "" : "Transform " + name + " failed for geometry entity " + S::typeName(*sample));
      const auto image = transform->apply(*sample);
      copied += image ? '1' : '0';
      EXPECT_EQ(GetParam().describe(*sample), before);
      EXPECT_TRUE(image || !result) << name;
      if (image && result) {
        EXPECT_EQ(GetParam().describe(*image), GetParam().describe(*entity)) << name;
      }
    }
    return inSitu + "|" + copied;
  }
};
INSTANTIATE_TEST_SUITE_P(Plane, LinearTransformSupport, ::testing::ValuesIn(classCases(AllEntities2d())));
INSTANTIATE_TEST_SUITE_P(Space, LinearTransformSupport, ::testing::ValuesIn(classCases(AllEntities3d())));

TEST_P(LinearTransformSupport, IsWhatTheTableSays) {
  const std::string space = "ormix::geom::";
  const std::string name = GetParam().name.substr(space.size(), GetParam().name.find('<') - space.size());
  const bool isPlanar = name.back() == 'd' && name[name.size() - 2] == '2';
  EXPECT_EQ(isPlanar ? support<Plane>() : support<Space>(), s_support.at(name));
}

/// A space and a scalar type.
template <class S, class T>
struct Case {};
template <class Case>
class ImageOfRuns;
template <class S, class T>
class ImageOfRuns<Case<S, T>> : public ::testing::Test {
 protected:
  using Where = S;
  using Cloud = typename S::template Cloud<T>;
  using Tree = typename S::template Tree<T>;

  /// A cloud, a polygon in the plane, and a tree with a null hole and the points in its first and its last node. Points
  /// enough for several blocks and a part of one; from `bad` on, where it is there, points of no image.
  static Entities<S> entities(std::size_t bad = 700) {
    const auto cloud = boost::make_shared<Cloud>();
    auto& points = cloud->getCollection();
    points.resize(700);
    for (std::size_t index = 0; index < points.size(); ++index) {
      points[index].setX(index >= bad && (index - bad) % 40 == 0 ? T(1000) : static_cast<T>(3 * index % 251));
      points[index].setY(static_cast<T>(index));
      if constexpr (std::is_same_v<S, Space>) points[index].setZ(static_cast<T>(7 * index % 300));
    }
    const auto tree = boost::make_shared<Tree>(Sample<Tree>::make());
    S::holes(*tree).insert(S::holes(*tree).begin(), nullptr);
    S::exteriorPoints(*S::holes(*S::holes(*tree)[1])[0]) = points;
    auto& last = S::exteriorPoints(*S::holes(*tree).back());
    last = points;
    for (auto& point : last) point.setY(99);  // not the one that is named
    Entities<S> all{cloud, tree};
    if constexpr (std::is_same_v<S, Plane>) {
      const auto polygon = boost::make_shared<Polygon2d<T>>();
      polygon->setPolygon2dType(eP2DT_Interior);
      polygon->getPointColl() = points;
      all.push_back(polygon);
    }
    return all;
  }

  /// All of an entity.
  static std::string printed(const typename S::Entity& entity) {
    if (const auto* cloud = dynamic_cast<const Cloud*>(&entity)) return describe(*cloud);
    if (const auto* tree = dynamic_cast<const Tree*>(&entity)) return describe(*tree);
    if constexpr (std::is_same_v<S, Plane>) {
      const auto& polygon = dynamic_cast<const Polygon2d<T>&>(entity);
      return toString(polygon.getPolygon2dType()) + describe(polygon);
    }
    throw std::bad_cast();
  }
};
using RunCases =
    ::testing::Types<Case<Plane, omInt32>, Case<Plane, omUInt32>, Case<Plane, omReal32>, Case<Plane, omReal64>,
                     Case<Space, omInt32>, Case<Space, omUInt32>, Case<Space, omReal32>, Case<Space, omReal64>>;
TYPED_TEST_SUITE(ImageOfRuns, RunCases, );

TYPED_TEST(ImageOfRuns, IsTheEntityTransformedInPlace) {
  using S = typename TestFixture::Where;
  for (const auto& entity : this->entities()) {
    const std::string before = this->printed(*entity);
    for (const auto* transform : transforms<S>()) {
      const auto inPlace = boost::dynamic_pointer_cast<typename S::Entity>(entity->duplicateShared());
      ASSERT_TRUE(transform->applyInSitu(*inPlace));
      const auto image = transform->apply(*entity);
      ASSERT_TRUE(image);
      EXPECT_EQ(this->printed(*image), this->printed(*inPlace)) << transform->getClassName();
      EXPECT_NE(this->printed(*image), before);
      EXPECT_EQ(image->getClassName(), entity->getClassName());
    }
    EXPECT_EQ(this->printed(*entity), before);
  }
}

TYPED_TEST(ImageOfRuns, IsNoneAndIsLoggedAsInPlaceWhereAPointHasNone) {
  using S = typename TestFixture::Where;
  const auto transform = S::horizon();
  for (const std::size_t bad : {0, 84, 85, 170, 171, 255, 256, 340, 511, 512, 699}) {
    std::string message = std::string("Failed to apply eT") + S::type +
                          "_HomographyTransform transformation on point " + (S::type[0] == '2' ? "2d" : "3d") +
                          " with coordinates {1000.000000, " + std::to_string(bad) + ".000000";
    if (S::type[0] == '3') message += ", " + std::to_string(7 * bad % 300) + ".000000";
    for (const auto& entity : this->entities(bad)) {
      const std::string before = this->printed(*entity);
      for (const bool isInPlace : {false, true}) {
        const support::LogCapture log(getORMIXGeometryLoggerName());
        EXPECT_FALSE(isInPlace ? static_cast<bool>(transform.applyInSitu(*entity))
                               : transform.apply(*entity) != nullptr);
        EXPECT_EQ(log.messages(), (Messages{{40000, message + "}"}}));
      }
      EXPECT_EQ(this->printed(*entity), before);
    }
  }
}

template <class Call>
void expectThrows(const Call& call, const std::string& message) {
  try {
    call();
    ADD_FAILURE() << "not refused: " << message;
  } catch (const ORMIXGeometryException& exception) {
    EXPECT_EQ(exception.what(), message);
  }
}

template <class S>
class LinearTransforms : public ::testing::Test {
 protected:
  /// The transform of a map's parameters maps the point as the map does.
  template <class... Transform>
  static void expectConverted(::testing::Types<Transform...>) {
    const auto expectOf = [](const auto& expected) {
      auto point = Sample<typename S::template Point<omReal64>>::make();
      using Expected = std::decay_t<decltype(expected)>;
      const auto transform = convert(expected.getGeometricTransform());
      ASSERT_TRUE(transform);
      EXPECT_EQ(describe(dynamic_cast<const Expected&>(*transform)), describe(expected));
      const auto image = boost::dynamic_pointer_cast<decltype(point)>(
          apply(expected.getGeometricTransform(), boost::make_shared<decltype(point)>(point)));
      EXPECT_TRUE(apply(expected, point));
      EXPECT_EQ(*image, point);
    };
    (expectOf(Sample<Transform>::make()), ...);
  }
};
using Spaces = ::testing::Types<Plane, Space>;
TYPED_TEST_SUITE(LinearTransforms, Spaces, );

TYPED_TEST(LinearTransforms, MapEntitiesOfPointsPointByPoint) {
  using S = TypeParam;
  using Point = typename S::template PointData<omReal64>;
  using Tree = typename S::template Tree<omReal64>;
  const auto tree = Sample<Tree>::make();
  const std::vector<Point> points = S::exteriorPoints(*S::holes(tree)[0]);
  for (const auto* transform : transforms<S>()) {
    std::vector<Point> images;
    for (const Point& point : points) {
      typename S::template Point<omReal64> image;
      image.setCoords(point);
      ASSERT_TRUE(transform->applyInSitu(image));
      images.push_back(image.getCoords());
    }
    const auto expectImage = [&](const auto& entity, const auto& expected) {
      const auto image = boost::dynamic_pointer_cast<std::decay_t<decltype(entity)>>(transform->apply(entity));
      // A box under a rotation has none.
      if (image) {
        EXPECT_EQ(describe(*image), describe(expected)) << transform->getClassName();
      }
    };
    expectImage(typename S::template Segment<omReal64>(points[0], points[1]),
                typename S::template Segment<omReal64>(images[0], images[1]));
    expectImage(typename S::template Box<omReal64>(points[0], points[2]),
                typename S::template Box<omReal64>(images[0], images[2]));
    expectImage(typename S::template Cloud<omReal64>(points), typename S::template Cloud<omReal64>(images));
    if constexpr (std::is_same_v<S, Space>)
      expectImage(Triangle3d<omReal64>(points[0], points[1], points[2]),
                  Triangle3d<omReal64>(images[0], images[1], images[2]));
    const auto treeImage = boost::dynamic_pointer_cast<Tree>(transform->apply(tree));
    ASSERT_TRUE(treeImage);
    EXPECT_EQ(S::exteriorPoints(*S::holes(*treeImage)[0]), images) << transform->getClassName();
  }
}

TYPED_TEST(LinearTransforms, ChangeNothingWhereAFieldHasNoImage) {
  using S = TypeParam;
  const typename S::Scale scale(2);
  for (const omReal64 bad : {std::nan(""), std::numeric_limits<omReal64>::infinity()}) {
    auto round = S::round();
    round.setRadius(bad);
    EXPECT_FALSE(scale.applyInSitu(round));
    EXPECT_EQ(round.center(), S::round().center());
    auto segment = Sample<typename S::template Segment<omReal64>>::make();
    auto end = segment.getPoint1();
    end.setX(bad);
    segment.setCoords(segment.getPoint0(), end);
    const auto before = segment.getPoint0();
    EXPECT_FALSE(scale.applyInSitu(segment));
    EXPECT_EQ(segment.getPoint0(), before);
  }
}

// Vectors are shifted as positions are: stored results rely on it.
TYPED_TEST(LinearTransforms, ShiftVectors) {
  typename TypeParam::Vector vector;
  vector.setCoords(typename TypeParam::template PointData<omReal64>());
  ASSERT_TRUE(transforms<TypeParam>()[0]->applyInSitu(vector));
  EXPECT_NEAR(vector.getX(), 3, 1e-14);
  EXPECT_NEAR(vector.getY(), 5, 1e-14);
}

TYPED_TEST(LinearTransforms, KeepWhatBelongsToADerivedClassAndToATree) {
  using S = TypeParam;
  using Tree = typename S::template Tree<omReal64>;
  struct NamedCloud : S::template Cloud<omReal64> {
    boost::shared_ptr<BaseDynamicObject> duplicateShared() const override {
      return boost::make_shared<NamedCloud>(*this);
    }
    std::string name;
  } cloud;
  cloud.name = "left camera";
  cloud.getCollection().resize(1);
  cloud.getCollection()[0].setX(1);
  const auto named = boost::dynamic_pointer_cast<NamedCloud>(typename S::Scale(2).apply(cloud));
  ASSERT_TRUE(named);
  EXPECT_EQ(named->name, cloud.name);
  EXPECT_EQ(named->getCollection()[0].getX(), 2);

  for (const auto* transform : transforms<S>()) {
    const auto tree = boost::dynamic_pointer_cast<Tree>(transform->apply(Sample<Tree>::make()));
    ASSERT_TRUE(tree);
    const auto& hole = S::holes(*tree)[0];
    EXPECT_FALSE(tree->getParent());
    EXPECT_EQ(hole->getParent(), tree);
    EXPECT_EQ(S::holes(*hole)[0]->getParent(), hole);
  }
}

// An image comes of apply(); the visits themselves answer one to an anisotropic scale only.
TYPED_TEST(LinearTransforms, AreAnsweredNullByVisitsThatDoNotChangeTheEntity) {
  const auto cloud = Sample<typename TypeParam::template Cloud<omReal64>>::make();
  const typename TypeParam::Scale scale(2);
  EXPECT_FALSE(cloud.visitNonInSitu(scale));
  EXPECT_TRUE(scale.apply(cloud));
  EXPECT_FALSE(cloud.visitNonInSitu(scale));
}

TYPED_TEST(LinearTransforms, AreConvertedFromMapsButTheAffineOne) {
  if constexpr (std::is_same_v<TypeParam, Plane>)
    this->expectConverted(LinearTransforms2d());
  else
    this->expectConverted(LinearTransforms3d());
  const typename TypeParam::Affine affine;
  const std::string message = "Input geometric transformation " + std::string(toString(affine.getType())) +
                              " is not yet supported for geometric entities transformation";
  const support::LogCapture log(getORMIXGeometryLoggerName());
  expectThrows([&affine] { convert(affine); }, message);
  EXPECT_EQ(log.messages(), (Messages{{40000, message}}));
}

TYPED_TEST(LinearTransforms, FailForNullPointers) {
  using Entity = typename TypeParam::Entity;
  const typename TypeParam::Scale scale(2);
  EXPECT_EQ(scale.applyInSitu(boost::shared_ptr<Entity>()).getMessage(), "Input shared pointer should not be null");
  EXPECT_FALSE(scale.apply(boost::shared_ptr<const Entity>()));
  Entities<TypeParam> withNull{nullptr};
  EXPECT_FALSE(applyAll(scale, withNull));
  EXPECT_THROW(applyAll(scale, std::as_const(withNull)), ORMIXGeometryException);
}

TYPED_TEST(LinearTransforms, OfCollectionsStopAtTheFirstFailure) {
  using S = TypeParam;
  using Round = typename S::Round;
  const typename S::Scale scale(2);
  const auto round = [] { return boost::make_shared<Round>(S::round()); };
  const auto refused = boost::make_shared<typename S::Flat>(S::flat());
  Entities<S> entities{round(), refused, round()};
  Entities<S> images{round(), round(), round(), round()};
  const std::string message =
      "Transform " + scale.getClassName() + " failed for geometry entity " + S::typeName(*refused);
  EXPECT_EQ(applyAll(scale, entities, images).getMessage(), message);
  EXPECT_EQ(images.size(), 1u);
  expectThrows([&] { applyAll(scale, std::as_const(entities)); }, message);
  expectThrows([&] { applyAll(scale.getGeometricTransform(), std::as_const(entities)); }, message);
  EXPECT_EQ(applyAll(scale, entities).getMessage(), message);
  const auto radius = [&entities](std::size_t index) {
    return boost::dynamic_pointer_cast<Round>(entities[index])->getRadius();
  };
  EXPECT_EQ(radius(0), 2);
  EXPECT_EQ(radius(2), 1);

  Entities<S> none;
  EXPECT_TRUE(applyAll(scale, none));
  EXPECT_TRUE(applyAll(scale, std::as_const(none)).empty());
  EXPECT_TRUE(applyAll(scale, none, images));
  EXPECT_TRUE(images.empty());
  entities.resize(1);
  ASSERT_TRUE(applyAll(scale, entities, entities));
  EXPECT_EQ(radius(0), 4);
}

}  // namespace
