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
  if (!text.empty()) {
    EXPECT_EQ(printed(sample), text);
  }
  if constexpr (std::is_base_of_v<BaseGeometryEntity2d, X>) {
    EXPECT_EQ(static_cast<int>(sample.getEntity2dType()), code);
    EXPECT_EQ(toString(sample.getEntity2dType()), type);
    EXPECT_EQ(sample.getCoordinateSystem2dType(), isCartesian ? eCS2DT_Cartesian : eCS2DT_Polar);
    EXPECT_EQ(sample.getCoordinateDimension(), eCD_2d);
  } else {
    EXPECT_EQ(static_cast<int>(sample.getEntity3dType()), code);
    EXPECT_EQ(toString(sample.getEntity3dType()), type);
    EXPECT_EQ(sample.getCoordinateSystem3dType(), isCartesian ? eCS3DT_Cartesian : eCS3DT_Spherical);
    EXPECT_EQ(sample.getCoordinateDimension(), eCD_3d);
  }
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
  expectEntities<PolygonWithHoles2d>(5, "eE2DT_PolygonWithHoles",
                                     "[exterior=[[0, 0], [100, 0], [100, 100], [0, 100], [0, 0]], holes=["
                                     "[exterior=[[10, 10], [40, 10], [40, 40], [10, 40], [10, 10]], holes=["
                                     "[exterior=[[20, 20], [25, 20], [25, 25], [20, 25], [20, 20]], holes=[]]]], "
                                     "[exterior=[[50, 50], [60, 50], [60, 60], [50, 60], [50, 50]], holes=[]]]]");
  expectEntities<Circle2d>(7, "eE2DT_Circle", "[center=[1, 2], radius=3]");
  expectEntities<Square2d>(7, "eE2DT_Circle", "[center=[1, 2], l=8, theta=0.125]");
  expectEntities<Rectangle2d>(10, "eE2DT_Rectangle", "[center=[1, 2], length=8, width=4, theta=0.5]");
  expectEntity<Line2d>(11, "eE2DT_Line", "[rho=1.25, theta=0.5]", false);
  expectEntity<Parabola2d>(12, "eE2DT_Parabola", "[focus=[1, 2], directrix=[rho=-1.5, theta=0.75]]");
  expectEntities<Segment2d>(14, "eE2DT_Segment", "[p0=[1, 2], p1=[7, 5]]");
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
}

TEST(EntityTable, OfWhatIsEmptyAndOfEnumerators) {
  EXPECT_EQ(printed(PointCloud2d<omInt32>()) + printed(Polygon2d<omInt32>()) + printed(Shape3d()), "[][][]");
  EXPECT_EQ(printed(Mesh3d<omInt32>()), "[vertices=[], triangles=[]]");
  std::ostringstream text;
  text << eE2DT_Skeleton << ' ' << eE2DT_Square << ' ' << eCD_3d << ' ' << eCS2DT_Polar << ' ' << eHMP_IgnoreHoles
       << ' ' << eM2DT_HuMoments << ' ' << eP2DT_Interior;
  EXPECT_EQ(text.str(),
            "eE2DT_Skeleton eE2DT_Square eCD_3d eCS2DT_Polar eHMP_IgnoreHoles eM2DT_HuMoments eP2DT_Interior");
  EXPECT_EQ(toString(static_cast<eEntity2dType>(15)), "eEntity2dType(15)");
}

/// Each entity made anew from what its getters say, by its setters.
template <class T>
struct Rebuilt {
  static void set(Circle2d<T>& to, const Circle2d<T>& from) {
    to.setCenter(Point2d<T>(from.centerX(), from.centerY()));
    to.setRadius(from.getRadius());
  }
  static void set(Ellipse2d<T>& to, const Ellipse2d<T>& from) {
    to.setCenter(Point2d<T>(from.centerX(), from.centerY()));
    to.setMajorRadius(from.getMajorRadius());
    to.setMinorRadius(from.getMinorRadius());
    to.setTheta(std::atan2(from.getSinTheta(), from.getCosTheta()));
  }
  static void set(Square2d<T>& to, const Square2d<T>& from) {
    to.setCenter(Point2d<T>(from.centerX(), from.centerY()));
    to.setHalfLength(from.getLength() / 2);
    to.setOrientation(from.getOrientation());
  }
  static void set(Rectangle2d<T>& to, const Rectangle2d<T>& from) {
    to.setCenter(Point2d<T>(from.centerX(), from.centerY()));
    to.setHalfLength(from.getLength() / 2);
    to.setHalfWidth(from.getWidth() / 2);
    to.setOrientation(from.getOrientation());
  }
  static void set(BoundingBox2d<T>& to, const BoundingBox2d<T>& from) {
    to.setMinCornerPt(Point2d<T>(from.getXMin(), 9));
    to.setYMin(from.getYMin());
    to.setMaxCornerPt(Point2d<T>(9, from.getYMax()));
    to.setXMax(from.getXMax());
  }
  static void set(BoundingBox3d<T>& to, const BoundingBox3d<T>& from) {
    to.setMinCornerPt(Point3d<T>(from.getXMin(), 9, 9));
    to.setYMin(from.getYMin());
    to.setZMin(from.getZMin());
    to.setMaxCornerPt(Point3d<T>(9, 9, from.getZMax()));
    to.setXMax(from.getXMax());
    to.setYMax(from.getYMax());
  }
  static void set(Sphere3d<T>& to, const Sphere3d<T>& from) {
    to.setCenter(from.centerX(), from.centerY(), from.centerZ());
    to.setRadius(from.getRadius());
  }
  static void set(Ellipsoid3d<T>& to, const Ellipsoid3d<T>& from) {
    to.setCenter(Point3d<T>(from.centerX(), from.centerY(), from.centerZ()));
    to.setMajorRadius(from.getMajorRadius());
    to.setMediumRadius(from.getMediumRadius());
    to.setMinorRadius(from.getMinorRadius());
    to.setOrientation(from.getAlpha(), from.getBeta(), from.getChi());
  }
  static void set(Cuboid3d<T>& to, const Cuboid3d<T>& from) {
    to.setCenter(Point3d<T>(from.centerX(), from.centerY(), from.centerZ()));
    to.setHalfLength(from.getLength() / 2);
    to.setHalfWidth(from.getWidth() / 2);
    to.setHalfHeight(from.getHeight() / 2);
    to.setAlpha(from.getAlpha());
    to.setBeta(from.getBeta());
    to.setChi(from.getChi());
  }
  static void set(Segment3d<T>& to, const Segment3d<T>& from) {
    to.setPoint0(Point3d<T>(from.getPoint0()));
    to.setPoint1(Point3d<T>(from.getPoint1()));
  }
  static void set(Triangle3d<T>& to, const Triangle3d<T>& from) {
    to.setPoint0(Point3d<T>(from.getPoint0()));
    to.setPoint1(Point3d<T>(from.getPoint1()));
    to.setPoint2(Point3d<T>(from.getPoint2()));
  }

  template <class X>
  static void expectSame() {
    const X sample = Sample<X>::make();
    X rebuilt;
    set(rebuilt, sample);
    EXPECT_EQ(describe(rebuilt), describe(sample)) << X::getTypeName();
  }
  template <template <class> class... X>
  static void expectEach() {
    (expectSame<X<T>>(), ...);
  }
};

template <class T>
class GettersAndSetters : public ::testing::Test {};
TYPED_TEST_SUITE(GettersAndSetters, support::Scalars);

TYPED_TEST(GettersAndSetters, BelongTogether) {
  Rebuilt<TypeParam>::template expectEach<Circle2d, Ellipse2d, Square2d, Rectangle2d, BoundingBox2d, BoundingBox3d,
                                          Sphere3d, Ellipsoid3d, Cuboid3d, Segment3d, Triangle3d>();
}

}  // namespace
