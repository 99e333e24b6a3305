// Class by class: type code and text, coordinate system, print, and that getters and setters belong together.

#include "support/Checks.h"
#include "support/SampleObjects.h"

namespace {

using namespace samples;
using support::printed;

/// A row of the table; an empty text stands for one that has addresses.
template <class X>
void expectEntity(int code, const std::string& type, const std::string& text, bool isCartesian = true) {
  SCOPED_TRACE(X::getTypeName());
  const X sample = Sample<X>::make();
  EXPECT_EQ(text.empty() ? "" : printed(sample), text);
  const auto expect = [&](auto entityType, auto system, auto expectedSystem, eCoordinateDimension dimension) {
    EXPECT_EQ(static_cast<int>(entityType), code);
    EXPECT_EQ(toString(entityType), type);
    EXPECT_EQ(system, expectedSystem);
    EXPECT_EQ(sample.getCoordinateDimension(), dimension);
  };
  if constexpr (std::is_base_of_v<BaseGeometryEntity2d, X>)
    expect(sample.getEntity2dType(), sample.getCoordinateSystem2dType(), isCartesian ? eCS2DT_Cartesian : eCS2DT_Polar,
           eCD_2d);
  else
    expect(sample.getEntity3dType(), sample.getCoordinateSystem3dType(),
           isCartesian ? eCS3DT_Cartesian : eCS3DT_Spherical, eCD_3d);
}
template <template <class> class X>
void expectEntities(int code, const std::string& type, const std::string& text) {
  expectEntity<X<omInt32>>(code, type, text);
  expectEntity<X<omUInt32>>(code, type, text);
  expectEntity<X<omReal32>>(code, type, text);
  expectEntity<X<omReal64>>(code, type, text);
}

TEST(EntityTable, OfThePlane) {
  expectEntities<Point2d>(0, "eE2DT_Point", "[3, 4]");
  expectEntity<Vector2d>(1, "eE2DT_Vector", "[1.82922, -1.7041]", false);
  expectEntities<BoundingBox2d>(2, "eE2DT_BoundingBox", "[min=[1, 2], max=[5, 9]]");
  expectEntities<Ellipse2d>(2, "eE2DT_BoundingBox", "[center=[1, 2], a=5, b=3, theta=0.25]");
  expectEntities<PointCloud2d>(3, "eE2DT_PointCloud", "[[1, 2], [3, 4], [5, 6]]");
  expectEntities<Polygon2d>(4, "eE2DT_Polygon", "[[2, 3], [12, 3], [12, 13], [2, 13], [2, 3]]");
  const std::string tree =
      "[exterior=[[0, 0], [100, 0], [100, 100], [0, 100], [0, 0]], holes=["
      "[exterior=[[10, 10], [40, 10], [40, 40], [10, 40], [10, 10]], holes=["
      "[exterior=[[20, 20], [25, 20], [25, 25], [20, 25], [20, 20]], holes=[]]]], "
      "[exterior=[[50, 50], [60, 50], [60, 60], [50, 60], [50, 50]], holes=[]]]]";
  expectEntities<PolygonWithHoles2d>(5, "eE2DT_PolygonWithHoles", tree);
  expectEntity<Shape2d>(6, "eE2DT_Shape", "[" + tree + "]");
  expectEntities<Circle2d>(7, "eE2DT_Circle", "[center=[1, 2], radius=3]");
  expectEntities<Square2d>(7, "eE2DT_Circle", "[center=[1, 2], l=8, theta=0.125]");
  expectEntities<Rectangle2d>(10, "eE2DT_Rectangle", "[center=[1, 2], length=8, width=4, theta=0.5]");
  expectEntity<Line2d>(11, "eE2DT_Line", "[rho=1.25, theta=0.5]", false);
  expectEntity<Parabola2d>(12, "eE2DT_Parabola", "[focus=[1, 2], directrix=[rho=-1.5, theta=0.75]]");
  expectEntity<Skeleton2d>(13, "eE2DT_Skeleton",
                           "[vertices=[[point=[0.5, 3.5], radius=0.5, edges=[0]], [point=[0.5, 1], radius=0.5, "
                           "edges=[0, 1]], [point=[0.75, 0.625], radius=0.75, edges=[1]]], edges=[[0, 1], [1, 2]]]");
  expectEntity<SkeletonVertex2d>(13, "eE2DT_Skeleton", "[point=[1, 2], radius=0.5, edges=[3, 4]]");
  expectEntities<Segment2d>(14, "eE2DT_Segment", "[p0=[1, 2], p1=[7, 5]]");
  expectEntities<Arc2d>(15, "eE2DT_Arc", "[center=[1, 2], radius=3, start=0.25, sweep=-1.5]");
}

TEST(EntityTable, OfSpace) {
  expectEntities<Point3d>(0, "eE3DT_Point", "[3, 4, 5]");
  expectEntity<Vector3d>(1, "eE3DT_Vector", "[1.49549, -0.816988, 1.82922]", false);
  expectEntities<BoundingBox3d>(2, "eE3DT_BoundingBox", "[min=[1, 2, 3], max=[5, 9, 4]]");
  expectEntities<PointCloud3d>(3, "eE3DT_PointCloud", "[[1, 2, 3], [4, 5, 6]]");
  expectEntities<Sphere3d>(4, "eE3DT_Sphere", "[center=[1, 2, 3], radius=4]");
  expectEntities<Ellipsoid3d>(5, "eE3DT_Ellipsoid",
                              "[center=[1, 2, 3], a=6, b=5, c=4, chi=0.75, beta=0.5, alpha=0.25]");
  expectEntities<Cube3d>(6, "eE3DT_Cube", "[center=[1, 2, 3], l=8, chi=0.75, beta=0.5, alpha=0.25]");
  expectEntities<Cuboid3d>(7, "eE3DT_Cuboid", "[center=[1, 2, 3], l=12, w=10, h=8, chi=0.75, beta=0.5, alpha=0.25]");
  expectEntities<Mesh3d>(8, "eE3DT_Mesh",
                         "[vertices=[[1, 2, 3], [6, 2, 3], [1, 7, 3], [1, 2, 8]], "
                         "triangles=[[0, 2, 1], [0, 1, 3], [0, 3, 2], [1, 2, 3]]]");
  expectEntities<MeshWithHoles3d>(9, "eE3DT_MeshWithHoles", "");
  expectEntity<Shape3d>(10, "eE3DT_Shape", "");
  expectEntity<Plan3d>(11, "eE3DT_Plan", "[rho=1.25, theta=0.5, phi=-0.25]", false);
  expectEntities<Segment3d>(12, "eE3DT_Segment", "[p0=[1, 2, 3], p1=[7, 5, 6]]");
  expectEntities<Triangle3d>(13, "eE3DT_Triangle", "[pt0=[1, 2, 3], pt1=[7, 5, 6], pt2=[4, 8, 9]]");
  expectEntities<Cylinder3d>(14, "eE3DT_Cylinder", "[p0=[1, 2, 3], p1=[7, 5, 6], radius=4]");
  expectEntities<Cone3d>(15, "eE3DT_Cone", "[p0=[1, 2, 3], p1=[7, 5, 6], radius0=4, radius1=2]");
  expectEntities<Torus3d>(16, "eE3DT_Torus", "[center=[1, 2, 3], axis=[0, 0.6, 0.8], R=5, r=2]");
  expectEntities<Circle3d>(17, "eE3DT_Circle", "[center=[1, 2, 3], normal=[0, 0.6, 0.8], radius=4]");
  expectEntity<Line3d>(18, "eE3DT_Line", "[point=[1, -0.16, 0.12], direction=[0, 0.6, 0.8]]");
}

TEST(EntityTable, OfWhatIsEmptyAndOfEnumerators) {
  EXPECT_EQ(printed(PointCloud2d<omInt32>()) + printed(Polygon2d<omInt32>()) + printed(Shape3d()), "[][][]");
  EXPECT_EQ(printed(Mesh3d<omInt32>()), "[vertices=[], triangles=[]]");
  std::ostringstream text;
  text << eE2DT_Skeleton << ' ' << eE2DT_Square << ' ' << eCD_3d << ' ' << eCS2DT_Polar << ' ' << eHMP_IgnoreHoles
       << ' ' << eM2DT_HuMoments << ' ' << eP2DT_Interior;
  EXPECT_EQ(text.str(),
            "eE2DT_Skeleton eE2DT_Square eCD_3d eCS2DT_Polar eHMP_IgnoreHoles eM2DT_HuMoments eP2DT_Interior");
  EXPECT_EQ(toString(static_cast<eEntity3dType>(19)), "eEntity3dType(19)");
}

template <class T>
class GettersAndSetters : public ::testing::Test {
 protected:
  /// An object whose setters are given what the sample's getters say is like the sample.
  template <template <class> class X, class Set>
  static void expectRebuilt(Set set) {
    const X<T> sample = Sample<X<T>>::make();
    X<T> rebuilt;
    set(rebuilt, sample);
    EXPECT_EQ(describe(rebuilt), describe(sample)) << X<T>::getTypeName();
  }
};
TYPED_TEST_SUITE(GettersAndSetters, support::Scalars);

TYPED_TEST(GettersAndSetters, OfThePlaneBelongTogether) {
  using P = Point2d<TypeParam>;
  const auto centerOf = [](const auto& from) { return P(from.centerX(), from.centerY()); };
  this->template expectRebuilt<Circle2d>(
      [&](auto& to, auto& from) { to.setCenter(centerOf(from)), to.setRadius(from.getRadius()); });
  this->template expectRebuilt<Ellipse2d>([&](auto& to, auto& from) {
    to.setCenter(centerOf(from)), to.setMajorRadius(from.getMajorRadius()), to.setMinorRadius(from.getMinorRadius());
    to.setTheta(std::atan2(from.getSinTheta(), from.getCosTheta()));
  });
  this->template expectRebuilt<Arc2d>([&](auto& to, auto& from) {
    to.setCenter(from.center()), to.setRadius(from.getRadius()), to.setAngles(from.getStartAngle(), from.getSweep());
  });
  this->template expectRebuilt<Square2d>([&](auto& to, auto& from) {
    to.setCenter(centerOf(from)), to.setHalfLength(from.getLength() / 2), to.setOrientation(from.getOrientation());
  });
  this->template expectRebuilt<Rectangle2d>([&](auto& to, auto& from) {
    to.setCenter(centerOf(from)), to.setHalfLength(from.getLength() / 2), to.setHalfWidth(from.getWidth() / 2);
    to.setOrientation(from.getOrientation());
  });
  this->template expectRebuilt<BoundingBox2d>([](auto& to, auto& from) {
    to.setMinCornerPt(P(from.getXMin(), 9)), to.setYMin(from.getYMin());
    to.setMaxCornerPt(P(9, from.getYMax())), to.setXMax(from.getXMax());
  });
}

TYPED_TEST(GettersAndSetters, OfSpaceBelongTogether) {
  using P = Point3d<TypeParam>;
  const auto centerOf = [](const auto& from) { return P(from.centerX(), from.centerY(), from.centerZ()); };
  const auto setAngles = [](auto& to, auto& from) {
    to.setAlpha(from.getAlpha()), to.setBeta(from.getBeta()), to.setChi(from.getChi());
  };
  this->template expectRebuilt<BoundingBox3d>([](auto& to, auto& from) {
    to.setMinCornerPt(P(from.getXMin(), 9, 9)), to.setYMin(from.getYMin()), to.setZMin(from.getZMin());
    to.setMaxCornerPt(P(9, 9, from.getZMax())), to.setXMax(from.getXMax()), to.setYMax(from.getYMax());
  });
  this->template expectRebuilt<Sphere3d>([](auto& to, auto& from) {
    to.setCenter(from.centerX(), from.centerY(), from.centerZ()), to.setRadius(from.getRadius());
  });
  this->template expectRebuilt<Ellipsoid3d>([&](auto& to, auto& from) {
    to.setCenter(centerOf(from)), to.setMajorRadius(from.getMajorRadius()), to.setMediumRadius(from.getMediumRadius());
    to.setMinorRadius(from.getMinorRadius()), to.setOrientation(from.getAlpha(), from.getBeta(), from.getChi());
  });
  this->template expectRebuilt<Cuboid3d>([&](auto& to, auto& from) {
    to.setCenter(centerOf(from)), to.setHalfLength(from.getLength() / 2), to.setHalfWidth(from.getWidth() / 2);
    to.setHalfHeight(from.getHeight() / 2), setAngles(to, from);
  });
  this->template expectRebuilt<Cylinder3d>([](auto& to, auto& from) {
    to.setPoint0(from.getPoint0()), to.setPoint1(from.getPoint1()), to.setRadius(from.getRadius());
  });
  this->template expectRebuilt<Cone3d>([](auto& to, auto& from) {
    to.setPoint0(from.getPoint0()), to.setPoint1(from.getPoint1());
    to.setRadius0(from.getRadius0()), to.setRadius1(from.getRadius1());
  });
  this->template expectRebuilt<Torus3d>([](auto& to, auto& from) {
    to.setCenter(from.center()), to.setAxis(from.getAxis()), to.setMajorRadius(from.getMajorRadius());
    to.setMinorRadius(from.getMinorRadius());
  });
  this->template expectRebuilt<Circle3d>([](auto& to, auto& from) {
    to.setCenter(from.center()), to.setNormal(from.getNormal()), to.setRadius(from.getRadius());
  });
  this->template expectRebuilt<Segment3d>(
      [](auto& to, auto& from) { to.setPoint0(P(from.getPoint0())), to.setPoint1(P(from.getPoint1())); });
  this->template expectRebuilt<Triangle3d>([](auto& to, auto& from) {
    to.setPoint0(P(from.getPoint0())), to.setPoint1(P(from.getPoint1())), to.setPoint2(P(from.getPoint2()));
  });
}

}  // namespace
