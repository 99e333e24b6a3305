#pragma once

// One object of every class, with values unlike its defaults: what is uniform is tested over the library's lists of
// classes.

#include <ORMIXGeometry/ORMIXGeometry.h>

#include <boost/numeric/ublas/matrix.hpp>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <iomanip>

#include "support/Checks.h"

namespace samples {

using namespace ormix;
using namespace ormix::geom;

/// A square matrix of these rows.
template <class Matrix, std::size_t count>
Matrix matrix(const std::array<omReal64, count>& rows) {
  Matrix result;
  std::copy(rows.begin(), rows.end(), result.data().begin());
  return result;
}

template <class T>
Polygon2d<T> ring(ePolygon2dType type, T x, T y, T side) {
  Polygon2d<T> polygon;
  polygon.setPolygon2dType(type);
  polygon.getPointColl() = {{x, y}, {T(x + side), y}, {T(x + side), T(y + side)}, {x, T(y + side)}, {x, y}};
  return polygon;
}

/// The samples of the classes of one scalar type: what a new class template adds to.
template <class T>
struct TypedSamples {
  using P2 = Point2dData<T>;
  using P3 = Point3dData<T>;
  static Point2d<T> of(ClassTag<Point2d<T>>) { return {T(3), T(4)}; }
  static BoundingBox2d<T> of(ClassTag<BoundingBox2d<T>>) { return {T(1), T(2), T(5), T(9)}; }
  static Segment2d<T> of(ClassTag<Segment2d<T>>) { return {T(1), T(2), T(7), T(5)}; }
  static Circle2d<T> of(ClassTag<Circle2d<T>>) { return {P2(T(1), T(2)), T(3)}; }
  static Ellipse2d<T> of(ClassTag<Ellipse2d<T>>) { return {P2(T(1), T(2)), T(5), T(3), 0.25}; }
  static Square2d<T> of(ClassTag<Square2d<T>>) { return {P2(T(1), T(2)), T(4), 0.125}; }
  static Rectangle2d<T> of(ClassTag<Rectangle2d<T>>) { return {P2(T(1), T(2)), T(4), T(2), 0.5}; }
  static PointCloud2d<T> of(ClassTag<PointCloud2d<T>>) { return PointCloud2d<T>({{T(1), T(2)}, {3, 4}, {5, 6}}); }
  static Polygon2d<T> of(ClassTag<Polygon2d<T>>) { return ring<T>(eP2DT_Interior, T(2), T(3), T(10)); }
  /// An exterior of 5 vertices, two holes, an island in the first.
  static PolygonWithHoles2d<T> of(ClassTag<PolygonWithHoles2d<T>>) {
    const auto node = [](ePolygon2dType type, T at, T side) {
      auto polygon = boost::make_shared<PolygonWithHoles2d<T>>();
      polygon->getExteriorPolygon() = ring<T>(type, at, at, side);
      return polygon;
    };
    const auto root = node(eP2DT_Exterior, T(0), T(100));
    root->getPolygonHoles() = {node(eP2DT_Interior, T(10), T(30)), node(eP2DT_Interior, T(50), T(10))};
    root->getPolygonHoles()[0]->getPolygonHoles() = {node(eP2DT_Exterior, T(20), T(5))};
    return *root;
  }
  static Arc2d<T> of(ClassTag<Arc2d<T>>) { return {P2(T(1), T(2)), T(3), 0.25, -1.5}; }
  static Point3d<T> of(ClassTag<Point3d<T>>) { return {T(3), T(4), T(5)}; }
  static BoundingBox3d<T> of(ClassTag<BoundingBox3d<T>>) { return {T(1), T(2), T(3), T(5), T(9), T(4)}; }
  static Segment3d<T> of(ClassTag<Segment3d<T>>) { return {T(1), T(2), T(3), T(7), T(5), T(6)}; }
  static Triangle3d<T> of(ClassTag<Triangle3d<T>>) { return {P3(1, 2, 3), P3(7, 5, 6), P3(4, 8, 9)}; }
  static Sphere3d<T> of(ClassTag<Sphere3d<T>>) { return {P3(1, 2, 3), T(4)}; }
  static Ellipsoid3d<T> of(ClassTag<Ellipsoid3d<T>>) { return {P3(1, 2, 3), T(6), T(5), T(4), 0.25, 0.5, 0.75}; }
  static Cube3d<T> of(ClassTag<Cube3d<T>>) { return {P3(1, 2, 3), T(4), 0.25, 0.5, 0.75}; }
  static Cuboid3d<T> of(ClassTag<Cuboid3d<T>>) { return {P3(1, 2, 3), T(6), T(5), T(4), 0.25, 0.5, 0.75}; }
  static Cylinder3d<T> of(ClassTag<Cylinder3d<T>>) { return {P3(1, 2, 3), P3(7, 5, 6), T(4)}; }
  static Cone3d<T> of(ClassTag<Cone3d<T>>) { return {P3(1, 2, 3), P3(7, 5, 6), T(4), T(2)}; }
  static Torus3d<T> of(ClassTag<Torus3d<T>>) { return {P3(1, 2, 3), {0, 0.75, 1}, T(5), T(2)}; }
  static Circle3d<T> of(ClassTag<Circle3d<T>>) { return {P3(1, 2, 3), {0, 0.75, 1}, T(4)}; }
  static PointCloud3d<T> of(ClassTag<PointCloud3d<T>>) { return PointCloud3d<T>({P3(1, 2, 3), P3(4, 5, 6)}); }
  /// The corner of a cube.
  static Mesh3d<T> of(ClassTag<Mesh3d<T>>, eMesh3dType type = eM3DT_Interior, T size = T(5)) {
    Mesh3d<T> mesh;
    mesh.setMesh3dType(type);
    mesh.build({P3(1, 2, 3), P3(T(1 + size), 2, 3), P3(1, T(2 + size), 3), P3(1, 2, T(3 + size))},
               {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3});
    return mesh;
  }
  /// Two holes, a body in the first.
  static MeshWithHoles3d<T> of(ClassTag<MeshWithHoles3d<T>>) {
    const auto node = [](eMesh3dType type, T size) {
      auto mesh = boost::make_shared<MeshWithHoles3d<T>>();
      mesh->getExteriorMesh() = of(ClassTag<Mesh3d<T>>(), type, size);
      return mesh;
    };
    const auto root = node(eM3DT_Exterior, T(100));
    root->getMeshHoles() = {node(eM3DT_Interior, T(20)), node(eM3DT_Interior, T(10))};
    root->getMeshHoles()[0]->getMeshHoles().push_back(node(eM3DT_Exterior, T(5)));
    return *root;
  }
};

inline Vector2d sampleOf(ClassTag<Vector2d>) { return {2.5, -0.75}; }
inline Line2d sampleOf(ClassTag<Line2d>) { return {1.25, 0.5}; }
inline Parabola2d sampleOf(ClassTag<Parabola2d>) { return {Point2dData<omReal64>(1, 2), Line2d(-1.5, 0.75)}; }
inline Vector3d sampleOf(ClassTag<Vector3d>) { return {2.5, 0.75, -0.5}; }
inline Plan3d sampleOf(ClassTag<Plan3d>) { return {1.25, 0.5, -0.25}; }
inline Line3d sampleOf(ClassTag<Line3d>) { return {{1, 2, 3}, {0, 0.75, 1}}; }
/// Three rows, the second of them without pixels, and a boundary.
inline Shape2d sampleOf(ClassTag<Shape2d>) {
  using Node = PolygonWithHoles2d<omReal32>;
  Shape2d shape;
  shape.getRowIntersections().setRows(4, {2, 0, 1}, {{1, 3}, {5, 9}, {2, 4}});
  shape.getPolygonWithHolesColl().push_back(boost::make_shared<Node>(TypedSamples<omReal32>::of(ClassTag<Node>())));
  return shape;
}
/// The branch around a reflex corner at (1, 1): a segment, and an arc of a parabola.
inline Skeleton2d sampleOf(ClassTag<Skeleton2d>) {
  MedialAxis axis;
  axis.vertices = {{{0.5, 3.5}, 0.5}, {{0.5, 1}, 0.5}, {{0.75, 0.625}, 0.75}};
  axis.edges = {{{0, 1}, {1, 2}}, {{1, 2}, {1, 0}}};
  axis.parts = {{{1, 1}, {1, 1}, 0, 3, true}, {{0, 4}, {0, 0}, 0, 5, false}, {{1, 1}, {1, 4}, 1, 2, false}};
  return Skeleton2d(axis);
}
inline SkeletonVertex2d sampleOf(ClassTag<SkeletonVertex2d>) { return {Point2dData<omReal64>(1, 2), 0.5, {3, 4}}; }
/// Three rows in the first of two slices, the second of them without pixels, and a surface.
inline Shape3d sampleOf(ClassTag<Shape3d>) {
  using Node = MeshWithHoles3d<omReal32>;
  Shape3d shape;
  RowIntersections3d& voxels = shape.getRowIntersections();
  voxels.zOffset = 7;
  voxels.rowIntersectionsColl.resize(2);
  voxels.rowIntersectionsColl[0].setRows(4, {2, 0, 1}, {{1, 3}, {5, 9}, {2, 4}});
  voxels.rowIntersectionsColl[1].setRows(5, {1}, {{0, 8}});
  shape.getMeshWithHolesColl().push_back(boost::make_shared<Node>(TypedSamples<omReal32>::of(ClassTag<Node>())));
  return shape;
}
/// Far from the origin, so that this has more digits than one number.
inline Moments2dO3 sampleOf(ClassTag<Moments2dO3>) {
  return Moments2dO3(PlanarMoments{1e6, 0.1, 1e-12, 0, {3, 1, 0.5, 7, 0.25, 6, 0.125, 2, -1, 4}});
}
inline HuMoments2dO3 sampleOf(ClassTag<HuMoments2dO3>) {
  return HuMoments2dO3({0.25, 0.125, 0.01, 0.002, -1e-5, 3e-4, 2e-6});
}
/// A fit without degrees of freedom, so that there is NaN in it.
inline FitReport sampleOf(ClassTag<FitReport>) {
  FitReport report("Circle2d", {"center x", "radius"}, {});
  report.method = eFM_Algebraic;
  report.params = {4, 2.5};
  report.covariance = {0.25, -0.125, -0.125, std::numeric_limits<omReal64>::quiet_NaN()};
  report.sigma0 = 0.5;
  report.degreesOfFreedom = 3;
  report.residuals = {0.5, -0.25, 0.125};
  report.weights = {1, 0.5, 0};
  report.conditionNumber = 7;
  report.rank = 2;
  report.rankThreshold = 1e-15;
  report.nbIterations = 4;
  report.inliers = {true, true, false};
  report.status = failedStatus(eEC_NoConvergence, "length of a step", 0.5, 0.25, "not yet");
  report.status.indices = {2, 7};
  return report;
}
/// Three items, of which the second was removed.
template <class Item>
RTree<Item> sampleOf(ClassTag<RTree<Item>>) {
  using Kept = RTreeItem<Item>;
  std::vector<Item> items;
  for (int i = 0; i < 3; ++i) {
    typename Kept::Points points;
    for (std::size_t k = 0; k < points.size(); ++k) {
      using T = typename Kept::Coordinate;
      const T at = T(8 * i) + T(2 * k);
      if constexpr (Kept::s_dimension == 2)
        points[k] = {at, at + T(0.5)};
      else
        points[k] = {at, at + T(0.5), T(3 - k)};
    }
    items.push_back(Kept::fromPoints(points));
  }
  RTree<Item> tree(items);
  tree.remove(1);
  return tree;
}
template <class X, class = void>
constexpr bool hasHolePolicy = false;
template <class X>
constexpr bool hasHolePolicy<X, std::void_t<decltype(std::declval<X>().getHoleMsrPolicy())>> = true;
/// Measures, and transforms that own no map.
template <class X>
std::enable_if_t<isListed<X>(JoinedLists<PlanarMeasureList, SpatialMeasureList, PlanarDerivedTransformList,
                                         SpatialDerivedTransformList>()),
                 X>
sampleOf(ClassTag<X>) {
  X sample;
  if constexpr (hasHolePolicy<X>) sample.setHoleMsrPolicy(eHMP_IgnoreHoles);
  return sample;
}
inline SimplifyTransform2d sampleOf(ClassTag<SimplifyTransform2d>) { return SimplifyTransform2d(0.75); }
inline TranslationTransform2d sampleOf(ClassTag<TranslationTransform2d>) { return {3, 5}; }
inline RotationTransform2d sampleOf(ClassTag<RotationTransform2d>) { return RotationTransform2d(0.5); }
inline RigidTransform2d sampleOf(ClassTag<RigidTransform2d>) { return {0.5, 30, 5}; }
inline ScaleTransform2d sampleOf(ClassTag<ScaleTransform2d>) { return ScaleTransform2d(2); }
inline SimilarityTransform2d sampleOf(ClassTag<SimilarityTransform2d>) { return {2, 0.5, 30, 5}; }
inline AnisotropicScaleTransform2d sampleOf(ClassTag<AnisotropicScaleTransform2d>) { return {2, 3}; }
inline HomographyTransform2d sampleOf(ClassTag<HomographyTransform2d>) {
  return HomographyTransform2d(matrix<Matrix3x3, 9>({1, 0.25, 3, 0.5, 2, 5, 0.001, 0.002, 1}));
}
inline TranslationTransform3d sampleOf(ClassTag<TranslationTransform3d>) { return {3, 5, 7}; }
inline RotationTransform3d sampleOf(ClassTag<RotationTransform3d>) { return {0.5, 0.25, -0.75}; }
inline RigidTransform3d sampleOf(ClassTag<RigidTransform3d>) { return {0.5, 0.25, -0.75, 30, 5, 7}; }
inline ScaleTransform3d sampleOf(ClassTag<ScaleTransform3d>) { return ScaleTransform3d(2); }
inline SimilarityTransform3d sampleOf(ClassTag<SimilarityTransform3d>) { return {2, 0.5, 0.25, -0.75, 30, 5, 7}; }
inline AnisotropicScaleTransform3d sampleOf(ClassTag<AnisotropicScaleTransform3d>) { return {2, 3, 4}; }
inline HomographyTransform3d sampleOf(ClassTag<HomographyTransform3d>) {
  return HomographyTransform3d(
      matrix<Matrix4x4, 16>({1, 0.25, 0.5, 3, 0.5, 2, 0.125, 5, 0.25, 0.75, 3, 7, 0.001, 0.002, 0.003, 1}));
}

template <class X>
X makeSample(ClassTag<X> type) {
  return sampleOf(type);
}
template <template <class> class Class, class T>
Class<T> makeSample(ClassTag<Class<T>> type) {
  if constexpr (std::is_arithmetic_v<T>)
    return TypedSamples<T>::of(type);
  else
    return sampleOf(type);
}
template <class X>
struct Sample {
  static X make() { return makeSample(ClassTag<X>()); }
};

using AllLinearTransforms = JoinedLists<PlanarLinearTransformList, SpatialLinearTransformList>;
using AllTransforms = JoinedLists<PlanarTransformList, SpatialTransformList>;
/// Every class with samples; estimators have none, as they hold nothing.
using AllClasses = JoinedLists<PlanarEntityList, SpatialEntityList, AllTransforms, PlanarMeasureList,
                               SpatialMeasureList, PlanarMeasureResultList, EstimationResultList, RTreeList>;

template <template <class> class Class, class X>
constexpr bool isOf = false;
template <template <class> class Class, class T>
constexpr bool isOf<Class, Class<T>> = true;

inline void printRows(std::ostream& stream, const RowIntersections& rows) {
  stream << rows.getStartRow() << ' ' << rows.getNbRows() << ' ';
  for (const PixelRun& run : rows.getRunColl()) stream << run.begin << '-' << run.end << ' ';
}

/// Prints an object and what its own text leaves out: caches, roles, nodes, voxels.
template <class X>
void printWhole(std::ostream& stream, const X& object) {
  if constexpr (!isOf<MeshWithHoles3d, X> && !std::is_same_v<X, Shape3d>) stream << object;
  if constexpr (std::is_same_v<X, Vector2d> || std::is_same_v<X, Vector3d>) stream << object.getRho();
  if constexpr (std::is_same_v<X, Line2d> || std::is_same_v<X, Plan3d>) stream << object.getNearestPointFromOrigin();
  if constexpr (std::is_same_v<X, Parabola2d>) printWhole(stream, object.getDirectrix());
  if constexpr (isOf<Ellipse2d, X>) stream << object.boundaryPoint(1);
  if constexpr (isOf<Ellipsoid3d, X>) stream << object.boundaryPoint(0.5, 1);
  if constexpr (isOf<Polygon2d, X> || isOf<PolygonWithHoles2d, X>) stream << object.getPolygon2dType();
  if constexpr (isOf<Mesh3d, X>) stream << object.getMesh3dType();
  if constexpr (std::is_same_v<X, Moments2dO3>)
    stream << object.getPlanarMoments().originXRest << ' ' << object.getPlanarMoments().originYRest;
  if constexpr (isOf<MeshWithHoles3d, X>)
    visitNodes(object, [&stream](const X& node) {
      printWhole(stream, node.getExteriorMesh());
      stream << node.getNbHoles() << ' ';
      return true;
    });
  if constexpr (std::is_same_v<X, FitReport>) {
    for (const auto* values : {&object.covariance, &object.residuals, &object.weights})
      for (const omReal64 value : *values) stream << ' ' << value;
    stream << ' ' << object.conditionNumber << ' ' << object.rank << ' ' << object.rankThreshold << ' '
           << object.nbIterations << ' ' << object.status;
    for (const bool isInlier : object.inliers) stream << isInlier;
  }
  if constexpr (std::is_same_v<X, Skeleton2d>)
    for (const AxisPart& part : object.getPartColl())
      stream << part.start.x << ' ' << part.start.y << ' ' << part.end.x << ' ' << part.end.y << ' ' << part.ringIdx
             << ' ' << part.pointIdx << ' ' << part.isVertex << ' ';
  if constexpr (std::is_same_v<X, Shape2d>) printRows(stream, object.getRowIntersections());
  if constexpr (std::is_same_v<X, Shape3d>) {
    stream << object.getRowIntersections().zOffset << ": ";
    for (const RowIntersections& slice : object.getRowIntersections().rowIntersectionsColl) printRows(stream, slice);
    for (const auto& mesh : object.getMeshWithHolesColl()) printWhole(stream, *mesh);
  }
}

/// Everything a reader can see of an object, with all digits; empty where it holds nothing.
template <class X>
std::string describe(const X& object) {
  std::ostringstream text;
  text << std::setprecision(17);
  if constexpr (hasHolePolicy<X>)
    text << object.getHoleMsrPolicy();
  else if constexpr (isListed<X>(AllLinearTransforms()))
    for (const omReal64 param : object.getGeometricTransform().getParams()) text << param << ' ';
  else if constexpr (std::is_same_v<X, SimplifyTransform2d>)
    text << object.getTolerance();
  else if constexpr (!std::is_base_of_v<BaseGeometryTransform, X>)
    printWhole(text, object);
  return text.str();
}

/// A class behind its base, so that a test over all classes is compiled once.
struct ClassCase {
  std::string name;
  omUInt32 version, oldestVersion;
  boost::shared_ptr<BaseSerializationObject> (*makeSample)();
  boost::shared_ptr<BaseSerializationObject> (*makeDefault)();
  /// \throw std::bad_cast when the object is not of this class
  std::string (*describe)(const BaseDynamicObject& object);
};

/// What GoogleTest prints of a case.
inline void PrintTo(const ClassCase& classCase, std::ostream* stream) { *stream << classCase.name; }

template <class... X>
std::vector<ClassCase> classCases(ClassList<X...>) {
  return {{X::getTypeName(), X::getVersion(), X::s_oldestClassVersion,
           []() -> boost::shared_ptr<BaseSerializationObject> { return boost::make_shared<X>(Sample<X>::make()); },
           []() -> boost::shared_ptr<BaseSerializationObject> { return boost::make_shared<X>(); },
           [](const BaseDynamicObject& object) { return describe(dynamic_cast<const X&>(object)); }}...};
}

}  // namespace samples
