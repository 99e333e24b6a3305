#include <ORMIXGeometry/ORMIXGeometry.h>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <map>

#include "support/ArchiveFormats.h"
#include "support/Checks.h"
#include "support/LogCapture.h"
#include "support/SampleObjects.h"

// What is asked of the transforms of the plane and of space alike.
namespace {

using namespace samples;
using support::thrownBy;
using Messages = support::LogCapture::Messages;

template <template <class> class P, template <class> class Data, template <class> class C, template <class> class S,
          template <class> class B, template <class> class N>
struct EntitiesOfPoints {
  template <class T>
  using Point = P<T>;
  template <class T>
  using PointData = Data<T>;
  template <class T>
  using Cloud = C<T>;
  using Segment = S<omReal64>;
  using Box = B<omReal64>;
  template <class T>
  using Tree = N<T>;
};

struct Plane : EntitiesOfPoints<Point2d, Point2dData, PointCloud2d, Segment2d, BoundingBox2d, PolygonWithHoles2d> {
  using Entity = BaseGeometryEntity2d;
  using Transforms = PlanarLinearTransformList;
  using Transform = BaseGeometryTransform2d;
  using Translation = TranslationTransform2d;
  using Scale = ScaleTransform2d;
  using Affine = Affine2d;
  using Vector = Vector2d;
  using Round = Circle2d<omReal64>;
  using Flat = Line2d;
  static std::string typeName(const Entity& entity) { return toString(entity.getEntity2dType()); }
  /// Sends the points with x = 1000 to infinity.
  static HomographyTransform2d horizon() {
    return HomographyTransform2d(matrix<Matrix3x3, 9>({1, 0, 0, 0, 1, 0, -1, 0, 1000}));
  }
  template <class Node>
  static auto& holes(Node& tree) {
    return tree.getPolygonHoles();
  }
  template <class Node>
  static auto& exteriorPoints(Node& node) {
    return node.getExteriorPolygon().getPointColl();
  }
};

struct Space : EntitiesOfPoints<Point3d, Point3dData, PointCloud3d, Segment3d, BoundingBox3d, MeshWithHoles3d> {
  using Entity = BaseGeometryEntity3d;
  using Transforms = SpatialLinearTransformList;
  using Transform = BaseGeometryTransform3d;
  using Translation = TranslationTransform3d;
  using Scale = ScaleTransform3d;
  using Affine = Affine3d;
  using Vector = Vector3d;
  using Round = Sphere3d<omReal64>;
  using Flat = Plan3d;
  static std::string typeName(const Entity& entity) { return toString(entity.getEntity3dType()); }
  static HomographyTransform3d horizon() {
    return HomographyTransform3d(matrix<Matrix4x4, 16>({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, -1, 0, 0, 1000}));
  }
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

/// One of each class, in the order of the library's list.
template <class S, class... T>
std::vector<const typename S::Transform*> samplesOf(ClassList<T...>) {
  static const std::tuple<T...> all{Sample<T>::make()...};
  return {&std::get<T>(all)...};
}
template <class S>
auto transforms() {
  return samplesOf<S>(typename S::Transforms());
}

/// In place and, after the bar, as a copy: which of the transforms accept the class, without its scalar type. The
/// classes that are not named are accepted by all.
const std::map<std::string, std::string> s_support{
    {"BoundingBox2d", "1000101|1000101"}, {"Line2d", "0011001|0011001"},      {"Circle2d", "0011111|1011111"},
    {"Ellipse2d", "0011111|0011111"},     {"Square2d", "0011111|0011111"},    {"Rectangle2d", "0011111|0011111"},
    {"Parabola2d", "0011001|0011001"},    {"Skeleton2d", "0011111|0011111"},  {"SkeletonVertex2d", "0011111|0011111"},
    {"BoundingBox3d", "1000101|1000101"}, {"Triangle3d", "1011111|1011111"},  {"Plan3d", "0000000|0000000"},
    {"Sphere3d", "0011111|1011111"},      {"Ellipsoid3d", "0011111|0011111"}, {"Cube3d", "0011111|0011111"},
    {"Cuboid3d", "0011111|0011111"},      {"Arc2d", "0011111|0011111"},       {"Cylinder3d", "0011111|0011111"},
    {"Cone3d", "0011111|0011111"},        {"Torus3d", "0011111|0011111"},     {"Circle3d", "0011111|0011111"},
    {"Line3d", "1011111|1011111"}};

/// Both ways give the same image; a refusal says what was refused and changes nothing.
template <class S>
std::string supportOf(const ClassCase& each) {
  const auto makeSample = [&each] { return boost::dynamic_pointer_cast<typename S::Entity>(each.makeSample()); };
  const auto sample = makeSample();
  const std::string before = each.describe(*sample);
  std::string inSitu, copied;
  for (const auto* transform : transforms<S>()) {
    const std::string name = transform->getClassName();
    const auto entity = makeSample();
    const BoolResult result = transform->applyInSitu(*entity);
    inSitu += result ? '1' : '0';
    EXPECT_EQ(each.describe(*entity) != before, static_cast<bool>(result)) << name;
    EXPECT_EQ(result.getMessage(),
              result ? "" : "Transform " + name + " failed for geometry entity " + S::typeName(*sample));
    const auto image = transform->apply(*sample);
    copied += image ? '1' : '0';
    EXPECT_EQ(each.describe(*sample), before);
    EXPECT_TRUE(image || !result) << name;
    // A new shape under a scale that is not the same along x and y has no pixels.
    const bool losesPixels = each.name == Shape2d::s_className && name == AnisotropicScaleTransform2d::s_className;
    if (image && result && !losesPixels) {
      EXPECT_EQ(each.describe(*image), each.describe(*entity)) << name;
    }
  }
  return inSitu + "|" + copied;
}

template <class S, class List>
void expectSupport(List list) {
  const std::string space = "ormix::geom::";
  for (const ClassCase& each : classCases(list)) {
    SCOPED_TRACE(each.name);
    const auto row = s_support.find(each.name.substr(space.size(), each.name.find('<') - space.size()));
    EXPECT_EQ(supportOf<S>(each), row == s_support.end() ? "1111111|1111111" : row->second);
  }
}

TEST(LinearTransformSupport, IsWhatTheTableSays) {
  expectSupport<Plane>(PlanarEntityList());
  expectSupport<Space>(SpatialEntityList());
}

/// A space and a scalar type.
template <class S, class T>
struct Case {
  using Where = S;
};
template <class Case>
class ImageOfRuns;
template <class S, class T>
class ImageOfRuns<Case<S, T>> : public ::testing::Test {
 protected:
  /// A cloud, a polygon in the plane, and a tree with the points in its first and its last node. Points enough for
  /// several blocks and a part of one; from `bad` on, where it is there, points of no image.
  static Entities<S> entities(std::size_t bad = 700) {
    using Cloud = typename S::template Cloud<T>;
    using Tree = typename S::template Tree<T>;
    const auto cloud = boost::make_shared<Cloud>();
    auto& points = cloud->getCollection();
    points.resize(700);
    for (std::size_t index = 0; index < points.size(); ++index) {
      points[index].setX(index >= bad && (index - bad) % 40 == 0 ? T(1000) : static_cast<T>(3 * index % 251));
      points[index].setY(static_cast<T>(index));
      if constexpr (std::is_same_v<S, Space>) points[index].setZ(static_cast<T>(7 * index % 300));
    }
    const auto tree = boost::make_shared<Tree>(Sample<Tree>::make());
    S::exteriorPoints(*S::holes(*S::holes(*tree)[0])[0]) = points;
    auto& last = S::exteriorPoints(*S::holes(*tree).back());
    last = points;
    for (auto& point : last) point.setY(99);  // not the one that is named
    Entities<S> all{cloud, tree};
    if constexpr (std::is_same_v<S, Plane>) {
      all.push_back(boost::make_shared<Polygon2d<T>>(ring<T>(eP2DT_Interior, 0, 0, 1)));
      dynamic_cast<Polygon2d<T>&>(*all.back()).getPointColl() = points;
    }
    return all;
  }

  /// All of an entity.
  static std::string bytesOf(const BaseSerializationObject& entity) { return support::archived<support::Cbor>(entity); }
};
using RunCases =
    ::testing::Types<Case<Plane, omInt32>, Case<Plane, omUInt32>, Case<Plane, omReal32>, Case<Plane, omReal64>,
                     Case<Space, omInt32>, Case<Space, omUInt32>, Case<Space, omReal32>, Case<Space, omReal64>>;
TYPED_TEST_SUITE(ImageOfRuns, RunCases, );

TYPED_TEST(ImageOfRuns, IsTheEntityTransformedInPlace) {
  using S = typename TypeParam::Where;
  for (const auto& entity : this->entities()) {
    const std::string before = this->bytesOf(*entity);
    for (const auto* transform : transforms<S>()) {
      const auto inPlace = boost::dynamic_pointer_cast<typename S::Entity>(entity->duplicateShared());
      ASSERT_TRUE(transform->applyInSitu(*inPlace));
      const auto image = transform->apply(*entity);
      ASSERT_TRUE(image);
      EXPECT_TRUE(this->bytesOf(*image) == this->bytesOf(*inPlace)) << transform->getClassName();
      EXPECT_TRUE(this->bytesOf(*image) != before) << transform->getClassName();
    }
    EXPECT_TRUE(this->bytesOf(*entity) == before);
  }
}

TYPED_TEST(ImageOfRuns, IsNoneAndIsLoggedAsInPlaceWhereAPointHasNone) {
  using S = typename TypeParam::Where;
  const bool isSpatial = std::is_same_v<S, Space>;
  const auto transform = S::horizon();
  for (const std::size_t bad : {0, 84, 85, 170, 171, 255, 256, 340, 511, 512, 699}) {
    const std::string message = std::string("Failed to apply eT") + (isSpatial ? "3" : "2") +
                                "DT_HomographyTransform transformation on point " + (isSpatial ? "3d" : "2d") +
                                " with coordinates {1000.000000, " + std::to_string(bad) + ".000000" +
                                (isSpatial ? ", " + std::to_string(7 * bad % 300) + ".000000}" : "}");
    for (const auto& entity : this->entities(bad)) {
      const std::string before = this->bytesOf(*entity);
      const support::LogCapture log(getORMIXGeometryLoggerName());
      EXPECT_FALSE(transform.apply(*entity));
      EXPECT_FALSE(transform.applyInSitu(*entity));
      EXPECT_EQ(log.messages(), (Messages{{40000, message}, {40000, message}}));
      EXPECT_TRUE(this->bytesOf(*entity) == before);
    }
  }
}

template <class S>
class LinearTransforms : public ::testing::Test {};
using Spaces = ::testing::Types<Plane, Space>;
TYPED_TEST_SUITE(LinearTransforms, Spaces, );

TYPED_TEST(LinearTransforms, MapEntitiesOfPointsPointByPoint) {
  using S = TypeParam;
  using Tree = typename S::template Tree<omReal64>;
  const auto tree = Sample<Tree>::make();
  const auto points = S::exteriorPoints(*S::holes(tree)[0]);
  for (const auto* transform : transforms<S>()) {
    auto images = points;
    for (auto& coords : images) {
      typename S::template Point<omReal64> point;
      point.setCoords(coords);
      ASSERT_TRUE(transform->applyInSitu(point));
      coords = point.getCoords();
    }
    const auto expectImage = [&](const auto& entity, const auto& expected) {
      const auto image = boost::dynamic_pointer_cast<std::decay_t<decltype(entity)>>(transform->apply(entity));
      // A box under a rotation has none.
      if (image) {
        EXPECT_EQ(describe(*image), describe(expected)) << transform->getClassName();
      }
    };
    using Cloud = typename S::template Cloud<omReal64>;
    expectImage(typename S::Segment(points[0], points[1]), typename S::Segment(images[0], images[1]));
    expectImage(typename S::Box(points[0], points[2]), typename S::Box(images[0], images[2]));
    expectImage(Cloud(points), Cloud(images));
    if constexpr (std::is_same_v<S, Space>)
      expectImage(Triangle3d<omReal64>(points[0], points[1], points[2]),
                  Triangle3d<omReal64>(images[0], images[1], images[2]));
    const auto treeImage = boost::dynamic_pointer_cast<Tree>(transform->apply(tree));
    ASSERT_TRUE(treeImage);
    const auto& hole = S::holes(*treeImage)[0];
    EXPECT_EQ(S::exteriorPoints(*hole), images) << transform->getClassName();
    EXPECT_FALSE(treeImage->getParent());
    EXPECT_EQ(hole->getParent(), treeImage);
    EXPECT_EQ(S::holes(*hole)[0]->getParent(), hole);
  }
}

TYPED_TEST(LinearTransforms, ChangeNothingWhereAFieldHasNoImage) {
  using S = TypeParam;
  const typename S::Scale scale(2);
  for (const omReal64 bad : {support::s_nan, support::s_infinity}) {
    auto round = Sample<typename S::Round>::make();
    round.setRadius(bad);
    EXPECT_FALSE(scale.applyInSitu(round));
    EXPECT_EQ(round.center(), Sample<typename S::Round>::make().center());
    auto segment = Sample<typename S::Segment>::make();
    const auto before = segment.getPoint0();
    auto end = segment.getPoint1();
    end.setX(bad);
    segment.setCoords(before, end);
    EXPECT_FALSE(scale.applyInSitu(segment));
    EXPECT_EQ(segment.getPoint0(), before);
  }
}

// Vectors are shifted as positions are: stored results rely on it.
TYPED_TEST(LinearTransforms, ShiftVectors) {
  typename TypeParam::Vector vector;
  vector.setCoords(typename TypeParam::template PointData<omReal64>());
  ASSERT_TRUE(Sample<typename TypeParam::Translation>::make().applyInSitu(vector));
  EXPECT_NEAR(vector.getX(), 3, 1e-14);
  EXPECT_NEAR(vector.getY(), 5, 1e-14);
}

// An image comes of apply(); the visits themselves answer one to an anisotropic scale only.
TYPED_TEST(LinearTransforms, KeepWhatBelongsToADerivedClass) {
  struct NamedCloud : TypeParam::template Cloud<omReal64> {
    boost::shared_ptr<BaseDynamicObject> duplicateShared() const override {
      return boost::make_shared<NamedCloud>(*this);
    }
    std::string name;
  } cloud;
  cloud.name = "left camera";
  cloud.getCollection().resize(1);
  cloud.getCollection()[0].setX(1);
  const typename TypeParam::Scale scale(2);
  EXPECT_FALSE(cloud.visitNonInSitu(scale));
  const auto named = boost::dynamic_pointer_cast<NamedCloud>(scale.apply(cloud));
  ASSERT_TRUE(named);
  EXPECT_EQ(named->name, cloud.name);
  EXPECT_EQ(named->getCollection()[0].getX(), 2);
  EXPECT_FALSE(cloud.visitNonInSitu(scale));
}

TYPED_TEST(LinearTransforms, AreConvertedFromMapsButTheAffineOne) {
  using Point = typename TypeParam::template Point<omReal64>;
  forEachClass(typename TypeParam::Transforms(), [](auto tag) {
    using Transform = typename decltype(tag)::Type;
    const Transform expected = Sample<Transform>::make();
    const auto transform = convert(expected.getGeometricTransform());
    ASSERT_TRUE(transform);
    EXPECT_EQ(describe(dynamic_cast<const Transform&>(*transform)), describe(expected));
    Point point = Sample<Point>::make();
    const auto image = apply(expected.getGeometricTransform(), boost::make_shared<Point>(point));
    EXPECT_TRUE(apply(expected, point));
    EXPECT_EQ(dynamic_cast<Point&>(*image), point);
  });
  const typename TypeParam::Affine affine;
  const std::string message = "Input geometric transformation " + std::string(toString(affine.getType())) +
                              " is not yet supported for geometric entities transformation";
  const support::LogCapture log(getORMIXGeometryLoggerName());
  EXPECT_EQ(thrownBy<ORMIXGeometryException>([&affine] { convert(affine); }), message);
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
  const auto round = [] { return boost::make_shared<Round>(Sample<Round>::make()); };
  const auto refused = boost::make_shared<typename S::Flat>();
  Entities<S> entities{round(), refused, round()}, images{round(), round(), round(), round()}, none;
  const std::string message =
      "Transform " + scale.getClassName() + " failed for geometry entity " + S::typeName(*refused);
  EXPECT_EQ(applyAll(scale, entities, images).getMessage(), message);
  EXPECT_EQ(images.size(), 1u);
  const auto& given = std::as_const(entities);
  EXPECT_EQ(thrownBy<ORMIXGeometryException>([&] { applyAll(scale, given); }), message);
  EXPECT_EQ(thrownBy<ORMIXGeometryException>([&] { applyAll(scale.getGeometricTransform(), given); }), message);
  EXPECT_EQ(applyAll(scale, entities).getMessage(), message);
  const omReal64 radius = round()->getRadius();
  const auto radiusOf = [&](std::size_t index) { return dynamic_cast<Round&>(*entities[index]).getRadius(); };
  EXPECT_EQ(radiusOf(0), 2 * radius);
  EXPECT_EQ(radiusOf(2), radius);
  EXPECT_TRUE(applyAll(scale, none));
  EXPECT_TRUE(applyAll(scale, std::as_const(none)).empty());
  EXPECT_TRUE(applyAll(scale, none, images));
  EXPECT_TRUE(images.empty());
  entities.resize(1);
  ASSERT_TRUE(applyAll(scale, entities, entities));
  EXPECT_EQ(radiusOf(0), 4 * radius);
}

}  // namespace
