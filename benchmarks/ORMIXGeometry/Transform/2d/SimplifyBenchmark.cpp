#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <ORMIXGeometry/Tools/Location/NearestPoint.h>
#include <ORMIXGeometry/Tools/Location/PointLocation.h>
#include <ORMIXGeometry/Transform/2d/SimplifyTransform2d.h>
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

namespace ormix::benchmarks {
namespace {

using namespace ormix::geom;

/// A closed star of a radius of 10^4 and seven points, with noise of ten units.
Polygon2d<omReal64> noisyStar(std::size_t nbVertices) {
  std::mt19937 random(42);
  Polygon2d<omReal64> ring;
  for (std::size_t i = 0; i < nbVertices; ++i) {
    const omReal64 angle = 6.283185307179586 * static_cast<omReal64>(i) / static_cast<omReal64>(nbVertices);
    const omReal64 noise = 20 * static_cast<omReal64>(random()) / 4294967296.0 - 10;
    const omReal64 radius = 10000 * (1 + 0.2 * std::sin(7 * angle)) + noise;
    ring.getPointColl().emplace_back(20000 + radius * std::cos(angle), 20000 + radius * std::sin(angle));
  }
  closePolygon(ring);
  return ring;
}

/// The tolerance is the second argument.
template <ePathSimplification method>
void simplifyRing(benchmark::State& state) {
  const Polygon2d<omReal64> ring = noisyStar(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state)
    benchmark::DoNotOptimize(SimplifyTransform2d::simplify(ring, static_cast<omReal64>(state.range(1)), method));
}
BENCHMARK(simplifyRing<ePS_EachAlone>)->ArgsProduct({{100000}, {1, 15, 100}})->Unit(benchmark::kMillisecond);
BENCHMARK(simplifyRing<ePS_KeepTopology>)->ArgsProduct({{100000}, {1, 15, 100}})->Unit(benchmark::kMillisecond);

std::vector<Point2dData<omReal64>> queries() {
  std::mt19937 random(5);
  std::vector<Point2dData<omReal64>> points(1 << 16);
  for (auto& point : points)
    point.setCoords(static_cast<omReal64>(8000 + random() % 24000), static_cast<omReal64>(8000 + random() % 24000));
  return points;
}

void prepareRing(benchmark::State& state) {
  const Polygon2d<omReal64> ring = noisyStar(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(PreparedPolygon2d(ring));
}
BENCHMARK(prepareRing)->Arg(1000)->Arg(100000);

void locateInPreparedRing(benchmark::State& state) {
  const PreparedPolygon2d ring(noisyStar(static_cast<std::size_t>(state.range(0))));
  const auto points = queries();
  std::size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(ring.locate(points[i++ % points.size()]));
}
BENCHMARK(locateInPreparedRing)->Arg(1000)->Arg(100000);

void locateInRing(benchmark::State& state) {
  const Polygon2d<omReal64> ring = noisyStar(static_cast<std::size_t>(state.range(0)));
  const auto points = queries();
  std::size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(locate(ring, points[i++ % points.size()]));
}
BENCHMARK(locateInRing)->Arg(1000)->Arg(100000);

void nearestOfRing(benchmark::State& state) {
  const Polygon2d<omReal64> ring = noisyStar(static_cast<std::size_t>(state.range(0)));
  const auto points = queries();
  std::size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(nearestBoundaryPoint(ring, points[i++ % points.size()]));
}
BENCHMARK(nearestOfRing)->Arg(1000)->Arg(100000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace ormix::benchmarks
