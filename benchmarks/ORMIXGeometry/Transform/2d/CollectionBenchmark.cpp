#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <ORMIXGeometry/Tools/PointsBoundingBox.h>
#include <ORMIXGeometry/Transform/2d/EnvelopeTransform2d.h>
#include <ORMIXGeometry/Transform/2d/GeometryTransform2dUtils.h>
#include <ORMIXGeometry/Transform/2d/TranslationTransform2d.h>
#include <benchmark/benchmark.h>
#include <benchmarks/support/StarPolygon.h>

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/ring.hpp>
#include <boost/smart_ptr/make_shared_object.hpp>

namespace ormix::benchmarks {
namespace {

using Polygon = geom::Polygon2d<omReal64>;
using BoostPoint = boost::geometry::model::d2::point_xy<omReal64>;
using BoostRing = boost::geometry::model::ring<BoostPoint, false, true>;

constexpr std::size_t nbPolygons = 100000;
constexpr omReal64 step = 1e-7;

/// The contours of a segmentation: 10⁵ rings of 20 vertices, each in memory of its own.
std::vector<Polygon> contours() { return std::vector<Polygon>(nbPolygons, starPolygon<omReal64>(20)); }
std::vector<BoostRing> boostContours() {
  BoostRing ring;
  const Polygon polygon = starPolygon<omReal64>(20);
  for (const auto& point : polygon.getPointColl()) ring.emplace_back(point.getX(), point.getY());
  return std::vector<BoostRing>(nbPolygons, ring);
}

void boxOfEach(benchmark::State& state) {
  const std::vector<Polygon> polygons = contours();
  for (auto _ : state)
    for (const Polygon& polygon : polygons) benchmark::DoNotOptimize(geom::pointsBoundingBox(polygon.getPointColl()));
}
void envelopeOfEach(benchmark::State& state) {
  const std::vector<Polygon> polygons = contours();
  for (auto _ : state)
    for (const Polygon& polygon : polygons) benchmark::DoNotOptimize(geom::EnvelopeTransform2d::envelope(polygon));
}
void boxOfEachBoost(benchmark::State& state) {
  const std::vector<BoostRing> rings = boostContours();
  for (auto _ : state)
    for (const BoostRing& ring : rings)
      benchmark::DoNotOptimize(
          boost::geometry::return_envelope<boost::geometry::model::box<BoostPoint>, BoostRing>(ring));
}

void translateEachInSitu(benchmark::State& state) {
  std::vector<Polygon> polygons = contours();
  const geom::TranslationTransform2d shift(Translation2d(step, -step));
  for (auto _ : state)
    for (Polygon& polygon : polygons) benchmark::DoNotOptimize(shift.applyInSitu(polygon));
}
void translateEachInSituBoost(benchmark::State& state) {
  std::vector<BoostRing> rings = boostContours();
  for (auto _ : state) {
    for (BoostRing& ring : rings)
      boost::geometry::for_each_point(ring, [](BoostPoint& point) {
        point.x(point.x() + step);
        point.y(point.y() - step);
      });
    benchmark::ClobberMemory();
  }
}

geom::GeometryEntity2dPtrColl sharedPoints() {
  geom::GeometryEntity2dPtrColl points;
  for (int index = 0; index < 1000000; ++index)
    points.push_back(boost::make_shared<geom::Point2d<omReal64>>(index % 1000, index / 1000));
  return points;
}
void imagesOfSharedPoints(benchmark::State& state) {
  const geom::GeometryEntity2dPtrColl points = sharedPoints();
  const geom::TranslationTransform2d shift(Translation2d(step, -step));
  for (auto _ : state) benchmark::DoNotOptimize(applyAll(shift, points).data());
}
/// What a loop that knows the class takes.
void imagesOfSharedPointsLimit(benchmark::State& state) {
  const geom::GeometryEntity2dPtrColl points = sharedPoints();
  for (auto _ : state) {
    geom::GeometryEntity2dPtrColl images;
    images.reserve(points.size());
    for (const auto& each : points) {
      const auto& point = static_cast<const geom::Point2d<omReal64>&>(*each);
      images.push_back(boost::make_shared<geom::Point2d<omReal64>>(point.getX() + step, point.getY() - step));
    }
    benchmark::DoNotOptimize(images.data());
  }
}

}  // namespace

// clang-format off
BENCHMARK(boxOfEach)->Unit(benchmark::kMillisecond);
BENCHMARK(envelopeOfEach)->Unit(benchmark::kMillisecond);
BENCHMARK(boxOfEachBoost)->Unit(benchmark::kMillisecond);
BENCHMARK(translateEachInSitu)->Unit(benchmark::kMillisecond);
BENCHMARK(translateEachInSituBoost)->Unit(benchmark::kMillisecond);
BENCHMARK(imagesOfSharedPoints)->Unit(benchmark::kMillisecond);
BENCHMARK(imagesOfSharedPointsLimit)->Unit(benchmark::kMillisecond);
// clang-format on

}  // namespace ormix::benchmarks
