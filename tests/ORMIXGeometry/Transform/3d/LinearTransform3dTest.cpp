#include <limits>
#include <map>
#include <random>

#include "ORMIXGeometry/Transform/LinearTransformChecks.h"

namespace {

using namespace transforms;

const TranslationTransform3d s_translation = Sample<TranslationTransform3d>::make();
const RotationTransform3d s_rotation = Sample<RotationTransform3d>::make();
const RigidTransform3d s_rigid = Sample<RigidTransform3d>::make();
const ScaleTransform3d s_scale = Sample<ScaleTransform3d>::make();
const SimilarityTransform3d s_similarity = Sample<SimilarityTransform3d>::make();
const AnisotropicScaleTransform3d s_anisotropic = Sample<AnisotropicScaleTransform3d>::make();
const HomographyTransform3d s_homography = Sample<HomographyTransform3d>::make();

const std::array<const BaseGeometryTransform3d*, 7> s_transforms{&s_translation, &s_rotation,    &s_rigid,     &s_scale,
                                                                 &s_similarity,  &s_anisotropic, &s_homography};

/// In place and, after the bar, as a copy: which of the seven transforms, in this order, accept the entity.
const std::map<eEntity3dType, std::string> s_support{
    {eE3DT_Point, "1111111|1111111"},         {eE3DT_Vector, "1111111|1111111"},     {eE3DT_Segment, "1111111|1111111"},
    {eE3DT_BoundingBox, "1001010|1001010"},   {eE3DT_Triangle, "1111110|1111110"},   {eE3DT_Plan, "0000000|0000000"},
    {eE3DT_Sphere, "1111100|1111110"},        {eE3DT_Ellipsoid, "1111100|1111100"},  {eE3DT_Cube, "1111100|1111100"},
    {eE3DT_Cuboid, "1111100|1111100"},        {eE3DT_PointCloud, "1111111|1111111"}, {eE3DT_Mesh, "1111111|1111111"},
    {eE3DT_MeshWithHoles, "1111111|1111111"}, {eE3DT_Shape, "1111111|1111111"}};

class LinearTransform3dSupport : public ::testing::TestWithParam<ClassCase> {};
INSTANTIATE_TEST_SUITE_P(, LinearTransform3dSupport, ::testing::ValuesIn(classCases(AllEntities3d())));

TEST_P(LinearTransform3dSupport, IsWhatTheTableSays) {
  const auto sample = boost::dynamic_pointer_cast<BaseGeometryEntity3d>(GetParam().makeSample());
  EXPECT_EQ(supportOf(GetParam(), s_transforms), s_support.at(sample->getEntity3dType()));
}

template <class T>
using Points = std::vector<Point3dData<T>>;

template <class T>
Points<T> verticesOf(const MeshWithHoles3d<T>& tree) {
  Points<T> all;
  visitNodes(tree, [&all](const MeshWithHoles3d<T>& node) {
    const Points<T>& vertices = node.getExteriorMesh().getVertexColl();
    all.insert(all.end(), vertices.begin(), vertices.end());
    return true;
  });
  return all;
}

/// The points that an entity is made of.
template <class T>
Points<T> pointsOf(const BaseGeometryEntity3d& entity) {
  if (const auto* point = dynamic_cast<const Point3d<T>*>(&entity)) return {point->getCoords()};
  if (const auto* segment = dynamic_cast<const Segment3d<T>*>(&entity))
    return {segment->getPoint0(), segment->getPoint1()};
  if (const auto* triangle = dynamic_cast<const Triangle3d<T>*>(&entity))
    return {triangle->getPoint0(), triangle->getPoint1(), triangle->getPoint2()};
  if (const auto* box = dynamic_cast<const BoundingBox3d<T>*>(&entity))
    return {box->getMinCornerPt(), box->getMaxCornerPt()};
  if (const auto* cloud = dynamic_cast<const PointCloud3d<T>*>(&entity)) return cloud->getCollection();
  if (const auto* mesh = dynamic_cast<const Mesh3d<T>*>(&entity)) return mesh->getVertexColl();
  if (const auto* tree = dynamic_cast<const MeshWithHoles3d<T>*>(&entity)) return verticesOf(*tree);
  if constexpr (std::is_same_v<T, omReal32>)
    return verticesOf(*dynamic_cast<const Shape3d&>(entity).getMeshWithHolesColl().at(0));
  throw std::bad_cast();
}

template <class T>
class LinearTransform3dImage : public ::testing::Test {
 protected:
  template <class Transform, class Math>
  void expectImagesOfThePoints(const Math& math) {
    GeometryEntity3dPtrColl entities{boost::make_shared<Point3d<T>>(Sample<Point3d<T>>::make()),
                                     boost::make_shared<Segment3d<T>>(Sample<Segment3d<T>>::make()),
                                     boost::make_shared<Triangle3d<T>>(Sample<Triangle3d<T>>::make()),
                                     boost::make_shared<BoundingBox3d<T>>(Sample<BoundingBox3d<T>>::make()),
                                     boost::make_shared<PointCloud3d<T>>(Sample<PointCloud3d<T>>::make()),
                                     boost::make_shared<Mesh3d<T>>(Sample<Mesh3d<T>>::make()),
                                     boost::make_shared<MeshWithHoles3d<T>>(Sample<MeshWithHoles3d<T>>::make())};
    if constexpr (std::is_same_v<T, omReal32>) entities.push_back(boost::make_shared<Shape3d>(Sample<Shape3d>::make()));
    int nbImages = 0;
    for (const GeometryEntity3dPtr& entity : entities) {
      const GeometryEntity3dPtr image = Transform(math).apply(entity);
      if (!image) continue;
      ++nbImages;
      Points<T> expected = pointsOf<T>(*entity);
      for (Point3dData<T>& point : expected) {
        T x{};
        T y{};
        T z{};
        ASSERT_TRUE(math.apply(point.getX(), point.getY(), point.getZ(), x, y, z));
        point.setCoords(x, y, z);
      }
      EXPECT_EQ(pointsOf<T>(*image), expected) << toString(math.getType()) << toString(entity->getEntity3dType());
    }
    EXPECT_GE(nbImages, 5);
  }
};
using ScalarTypes = ::testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(LinearTransform3dImage, ScalarTypes, );

TYPED_TEST(LinearTransform3dImage, IsMadeOfTheImagesOfThePoints) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  std::uniform_real_distribution<omReal64> any(-10, 10);
  std::uniform_real_distribution<omReal64> small(-0.002, 0.002);
  const auto n = [&] { return any(random); };
  for (int count = 0; count < 10; ++count) {
    this->template expectImagesOfThePoints<TranslationTransform3d>(Translation3d(n(), n(), n()));
    this->template expectImagesOfThePoints<RotationTransform3d>(Rotation3d(n(), n(), n()));
    this->template expectImagesOfThePoints<RigidTransform3d>(Rigid3d(n(), n(), n(), n(), n(), n()));
    this->template expectImagesOfThePoints<ScaleTransform3d>(Scale3d(n()));
    this->template expectImagesOfThePoints<SimilarityTransform3d>(Similarity3d(n(), n(), n(), n(), n(), n(), n()));
    this->template expectImagesOfThePoints<AnisotropicScaleTransform3d>(AnisotropicScale3d(n(), n(), n()));
    std::array<omReal64, 16> rows;
    std::generate(rows.begin(), rows.begin() + 12, n);
    std::generate(rows.begin() + 12, rows.end(), [&] { return small(random); });
    rows[15] = 1;
    this->template expectImagesOfThePoints<HomographyTransform3d>(Homography3d(matrix<4>(rows)));
  }
}

/// Points enough for several blocks and a part of one; from `bad` on, where it is there, points of no image.
template <class T>
Points<T> manyPoints(std::size_t bad = 700) {
  Points<T> points;
  for (std::size_t index = 0; index < 700; ++index)
    points.emplace_back(static_cast<T>(3 * index % 251), static_cast<T>(index), static_cast<T>(7 * index % 300));
  for (std::size_t index = bad; index < points.size(); index += 40) points[index].setX(1000);
  return points;
}

/// A cloud, a mesh and a tree of meshes, the points last in each, with a null hole; of omReal32 a shape of two trees.
template <class T>
GeometryEntity3dPtrColl entitiesOfRuns(const Points<T>& points) {
  const auto mesh = boost::make_shared<Mesh3d<T>>();
  mesh->setMesh3dType(eM3DT_Interior);
  EXPECT_TRUE(mesh->build(points, {0, 1, 2, 2, 1, 3, 699, 500, 600}));
  const auto tree = boost::make_shared<MeshWithHoles3d<T>>(Sample<MeshWithHoles3d<T>>::make());
  tree->getMeshHoles().back()->getExteriorMesh() = *mesh;
  tree->getMeshHoles().insert(tree->getMeshHoles().begin(), nullptr);
  GeometryEntity3dPtrColl entities{boost::make_shared<PointCloud3d<T>>(points), mesh, tree};
  if constexpr (std::is_same_v<T, omReal32>) {
    const auto shape = boost::make_shared<Shape3d>(Sample<Shape3d>::make());
    shape->getMeshWithHolesColl().push_back(nullptr);
    shape->getMeshWithHolesColl().push_back(tree);
    entities.push_back(shape);
  }
  return entities;
}

template <class T>
std::string printed(const BaseGeometryEntity3d& entity) {
  if (const auto* cloud = dynamic_cast<const PointCloud3d<T>*>(&entity)) return describe(*cloud);
  if (const auto* mesh = dynamic_cast<const Mesh3d<T>*>(&entity))
    return toString(mesh->getMesh3dType()) + describe(*mesh);
  if (const auto* tree = dynamic_cast<const MeshWithHoles3d<T>*>(&entity)) return describe(*tree);
  Shape3d shape = dynamic_cast<const Shape3d&>(entity);
  const auto removed = std::remove(shape.getMeshWithHolesColl().begin(), shape.getMeshWithHolesColl().end(), nullptr);
  EXPECT_NE(removed, shape.getMeshWithHolesColl().end()) << "the null mesh has gone";
  shape.getMeshWithHolesColl().erase(removed, shape.getMeshWithHolesColl().end());
  return describe(shape);
}

template <class T>
class ImageOfRuns3d : public ::testing::Test {};
TYPED_TEST_SUITE(ImageOfRuns3d, ScalarTypes, );

TYPED_TEST(ImageOfRuns3d, IsTheEntityTransformedInPlace) {
  for (const GeometryEntity3dPtr& entity : entitiesOfRuns(manyPoints<TypeParam>()))
    expectImagesAreThoseInPlace(*entity, s_transforms, printed<TypeParam>);
}

TYPED_TEST(ImageOfRuns3d, IsNoneAndIsLoggedAsInPlaceWhereAPointHasNone) {
  const HomographyTransform3d homography(matrix<4>({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, -1, 0, 0, 1000}));
  for (const std::size_t bad : {0, 84, 85, 169, 170, 171, 340, 699})
    for (const GeometryEntity3dPtr& entity : entitiesOfRuns(manyPoints<TypeParam>(bad)))
      expectNoImage(homography, *entity, printed<TypeParam>,
                    "Failed to apply eT3DT_HomographyTransform transformation on point 3d with coordinates "
                    "{1000.000000, " +
                        std::to_string(bad) + ".000000, " + std::to_string(7 * bad % 300) + ".000000}");
}

TEST(ImageOfEntities3d, OfADerivedClassAndOfATreeKeepsWhatBelongsToThem) {
  struct NamedCloud : PointCloud3d<omReal64> {
    boost::shared_ptr<BaseDynamicObject> duplicateShared() const override {
      return boost::make_shared<NamedCloud>(*this);
    }
    std::string name;
  } cloud;
  cloud.name = "left camera";
  const auto image = boost::dynamic_pointer_cast<NamedCloud>(s_scale.apply(cloud));
  ASSERT_TRUE(image);
  EXPECT_EQ(image->name, cloud.name);

  const auto tree = boost::dynamic_pointer_cast<MeshWithHoles3d<omReal64>>(
      s_anisotropic.apply(Sample<MeshWithHoles3d<omReal64>>::make()));
  ASSERT_TRUE(tree);
  EXPECT_FALSE(tree->getParent());
  EXPECT_EQ(tree->getMeshHoles()[0]->getParent(), tree);
  EXPECT_EQ(tree->getMeshHoles()[0]->getMeshHoles()[0]->getParent(), tree->getMeshHoles()[0]);
  EXPECT_TRUE(tree->getExteriorMesh().checkIntegrity());
}

TEST(LinearTransform3dImageOfShape, LeavesTheVoxels) {
  Shape3d shape = Sample<Shape3d>::make();
  const RowIntersections3d voxels = shape.getRowIntersections();
  ASSERT_TRUE(s_translation.applyInSitu(shape));
  EXPECT_EQ(shape.getRowIntersections(), voxels);
}

// Vectors are shifted as positions are: stored results rely on it.
TEST(LinearTransform3dOddity, TranslationShiftsVectors) {
  Vector3d vector;
  vector.setCoords(Point3dData<omReal64>(1, 0, 2));
  ASSERT_TRUE(s_translation.applyInSitu(vector));
  EXPECT_TRUE(compare(Point3dData<omReal64>(vector.getX(), vector.getY(), vector.getZ()), {4, 5, 9}, 1e-14));
}

TEST(LinearTransform3dFailure, ChangesNothing) {
  constexpr omReal64 infinity = std::numeric_limits<omReal64>::infinity();
  Segment3d<omReal64> segment(1, 2, 3, infinity, 0, 0);
  EXPECT_FALSE(s_rigid.applyInSitu(segment));
  EXPECT_EQ(segment.getPoint0(), Point3dData<omReal64>(1, 2, 3));
  Point3d<omReal32> large(0, 3e38f, 0);
  EXPECT_FALSE(s_scale.applyInSitu(large));
  EXPECT_EQ(large, Point3d<omReal32>(0, 3e38f, 0));
  Sphere3d<omReal64> sphere({1, 2, 3}, infinity);
  EXPECT_FALSE(s_scale.applyInSitu(sphere));
  EXPECT_EQ(sphere.center(), Point3dData<omReal64>(1, 2, 3));
}

TEST(LinearTransform3dFailure, OfNullPointersIsAResult) { expectNullPointersFail(s_scale); }

TEST(Convert3d, GivesTheTransformOfTheSameParameters) {
  const Point3d<omReal64> point(3, 4, 5);
  expectConverted(s_translation, point);
  expectConverted(s_rotation, point);
  expectConverted(s_rigid, point);
  expectConverted(s_scale, point);
  expectConverted(s_similarity, point);
  expectConverted(s_anisotropic, point);
  expectConverted(s_homography, point);
}

TEST(Convert3d, RefusesAnAffineTransform) { expectAffineIsRefused(Affine3d()); }

TEST(ApplyAll3d, StopsAtTheFirstFailure) {
  const auto sphere = [] { return boost::make_shared<Sphere3d<omReal64>>(1, 1, 1, 1); };
  expectApplyAllStopsAtTheFirstFailure(s_scale, sphere, boost::make_shared<Plan3d>(1, 0, 0));
}

}  // namespace
