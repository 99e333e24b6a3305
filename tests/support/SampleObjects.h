#pragma once

// One object of every registered class, with values unlike its defaults, and the list of all classes: what is uniform
// is tested over this list.

#include <ORMIXGeometry/ORMIXGeometry.h>
#include <gtest/gtest.h>

#include <array>
#include <boost/numeric/ublas/matrix.hpp>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <iomanip>
#include <sstream>
#include <string>
#include <vector>

namespace samples {

using namespace ormix;
using namespace ormix::geom;

template <std::size_t n>
auto matrix(const std::array<omReal64, n * n>& rows) {
  boost::numeric::ublas::bounded_matrix<omReal64, n, n> result(n, n);
  for (std::size_t index = 0; index < n * n; ++index) result(index / n, index % n) = rows[index];
  return result;
}
inline Matrix3x3 matrix(const std::array<omReal64, 9>& rows) { return matrix<3>(rows); }

template <class T>
Polygon2d<T> ring(ePolygon2dType type, T x, T y, T side) {
  Polygon2d<T> polygon;
  polygon.setPolygon2dType(type);
  polygon.getPointColl() = {{x, y}, {T(x + side), y}, {T(x + side), T(y + side)}, {x, T(y + side)}, {x, y}};
  return polygon;
}

template <class X>
struct Sample;
template <class T>
struct Sample<Point2d<T>> {
  static Point2d<T> make() { return {T(3), T(4)}; }
};
template <>
struct Sample<Vector2d> {
  static Vector2d make() { return {2.5, -0.75}; }
};
template <class T>
struct Sample<BoundingBox2d<T>> {
  static BoundingBox2d<T> make() { return {T(1), T(2), T(5), T(9)}; }
};
template <class T>
struct Sample<Segment2d<T>> {
  static Segment2d<T> make() { return {T(1), T(2), T(7), T(5)}; }
};
template <>
struct Sample<Line2d> {
  static Line2d make() { return {1.25, 0.5}; }
};
template <class T>
struct Sample<Circle2d<T>> {
  static Circle2d<T> make() { return {Point2dData<T>(T(1), T(2)), T(3)}; }
};
template <class T>
struct Sample<Ellipse2d<T>> {
  static Ellipse2d<T> make() { return {Point2dData<T>(T(1), T(2)), T(5), T(3), 0.25}; }
};
template <class T>
struct Sample<Square2d<T>> {
  static Square2d<T> make() { return {Point2dData<T>(T(1), T(2)), T(4), 0.125}; }
};
template <class T>
struct Sample<Rectangle2d<T>> {
  static Rectangle2d<T> make() { return {Point2dData<T>(T(1), T(2)), T(4), T(2), 0.5}; }
};
template <>
struct Sample<Parabola2d> {
  static Parabola2d make() { return {Point2dData<omReal64>(1, 2), Line2d(-1.5, 0.75)}; }
};
template <class T>
struct Sample<PointCloud2d<T>> {
  static PointCloud2d<T> make() { return PointCloud2d<T>({{T(1), T(2)}, {T(3), T(4)}, {T(5), T(6)}}); }
};
template <class T>
struct Sample<Polygon2d<T>> {
  static Polygon2d<T> make() { return ring<T>(eP2DT_Interior, T(2), T(3), T(10)); }
};
/// An exterior of 5 vertices, two holes, an island in the first.
template <class T>
struct Sample<PolygonWithHoles2d<T>> {
  static PolygonWithHoles2d<T> make() {
    const auto node = [](const Polygon2d<T>& exterior) {
      auto polygon = boost::make_shared<PolygonWithHoles2d<T>>();
      polygon->getExteriorPolygon() = exterior;
      return polygon;
    };
    const auto root = node(ring<T>(eP2DT_Exterior, T(0), T(0), T(100)));
    const auto hole = node(ring<T>(eP2DT_Interior, T(10), T(10), T(30)));
    const auto island = node(ring<T>(eP2DT_Exterior, T(20), T(20), T(5)));
    const auto otherHole = node(ring<T>(eP2DT_Interior, T(50), T(50), T(10)));
    hole->getPolygonHoles().push_back(island);
    island->setParent(hole);
    for (const auto& child : {hole, otherHole}) {
      root->getPolygonHoles().push_back(child);
      child->setParent(root);
    }
    return *root;
  }
};
template <class T>
struct Sample<Point3d<T>> {
  static Point3d<T> make() { return {T(3), T(4), T(5)}; }
};
template <>
struct Sample<Vector3d> {
  static Vector3d make() { return {2.5, 0.75, -0.5}; }
};
template <class T>
struct Sample<BoundingBox3d<T>> {
  static BoundingBox3d<T> make() { return {T(1), T(2), T(3), T(5), T(9), T(4)}; }
};
template <class T>
struct Sample<Segment3d<T>> {
  static Segment3d<T> make() { return {T(1), T(2), T(3), T(7), T(5), T(6)}; }
};
template <>
struct Sample<Plan3d> {
  static Plan3d make() { return {1.25, 0.5, -0.25}; }
};
template <class T>
struct Sample<Triangle3d<T>> {
  static Triangle3d<T> make() { return {{T(1), T(2), T(3)}, {T(7), T(5), T(6)}, {T(4), T(8), T(9)}}; }
};
template <class T>
struct Sample<Sphere3d<T>> {
  static Sphere3d<T> make() { return {Point3dData<T>(T(1), T(2), T(3)), T(4)}; }
};
template <class T>
struct Sample<Ellipsoid3d<T>> {
  static Ellipsoid3d<T> make() { return {Point3dData<T>(T(1), T(2), T(3)), T(6), T(5), T(4), 0.25, 0.5, 0.75}; }
};
template <class T>
struct Sample<Cube3d<T>> {
  static Cube3d<T> make() { return {Point3dData<T>(T(1), T(2), T(3)), T(4), 0.25, 0.5, 0.75}; }
};
template <class T>
struct Sample<Cuboid3d<T>> {
  static Cuboid3d<T> make() { return {Point3dData<T>(T(1), T(2), T(3)), T(6), T(5), T(4), 0.25, 0.5, 0.75}; }
};
template <class T>
struct Sample<PointCloud3d<T>> {
  static PointCloud3d<T> make() { return PointCloud3d<T>({{T(1), T(2), T(3)}, {T(4), T(5), T(6)}}); }
};
/// The corner of a cube.
template <class T>
struct Sample<Mesh3d<T>> {
  static Mesh3d<T> make(eMesh3dType type = eM3DT_Interior, T size = T(5)) {
    Mesh3d<T> mesh;
    mesh.setMesh3dType(type);
    mesh.build({{T(1), T(2), T(3)}, {T(1 + size), T(2), T(3)}, {T(1), T(2 + size), T(3)}, {T(1), T(2), T(3 + size)}},
               {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3});
    return mesh;
  }
};
/// Two holes, a body in the first.
template <class T>
struct Sample<MeshWithHoles3d<T>> {
  static MeshWithHoles3d<T> make() {
    const auto node = [](eMesh3dType type, T size) {
      auto mesh = boost::make_shared<MeshWithHoles3d<T>>();
      mesh->getExteriorMesh() = Sample<Mesh3d<T>>::make(type, size);
      return mesh;
    };
    const auto root = node(eM3DT_Exterior, T(100));
    root->getMeshHoles() = {node(eM3DT_Interior, T(20)), node(eM3DT_Interior, T(10))};
    root->getMeshHoles()[0]->getMeshHoles().push_back(node(eM3DT_Exterior, T(5)));
    return *root;
  }
};
/// Three rows in the first of two slices, the second of them without pixels, and a surface.
template <>
struct Sample<Shape3d> {
  static Shape3d make() {
    Shape3d shape;
    RowIntersections3d& voxels = shape.getRowIntersections();
    voxels.zOffset = 7;
    voxels.rowIntersectionsColl.resize(2);
    voxels.rowIntersectionsColl[0].setRows(4, {2, 0, 1}, {{1, 3}, {5, 9}, {2, 4}});
    voxels.rowIntersectionsColl[1].setRows(5, {1}, {{0, 8}});
    shape.getMeshWithHolesColl().push_back(
        boost::make_shared<MeshWithHoles3d<omReal32>>(Sample<MeshWithHoles3d<omReal32>>::make()));
    return shape;
  }
};
template <class M>
struct MeasureSample {
  static M make() {
    M measure;
    measure.setHoleMsrPolicy(eHMP_IgnoreHoles);
    return measure;
  }
};
template <>
struct Sample<AreaMsr2d> : MeasureSample<AreaMsr2d> {};
template <>
struct Sample<PerimeterMsr2d> : MeasureSample<PerimeterMsr2d> {};
template <>
struct Sample<AreaMsr3d> : MeasureSample<AreaMsr3d> {};
template <>
struct Sample<VolumeMsr3d> : MeasureSample<VolumeMsr3d> {};

template <>
struct Sample<TranslationTransform2d> {
  static TranslationTransform2d make() { return {3, 5}; }
};
template <>
struct Sample<RotationTransform2d> {
  static RotationTransform2d make() { return RotationTransform2d(0.5); }
};
template <>
struct Sample<RigidTransform2d> {
  static RigidTransform2d make() { return {0.5, 30, 5}; }
};
template <>
struct Sample<ScaleTransform2d> {
  static ScaleTransform2d make() { return ScaleTransform2d(2); }
};
template <>
struct Sample<SimilarityTransform2d> {
  static SimilarityTransform2d make() { return {2, 0.5, 30, 5}; }
};
template <>
struct Sample<AnisotropicScaleTransform2d> {
  static AnisotropicScaleTransform2d make() { return {2, 3}; }
};
template <>
struct Sample<HomographyTransform2d> {
  static HomographyTransform2d make() {
    return HomographyTransform2d(matrix({1, 0.25, 3, 0.5, 2, 5, 0.001, 0.002, 1}));
  }
};

template <>
struct Sample<TranslationTransform3d> {
  static TranslationTransform3d make() { return {3, 5, 7}; }
};
template <>
struct Sample<RotationTransform3d> {
  static RotationTransform3d make() { return {0.5, 0.25, -0.75}; }
};
template <>
struct Sample<RigidTransform3d> {
  static RigidTransform3d make() { return {0.5, 0.25, -0.75, 30, 5, 7}; }
};
template <>
struct Sample<ScaleTransform3d> {
  static ScaleTransform3d make() { return ScaleTransform3d(2); }
};
template <>
struct Sample<SimilarityTransform3d> {
  static SimilarityTransform3d make() { return {2, 0.5, 0.25, -0.75, 30, 5, 7}; }
};
template <>
struct Sample<AnisotropicScaleTransform3d> {
  static AnisotropicScaleTransform3d make() { return {2, 3, 4}; }
};
template <>
struct Sample<HomographyTransform3d> {
  static HomographyTransform3d make() {
    return HomographyTransform3d(
        matrix<4>({1, 0.25, 0.5, 3, 0.5, 2, 0.125, 5, 0.25, 0.75, 3, 7, 0.001, 0.002, 0.003, 1}));
  }
};

template <template <class> class Class>
using EachScalar = ::testing::Types<Class<omInt32>, Class<omUInt32>, Class<omReal32>, Class<omReal64>>;

template <class... Lists>
struct Concatenate;
template <class... A>
struct Concatenate<::testing::Types<A...>> {
  using Type = ::testing::Types<A...>;
};
template <class... A, class... B, class... Rest>
struct Concatenate<::testing::Types<A...>, ::testing::Types<B...>, Rest...> {
  using Type = typename Concatenate<::testing::Types<A..., B...>, Rest...>::Type;
};

using AllEntities2d = Concatenate<EachScalar<BoundingBox2d>, EachScalar<Circle2d>, EachScalar<Ellipse2d>,
                                  EachScalar<Point2d>, EachScalar<PointCloud2d>, EachScalar<Polygon2d>,
                                  EachScalar<PolygonWithHoles2d>, EachScalar<Rectangle2d>, EachScalar<Segment2d>,
                                  EachScalar<Square2d>, ::testing::Types<Line2d, Parabola2d, Vector2d>>::Type;
using AllEntities3d =
    Concatenate<EachScalar<BoundingBox3d>, EachScalar<Cube3d>, EachScalar<Cuboid3d>, EachScalar<Ellipsoid3d>,
                EachScalar<Mesh3d>, EachScalar<MeshWithHoles3d>, EachScalar<Point3d>, EachScalar<PointCloud3d>,
                EachScalar<Segment3d>, EachScalar<Sphere3d>, EachScalar<Triangle3d>,
                ::testing::Types<Plan3d, Shape3d, Vector3d>>::Type;
using LinearTransforms2d =
    ::testing::Types<TranslationTransform2d, RotationTransform2d, RigidTransform2d, ScaleTransform2d,
                     SimilarityTransform2d, AnisotropicScaleTransform2d, HomographyTransform2d>;
using LinearTransforms3d =
    ::testing::Types<TranslationTransform3d, RotationTransform3d, RigidTransform3d, ScaleTransform3d,
                     SimilarityTransform3d, AnisotropicScaleTransform3d, HomographyTransform3d>;
using AllClasses = Concatenate<AllEntities2d, AllEntities3d, LinearTransforms2d, LinearTransforms3d,
                               ::testing::Types<AreaMsr2d, PerimeterMsr2d, AreaMsr3d, VolumeMsr3d>>::Type;

/// Prints an object, and what its own text leaves out.
template <class X>
void printWhole(std::ostream& stream, const X& object) {
  stream << object;
}
template <class T>
void printWhole(std::ostream& stream, const Polygon2d<T>& polygon) {
  stream << polygon.getPolygon2dType() << polygon;
}
template <class T>
void printWhole(std::ostream& stream, const Mesh3d<T>& mesh) {
  stream << mesh.getMesh3dType() << mesh;
}
template <class T>
void printWhole(std::ostream& stream, const MeshWithHoles3d<T>& mesh) {
  visitNodes(mesh, [&stream](const MeshWithHoles3d<T>& node) {
    stream << node.getMesh3dType() << node.getExteriorMesh() << node.getNbHoles() << ' ';
    return true;
  });
}
inline void printWhole(std::ostream& stream, const Shape3d& shape) {
  stream << shape.getRowIntersections().zOffset << ": ";
  for (const RowIntersections& slice : shape.getRowIntersections().rowIntersectionsColl) {
    stream << slice.getStartRow() << ' ' << slice.getNbRows() << ' ';
    for (const PixelRun& run : slice.getRunColl()) stream << run.begin << '-' << run.end << ' ';
  }
  for (const auto& mesh : shape.getMeshWithHolesColl()) printWhole(stream, *mesh);
}

/// Everything a reader can see of an object, with all digits.
template <class X>
std::string describe(const X& object) {
  std::ostringstream text;
  text << std::setprecision(17);
  if constexpr (std::is_base_of_v<BaseGeometryMeasure, X>)
    text << object.getHoleMsrPolicy();
  else if constexpr (std::is_base_of_v<BaseGeometryTransform, X>)
    for (const omReal64 param : object.getGeometricTransform().getParams()) text << param << ' ';
  else
    printWhole(text, object);
  return text.str();
}

/// A class behind its base, so that a test over all classes is compiled once.
struct ClassCase {
  std::string name;
  omUInt32 version;
  omUInt32 oldestVersion;
  boost::shared_ptr<BaseSerializationObject> (*makeSample)();
  boost::shared_ptr<BaseSerializationObject> (*makeDefault)();
  /// \throw std::bad_cast when the object is not of this class
  std::string (*describe)(const BaseDynamicObject& object);
};

/// What GoogleTest prints of a case.
inline void PrintTo(const ClassCase& classCase, std::ostream* stream) { *stream << classCase.name; }

template <class... X>
std::vector<ClassCase> classCases(::testing::Types<X...>) {
  return {{X::getTypeName(), X::getVersion(), X::s_oldestClassVersion,
           []() -> boost::shared_ptr<BaseSerializationObject> { return boost::make_shared<X>(Sample<X>::make()); },
           []() -> boost::shared_ptr<BaseSerializationObject> { return boost::make_shared<X>(); },
           [](const BaseDynamicObject& object) { return describe(dynamic_cast<const X&>(object)); }}...};
}

}  // namespace samples
