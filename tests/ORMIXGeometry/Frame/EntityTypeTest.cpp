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

template <class Entity>
void expectType3d(int value, const std::string& name, eCoordinateSystem3dType system = eCS3DT_Cartesian) {
  const Entity entity;
  const BaseGeometryEntity3d& base = entity;
  EXPECT_EQ(static_cast<int>(base.getEntity3dType()), value) << Entity::getTypeName();
  EXPECT_EQ(toString(base.getEntity3dType()), name) << Entity::getTypeName();
  EXPECT_EQ(base.getCoordinateSystem3dType(), system) << Entity::getTypeName();
  EXPECT_EQ(base.getCoordinateDimension(), eCD_3d);
}
template <template <class> class Entity>
void expectTypes3d(int value, const std::string& name) {
  expectType3d<Entity<omInt32>>(value, name);
  expectType3d<Entity<omUInt32>>(value, name);
  expectType3d<Entity<omReal32>>(value, name);
  expectType3d<Entity<omReal64>>(value, name);
}

TEST(EntityType, OfEachPlanarClass) {
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

TEST(EntityType, OfEachSpatialClass) {
  expectTypes3d<Point3d>(0, "eE3DT_Point");
  expectType3d<Vector3d>(1, "eE3DT_Vector", eCS3DT_Spherical);
  expectTypes3d<BoundingBox3d>(2, "eE3DT_BoundingBox");
  expectTypes3d<PointCloud3d>(3, "eE3DT_PointCloud");
  expectTypes3d<Sphere3d>(4, "eE3DT_Sphere");
  expectTypes3d<Ellipsoid3d>(5, "eE3DT_Ellipsoid");
  expectTypes3d<Cube3d>(6, "eE3DT_Cube");
  expectTypes3d<Cuboid3d>(7, "eE3DT_Cuboid");
  expectTypes3d<Mesh3d>(8, "eE3DT_Mesh");
  expectTypes3d<MeshWithHoles3d>(9, "eE3DT_MeshWithHoles");
  expectType3d<Shape3d>(10, "eE3DT_Shape");
  expectType3d<Plan3d>(11, "eE3DT_Plan", eCS3DT_Spherical);
  expectTypes3d<Segment3d>(12, "eE3DT_Segment");
  expectTypes3d<Triangle3d>(13, "eE3DT_Triangle");
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
