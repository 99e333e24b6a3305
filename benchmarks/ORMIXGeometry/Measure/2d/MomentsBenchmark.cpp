#include <ORMIXGeometry/Entity/2d/PointCloud/PointCloud2d.h>
#include <ORMIXGeometry/Measure/2d/HuMomentsMsr2d.h>
#include <ORMIXGeometry/Measure/2d/PixelMoments.h>
#include <benchmark/benchmark.h>
#include <benchmarks/support/PhysicalLimit.h>
#include <benchmarks/support/StarPolygon.h>

#include <random>

namespace ormix::benchmarks {
namespace {

using namespace geom;

void measureMoments(benchmark::State& state, const BaseGeometryEntity2d& entity) {
  const MomentsMsr2d measure;
  Moments2dO3 moments;
  for (auto _ : state) {
    benchmark::DoNotOptimize(measure.measure(entity, moments));
    benchmark::DoNotOptimize(moments);
  }
}

template <class T>
void momentsOfPolygon(benchmark::State& state) {
  measureMoments(state, starPolygon<T>(static_cast<std::size_t>(state.range(0))));
}

template <class T>
void momentsOfCloud(benchmark::State& state) {
  measureMoments(state, PointCloud2d<T>(starPolygon<T>(static_cast<std::size_t>(state.range(0))).getPointColl()));
}

/// The row that those of polygons and clouds of omReal64 are compared with.
void readingOfPoints(benchmark::State& state) {
  measureReading(state, starPolygon<omReal64>(static_cast<std::size_t>(state.range(0))).getPointColl());
}

void huFromMoments(benchmark::State& state) {
  const Moments2dO3 moments = MomentsMsr2d::measure(starPolygon<omReal64>(1000));
  for (auto _ : state) benchmark::DoNotOptimize(HuMoments2dO3(moments));
}

/// Rows of 27 runs on average, as a mask of some thousand blobs in 4096 columns has; a step of columns of 100 makes it
/// wider than the fast sums allow.
void momentsOfPixels(benchmark::State& state) {
  constexpr omUInt32 nbRows = 4096;
  const auto step = static_cast<omUInt32>(state.range(0));
  std::mt19937 generator(7);
  const auto below = [&generator](omUInt32 bound) { return static_cast<omUInt32>(generator()) % bound; };
  std::vector<omUInt32> nbRuns;
  RowIntersections::RunColl runs;
  for (omUInt32 y = 0; y < nbRows; ++y) {
    const std::size_t nbBefore = runs.size();
    for (omUInt32 x = below(150); x + 100 < 4096; x += 100 + below(100))
      runs.push_back({x * step, (x + 1 + below(90)) * step});
    nbRuns.push_back(static_cast<omUInt32>(runs.size() - nbBefore));
  }
  RowIntersections rows;
  if (!rows.setRows(0, nbRuns, runs)) state.SkipWithError("runs");
  for (auto _ : state) benchmark::DoNotOptimize(moments(rows));
}

}  // namespace

// clang-format off
BENCHMARK_TEMPLATE(momentsOfPolygon, omReal64)->Arg(5)->Arg(1000)->Arg(1000000);
BENCHMARK_TEMPLATE(momentsOfPolygon, omReal32)->Arg(1000000);
BENCHMARK_TEMPLATE(momentsOfPolygon, omInt32)->Arg(1000000);
BENCHMARK_TEMPLATE(momentsOfPolygon, omUInt32)->Arg(1000000);
BENCHMARK_TEMPLATE(momentsOfCloud, omReal64)->Arg(1000000);
BENCHMARK(readingOfPoints)->Arg(1000000);
BENCHMARK(huFromMoments);
BENCHMARK(momentsOfPixels)->Arg(1)->Arg(100);
// clang-format on

}  // namespace ormix::benchmarks
