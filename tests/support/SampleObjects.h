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

inline Matrix3x3 matrix(const std::array<omReal64, 9>& rows) {
  Matrix3x3 result(3, 3);
  for (std::size_t index = 0; index < 9; ++index) result(index / 3, index % 3) = rows[index];
  return result;
}

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
using LinearTransforms2d =
    ::testing::Types<TranslationTransform2d, RotationTransform2d, RigidTransform2d, ScaleTransform2d,
                     SimilarityTransform2d, AnisotropicScaleTransform2d, HomographyTransform2d>;
using AllClasses = Concatenate<AllEntities2d, LinearTransforms2d, ::testing::Types<AreaMsr2d, PerimeterMsr2d>>::Type;

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
    text << object;
  return text.str();
}

/// A class behind its base, so that a test over all classes is compiled once.
struct ClassCase {
  std::string name;
  boost::shared_ptr<BaseSerializationObject> (*makeSample)();
  boost::shared_ptr<BaseSerializationObject> (*makeDefault)();
  /// \throw std::bad_cast when the object is not of this class
  std::string (*describe)(const BaseDynamicObject& object);
};

/// What GoogleTest prints of a case.
inline void PrintTo(const ClassCase& classCase, std::ostream* stream) { *stream << classCase.name; }

template <class... X>
std::vector<ClassCase> classCases(::testing::Types<X...>) {
  return {{X::getTypeName(),
           []() -> boost::shared_ptr<BaseSerializationObject> { return boost::make_shared<X>(Sample<X>::make()); },
           []() -> boost::shared_ptr<BaseSerializationObject> { return boost::make_shared<X>(); },
           [](const BaseDynamicObject& object) { return describe(dynamic_cast<const X&>(object)); }}...};
}

}  // namespace samples
