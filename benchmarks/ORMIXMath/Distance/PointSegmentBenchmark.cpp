#include <ORMIXMath/Distance/PointSegmentDistance.h>
#include <benchmark/benchmark.h>

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/segment.hpp>
#include <random>
#include <vector>

namespace ormix::benchmarks {
namespace {

namespace bg = boost::geometry;
using BoostPoint = bg::model::d2::point_xy<omReal64>;

constexpr PlanarSegment segment{{300, 400}, {700, 650}};

/// 10⁶ points in a square.
std::vector<PlanarPoint> randomPoints() {
  std::mt19937 random(7);
  std::uniform_real_distribution<omReal64> anywhere(0, 1000);
  std::vector<PlanarPoint> points(1000000);
  for (PlanarPoint& point : points) point = {anywhere(random), anywhere(random)};
  return points;
}

/// Their distances from one segment, in milliseconds.
template <class Distance>
void toSegment(benchmark::State& state, Distance distance) {
  const std::vector<PlanarPoint> points = randomPoints();
  for (auto _ : state) {
    omReal64 sum = 0;
    for (const PlanarPoint& point : points) sum += distance(point);
    benchmark::DoNotOptimize(sum);
  }
}

void pointsToSegment(benchmark::State& state) {
  toSegment(state, [](const PlanarPoint& point) {
    PlanarPoint nearest;
    return pointSegmentDistance(point, segment, nearest);
  });
}
void pointsToSegmentRun(benchmark::State& state) {
  const std::vector<PlanarPoint> points = randomPoints();
  std::vector<omReal64> distances(points.size());
  for (auto _ : state) {
    pointSegmentDistances(points.data(), points.size(), segment, distances.data());
    benchmark::DoNotOptimize(distances.data());
  }
}
void pointsToSegmentBoost(benchmark::State& state) {
  const bg::model::segment<BoostPoint> same({segment.p0.x, segment.p0.y}, {segment.p1.x, segment.p1.y});
  toSegment(state, [&same](const PlanarPoint& point) { return bg::distance(BoostPoint(point.x, point.y), same); });
}

}  // namespace

BENCHMARK(pointsToSegment)->Unit(benchmark::kMillisecond);
BENCHMARK(pointsToSegmentRun)->Unit(benchmark::kMillisecond);
BENCHMARK(pointsToSegmentBoost)->Unit(benchmark::kMillisecond);

}  // namespace ormix::benchmarks
