#pragma once

// Plugs this library into a comparison with other libraries: a program of benchmarks asks one template a workload
// (namespace lut, declared before this header is included) and gets one row for each that is specialised here. The
// comparison itself is a project of its own, as it needs all the other libraries; point it to this folder and to
// ORMIX::Geometry.

#include <ORMIXGeometry/Entity/2d/PointCloud/PointCloud2d.h>
#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <ORMIXGeometry/Entity/2d/Shape/ConnectedComponents.h>
#include <ORMIXGeometry/Entity/2d/Shape/Contours.h>
#include <ORMIXGeometry/Entity/2d/Shape/MaskView.h>
#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Entity/3d/PointCloud/PointCloud3d.h>
#include <ORMIXGeometry/Estimation/2d/Circle2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Ellipse2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/HomographyTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Line2dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Plan3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/RigidTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Sphere3dEstimator.h>
#include <ORMIXGeometry/Measure/2d/AreaMsr2d.h>
#include <ORMIXGeometry/Measure/2d/HuMomentsMsr2d.h>
#include <ORMIXGeometry/Measure/2d/PerimeterMsr2d.h>
#include <ORMIXGeometry/Measure/2d/PixelMoments.h>
#include <ORMIXGeometry/Measure/3d/AreaMsr3d.h>
#include <ORMIXGeometry/Measure/3d/VolumeMsr3d.h>
#include <ORMIXGeometry/Tools/MeshSimplification/MeshSimplification.h>
#include <ORMIXGeometry/Tools/RTree/RTree.h>
#include <ORMIXGeometry/Tools/Stl/StlLoad.h>
#include <ORMIXGeometry/Tools/Stl/StlSave.h>
#include <ORMIXGeometry/Transform/2d/ConvexHullTransform2d.h>
#include <ORMIXGeometry/Transform/2d/GeometryTransform2dUtils.h>
#include <ORMIXGeometry/Transform/2d/MinEnclosingCircleTransform2d.h>
#include <ORMIXGeometry/Transform/2d/SimplifyTransform2d.h>
#include <ORMIXGeometry/Transform/3d/ConvexHullTransform3d.h>
#include <ORMIXGeometry/Transform/3d/MinEnclosingSphereTransform3d.h>
#include <ORMIXMath/ORMIXMath.h>
#include <ORMIXSerialization/Archive/CborIArchive.h>
#include <ORMIXSerialization/Archive/CborOArchive.h>
#include <ORMIXSerialization/Archive/JsonIArchive.h>
#include <ORMIXSerialization/Archive/JsonOArchive.h>

#include <array>
#include <boost/numeric/ublas/matrix.hpp>
#include <boost/numeric/ublas/vector.hpp>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <istream>
#include <iterator>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "../support/MemoryBuffer.h"
#include "bench.hpp"

namespace lut {

/// A ring as this library holds it, copied from the comparison's own points.
template <class T>
struct OrmixRing {
  static constexpr bool available = true;
  using Ring = ormix::geom::Polygon2d<T>;

  static Ring make(const std::vector<data::P2<T>>& points) {
    Ring ring;
    ring.getPointColl().reserve(points.size());
    for (const auto& point : points) ring.getPointColl().emplace_back(point.x, point.y);
    return ring;
  }
};

/// Area and perimeter, by way of the measures.
template <class T>
struct OrmixRingMeasures : OrmixRing<T> {
  using typename OrmixRing<T>::Ring;

  static double area(const Ring& ring) { return ormix::geom::AreaMsr2d::measure(ring); }
  static double perimeter(const Ring& ring) { return ormix::geom::PerimeterMsr2d::measure(ring); }
};

template <>
struct RingMeasures<double> : OrmixRingMeasures<double> {};
template <>
struct RingMeasures<float> : OrmixRingMeasures<float> {};
template <>
struct RingMeasures<std::int32_t> : OrmixRingMeasures<std::int32_t> {};

/// Simplification by Douglas and Peucker's method alone, as the other libraries' rows do it but those that keep
/// topology.
template <>
struct Simplify<double> : OrmixRing<double> {
  static Ring simplify(const Ring& ring, double tolerance) {
    return ormix::geom::SimplifyTransform2d::simplify(ring, tolerance, ormix::ePS_EachAlone);
  }
};

/// Reading one ring in the syntax of Well-Known-Text.
template <>
struct Wkt<double> {
  static constexpr bool available = true;

  static std::size_t parse(const std::string& coordinateList) {
    ormix::geom::Polygon2d<double> ring;
    fromString(ring, coordinateList);
    return ring.getNbPoints();
  }
};

/// Points of the comparison as this library's.
template <class T>
std::vector<ormix::geom::Point2dData<T>> ormixPoints(const std::vector<data::P2<T>>& points) {
  std::vector<ormix::geom::Point2dData<T>> result;
  result.reserve(points.size());
  for (const auto& point : points) result.emplace_back(point.x, point.y);
  return result;
}

/// Transforms of a cloud as users apply them, which check every image.
template <class T>
struct OrmixTransforms {
  static constexpr bool available = true;
  using Cloud = ormix::geom::PointCloud2d<T>;
  using Transform = ormix::geom::GeometryTransform2dPtr;

  static Cloud make(const std::vector<data::P2<T>>& points) { return Cloud(ormixPoints(points)); }
  static Transform transform(int kind, const std::array<double, 9>& m) {
    const double angle = std::atan2(m[3], m[0]);
    if (kind == 0) return ormix::geom::convert(ormix::Rigid2d(angle, m[2], m[5]));
    if (kind == 1) return ormix::geom::convert(ormix::Similarity2d(std::hypot(m[0], m[3]), angle, m[2], m[5]));
    ormix::Matrix3x3 matrix(3, 3);
    std::copy(m.begin(), m.end(), matrix.data().begin());
    return ormix::geom::convert(ormix::Homography2d(matrix));
  }
  static void applyInSitu(const Transform& transform, Cloud& cloud) {
    if (!transform->applyInSitu(cloud)) throw std::runtime_error("transform failed");
  }
  static ormix::geom::GeometryEntity2dPtr apply(const Transform& transform, const Cloud& cloud) {
    return transform->apply(cloud);
  }
};

template <>
struct Transforms<double> : OrmixTransforms<double> {};
template <>
struct Transforms<float> : OrmixTransforms<float> {};
template <>
struct Transforms<std::int32_t> : OrmixTransforms<std::int32_t> {};

/// Fits from the comparison's points to the parameters, the points read where they are.
template <>
struct Fits<double> {
  static constexpr bool available = true;
  using Points = std::vector<data::P2<double>>;
  using SpatialPoints = std::vector<data::P3<double>>;

  static ormix::RealVector circle(const Points& points) { return fit<ormix::geom::Circle2dEstimator>(points); }
  static ormix::RealVector ellipse(const Points& points) { return fit<ormix::geom::Ellipse2dEstimator>(points); }
  static ormix::RealVector line(const Points& points) { return fit<ormix::geom::Line2dEstimator>(points); }
  static ormix::RealVector homography(const Points& from, const Points& to) {
    std::vector<double> pairs;
    pairs.reserve(4 * from.size());
    for (std::size_t i = 0; i < from.size(); ++i) pairs.insert(pairs.end(), {from[i].x, from[i].y, to[i].x, to[i].y});
    return estimate<ormix::geom::HomographyTransform2dEstimator>(ormix::SampleView{pairs.data(), from.size(), 4});
  }
  static ormix::RealVector plane(const SpatialPoints& points) {
    return estimate<ormix::geom::Plan3dEstimator>(view(points));
  }
  static ormix::RealVector sphere(const SpatialPoints& points) {
    return estimate<ormix::geom::Sphere3dEstimator>(view(points));
  }
  static ormix::RealVector rigid3(const SpatialPoints& from, const SpatialPoints& to) {
    return estimate<ormix::geom::RigidTransform3dEstimator>(view(from), view(to));
  }

 private:
  template <class Estimator>
  static ormix::RealVector fit(const Points& points) {
    return estimate<Estimator>(ormix::SampleView{&points.front().x, points.size(), 2});
  }
  static ormix::SampleView view(const SpatialPoints& points) { return {&points.front().x, points.size(), 3}; }
  template <class Estimator, class... Samples>
  static ormix::RealVector estimate(const Samples&... samples) {
    ormix::RealVector params;
    const ormix::BoolResult result = Estimator().computeEstimation(samples..., params);
    if (!result) throw std::runtime_error(result.getMessage());
    return params;
  }
};

/// Robust fits of 10⁴ points of which half are outliers, which no template asks for: their rows are added to the groups
/// of the program of fits, with the points of that, as they are read from single precision.
struct RobustFits {
  template <class Estimator>
  static ormix::RealVector fit(const std::vector<data::P2<float>>& points) {
    std::vector<double> values;
    values.reserve(2 * points.size());
    for (const auto& point : points) values.insert(values.end(), {point.x, point.y});
    ormix::RobustOptions options;
    options.threshold = 3;
    ormix::RobustResult found;
    Estimator estimator;
    const ormix::BoolResult result =
        robustEstimation(estimator, ormix::SampleView{values.data(), points.size(), 2}, options, found);
    if (!result) throw std::runtime_error(result.getMessage());
    return found.params;
  }
  static std::vector<data::P2<float>> circleWithOutliers(std::size_t nbPoints) {
    data::Rng random(16);
    std::vector<data::P2<float>> points;
    for (const auto& point : data::circle<float>(nbPoints / 2, 17, 500, 1.0)) {
      const auto x = static_cast<float>(random.uniform(19000, 21000));
      points.push_back(point);
      points.push_back({x, static_cast<float>(random.uniform(19000, 21000))});
    }
    return points;
  }
  static bool add() {
    if (std::string_view(program_invocation_short_name) != "w04_fits") return false;
    constexpr std::size_t nbPoints = 10000;
    const auto line = data::line<float>(nbPoints, 15, 0.5);
    const auto circle = circleWithOutliers(nbPoints);
    bench::add("W4.robust_line_50/f32/10000", "LUT", [line] { return fit<ormix::geom::Line2dEstimator>(line); });
    bench::add("W4.robust_circle_50/f32/10000", "LUT",
               [circle] { return fit<ormix::geom::Circle2dEstimator>(circle); });
    return true;
  }
};
inline const bool s_hasRobustFits = RobustFits::add();

/// Archives in memory: CBOR as the binary form, JSON as the text.
template <>
struct Archives<double> : OrmixRing<double> {
  static std::string writeBinary(const Ring& ring) { return write<ormix::CborOArchive>(ring, packedSize(ring)); }
  static Ring readBinary(const std::string& bytes) { return read<ormix::CborIArchive>(bytes); }
  static std::string writeText(const Ring& ring) { return write<ormix::JsonOArchive>(ring, 0); }
  static Ring readText(const std::string& text) { return read<ormix::JsonIArchive>(text); }

 private:
  static void check(const ormix::BoolResult& result) {
    if (!result) throw std::runtime_error(result.getMessage());
  }
  /// A program that archives into memory knows about how much will come, and asks for it at once.
  static std::size_t packedSize(const Ring& ring) { return 2 * sizeof(double) * ring.getNbPoints() + 4096; }
  template <class OArchive>
  static std::string write(const Ring& ring, std::size_t expectedSize) {
    ormix::benchmarks::StringSink sink(expectedSize);
    std::ostream stream(&sink);
    OArchive archive(stream);
    check(ring.write(archive));
    check(archive.close());
    return sink.take();
  }
  template <class IArchive>
  static Ring read(const std::string& text) {
    ormix::benchmarks::StringSource source(text);
    std::istream stream(&source);
    IArchive archive(stream);
    Ring ring;
    check(ring.read(archive));
    return ring;
  }
};

/// The comparison's mesh as this library holds it, with half-edges.
template <class T>
struct OrmixMesh {
  static constexpr bool available = true;
  using Mesh = ormix::geom::Mesh3d<T>;

  static Mesh make(const data::Mesh& source) {
    Mesh mesh;
    typename Mesh::VertexColl vertices;
    typename Mesh::IndexColl indices;
    for (const auto& vertex : source.v) vertices.emplace_back(vertex.x, vertex.y, vertex.z);
    for (const auto& triangle : source.t) indices.insert(indices.end(), triangle.begin(), triangle.end());
    check(mesh.build(std::move(vertices), indices));
    return mesh;
  }

 protected:
  static void check(const ormix::BoolResult& result) {
    if (!result) throw std::runtime_error(result.getMessage());
  }
};

/// STL files of a mesh: read with vertices merged in order and half-edges built, written as users save them.
template <>
struct Stl<float> : OrmixMesh<float> {
  static void write(const Mesh& mesh, const std::string& path, bool ascii) {
    check(ascii ? ormix::geom::saveToStLAscii(path, mesh, "bench") : ormix::geom::saveToStLBinary(path, mesh));
  }
  static boost::shared_ptr<Mesh> read(const std::string& path) { return ormix::geom::readFromStLFile<float>(path); }
};

/// Area and volume of a mesh, by way of the measures.
template <>
struct MeshMeasures<double> : OrmixMesh<double> {
  static double area(const Mesh& mesh) { return ormix::geom::AreaMsr3d::measure(mesh); }
  static double volume(const Mesh& mesh) { return ormix::geom::VolumeMsr3d::measure(mesh); }
};

/// Simplification of a mesh, which is copied first, with its volume kept.
template <>
struct Decimate<double> : OrmixMesh<double> {
  static Mesh decimate(const Mesh& mesh, std::size_t nbTriangles) {
    Mesh simplified = mesh;
    ormix::MeshSimplificationOptions options;
    options.nbTriangles = nbTriangles;
    options.keepsVolume = true;
    check(ormix::geom::MeshSimplification<double>::simplify(simplified, options));
    return simplified;
  }
};

/// Moments of a ring by way of the measure, Hu moments from moments at hand, and moments of a mask, its runs made
/// first.
template <>
struct Moments<double> {
  static constexpr bool available = true;
  struct Ring {
    ormix::geom::Polygon2d<double> polygon;
    ormix::geom::Moments2dO3 moments;
  };

  static Ring make(const std::vector<data::P2<double>>& points) {
    const auto polygon = OrmixRing<double>::make(points);
    return {polygon, ormix::geom::MomentsMsr2d::measure(polygon)};
  }
  static ormix::geom::Moments2dO3 moments(const Ring& ring) { return ormix::geom::MomentsMsr2d::measure(ring.polygon); }
  static ormix::geom::HuMoments2dO3 hu(const Ring& ring) { return ormix::geom::HuMoments2dO3(ring.moments); }
  static ormix::geom::Moments2dO3 maskMoments(const std::vector<std::uint8_t>& mask, int width, int height) {
    const auto columns = static_cast<std::size_t>(width);
    const auto rows = static_cast<std::size_t>(height);
    return ormix::geom::moments(
        toRowIntersections(ormix::geom::MaskView<const std::uint8_t>{mask.data(), columns, rows, columns}));
  }
};

/// Clouds of the plane and of space.
template <class T>
struct OrmixClouds {
  static constexpr bool available = true;
  using Cloud2 = ormix::geom::PointCloud2d<T>;
  using Cloud3 = ormix::geom::PointCloud3d<T>;

  static Cloud2 make2(const std::vector<data::P2<T>>& points) { return Cloud2(ormixPoints(points)); }
  static Cloud3 make3(const std::vector<data::P3<T>>& points) {
    Cloud3 cloud;
    cloud.getCollection().reserve(points.size());
    for (const auto& point : points) cloud.getCollection().emplace_back(point.x, point.y, point.z);
    return cloud;
  }
};

/// Convex hulls, exact, as polygons and meshes.
template <class T>
struct OrmixHulls : OrmixClouds<T> {
  static auto hull2(const ormix::geom::PointCloud2d<T>& cloud) {
    return ormix::geom::ConvexHullTransform2d::convexHull(cloud);
  }
  static auto hull3(const ormix::geom::PointCloud3d<T>& cloud) {
    return ormix::geom::ConvexHullTransform3d::convexHull(cloud);
  }
};

template <>
struct Hulls<double> : OrmixHulls<double> {};
template <>
struct Hulls<float> : OrmixHulls<float> {};
template <>
struct Hulls<std::int32_t> : OrmixHulls<std::int32_t> {};

/// Smallest circles and spheres.
template <class T>
struct OrmixEnclosing : OrmixClouds<T> {
  static auto circle(const ormix::geom::PointCloud2d<T>& cloud) {
    return ormix::geom::MinEnclosingCircleTransform2d::minEnclosingCircle(cloud);
  }
  static auto sphere(const ormix::geom::PointCloud3d<T>& cloud) {
    return ormix::geom::MinEnclosingSphereTransform3d::minEnclosingSphere(cloud);
  }
};

template <>
struct Enclosing<double> : OrmixEnclosing<double> {};
template <>
struct Enclosing<float> : OrmixEnclosing<float> {};
template <>
struct Enclosing<std::int32_t> : OrmixEnclosing<std::int32_t> {};

/// An index of boxes, made from the comparison's own.
template <>
struct Trees<double> {
  static constexpr bool available = true;
  using Box = ormix::geom::BoundingBox2d<double>;
  using Tree = ormix::geom::RTree<Box>;
  using Numbers = std::array<double, 4>;

  static Tree build(const std::vector<Numbers>& boxes) {
    return {Boxes{boxes.data()}, Boxes{boxes.data() + boxes.size()}};
  }
  static std::size_t query(const Tree& tree, const Numbers& box) {
    return tree.query({{box[0], box[1]}, {box[2], box[3]}}).size();
  }
  static std::size_t nearest(const Tree& tree, double x, double y) { return tree.nearest({x, y})[0]; }

 private:
  /// Makes boxes as they are read.
  struct Boxes {
    using iterator_category = std::forward_iterator_tag;
    using value_type = Box;
    using difference_type = std::ptrdiff_t;
    using pointer = const Box*;
    using reference = Box;
    const Numbers* at;

    Box operator*() const { return {(*at)[0], (*at)[1], (*at)[2], (*at)[3]}; }
    Boxes& operator++() { return ++at, *this; }
    bool operator==(const Boxes& other) const { return at == other.at; }
    bool operator!=(const Boxes& other) const { return at != other.at; }
  };
};

/// Regions of a mask, from the mask: their runs are made first.
template <>
struct Raster<double> {
  static constexpr bool available = true;

  static std::size_t components(const std::vector<std::uint8_t>& mask, int width, int height) {
    return componentsOf(rowsOf(mask, width, height), ormix::geom::ePC_8).nbComponents;
  }
  /// Trees of polygons, released again.
  static std::size_t contours(const std::vector<std::uint8_t>& mask, int width, int height) {
    return ormix::geom::traceContours<double>(rowsOf(mask, width, height), ormix::geom::ePC_8).size();
  }
  static double area(const std::vector<std::uint8_t>& mask, int width, int height) {
    return static_cast<double>(rowsOf(mask, width, height).getNbPixels());
  }

 private:
  static ormix::geom::RowIntersections rowsOf(const std::vector<std::uint8_t>& mask, int width, int height) {
    const auto columns = static_cast<std::size_t>(width);
    const auto rows = static_cast<std::size_t>(height);
    return toRowIntersections(ormix::geom::MaskView<const std::uint8_t>{mask.data(), columns, rows, columns});
  }
};

}  // namespace lut
