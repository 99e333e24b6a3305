// Type codes, coordinate systems and their texts, class by class; ellipse and square answer another family's code.

#include <ORMIXGeometry/ORMIXGeometry.h>
#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace ormix;
using namespace ormix::geom;

template <class Entity>
void expectType(int value, const std::string& name, eCoordinateSystem2dType system = eCS2DT_Cartesian) {
  const Entity entity;
  const BaseGeometryEntity2d& base = entity;
  EXPECT_EQ(static_cast<int>(base.getEntity2dType()), value) << Entity::getTypeName();
  EXPECT_EQ(toString(base.getEntity2dType()), name) << Entity::getTypeName();
  EXPECT_EQ(base.getCoordinateSystem2dType(), system) << Entity::getTypeName();
  EXPECT_EQ(base.getCoordinateDimension(), eCD_2d);
}
template <template <class> class Entity>
void expectTypes(int value, const std::string& name) {
  expectType<Entity<omInt32>>(value, name);
  expectType<Entity<omUInt32>>(value, name);
  expectType<Entity<omReal32>>(value, name);
  expectType<Entity<omReal64>>(value, name);
}

TEST(EntityType, OfEachClass) {
  expectTypes<Point2d>(0, "eE2DT_Point");
  expectType<Vector2d>(1, "eE2DT_Vector", eCS2DT_Polar);
  expectTypes<BoundingBox2d>(2, "eE2DT_BoundingBox");
  expectTypes<Ellipse2d>(2, "eE2DT_BoundingBox");
  expectTypes<PointCloud2d>(3, "eE2DT_PointCloud");
  expectTypes<Polygon2d>(4, "eE2DT_Polygon");
  expectTypes<PolygonWithHoles2d>(5, "eE2DT_PolygonWithHoles");
  expectTypes<Circle2d>(7, "eE2DT_Circle");
  expectTypes<Square2d>(7, "eE2DT_Circle");
  expectTypes<Rectangle2d>(10, "eE2DT_Rectangle");
  expectType<Line2d>(11, "eE2DT_Line", eCS2DT_Polar);
  expectType<Parabola2d>(12, "eE2DT_Parabola");
  expectTypes<Segment2d>(14, "eE2DT_Segment");
}

TEST(EntityType, PrintsItsName) {
  std::ostringstream text;
  text << eE2DT_Skeleton << ' ' << eE2DT_Square << ' ' << eCD_3d << ' ' << eCS2DT_Polar << ' ' << eHMP_IgnoreHoles
       << ' ' << eM2DT_HuMoments << ' ' << eP2DT_Interior;
  EXPECT_EQ(text.str(),
            "eE2DT_Skeleton eE2DT_Square eCD_3d eCS2DT_Polar eHMP_IgnoreHoles eM2DT_HuMoments eP2DT_Interior");
  EXPECT_EQ(toString(static_cast<eEntity2dType>(15)), "eEntity2dType(15)");
}

}  // namespace
