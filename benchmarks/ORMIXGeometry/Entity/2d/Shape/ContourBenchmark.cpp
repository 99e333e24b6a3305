#include <ORMIXGeometry/Entity/2d/Shape/Contours.h>
#include <ORMIXGeometry/Entity/2d/Shape/Rasterize.h>
#include <benchmark/benchmark.h>
#include <benchmarks/support/BlobMask.h>
#include <benchmarks/support/StarPolygon.h>

namespace ormix::benchmarks {
namespace {

using namespace geom;

/// The limit of both ways: the coordinates of all runs are copied.
void contoursCopyRuns(benchmark::State& state) {
  const RowIntersections rows = blobRows();
  for (auto _ : state) {
    RowIntersections::RunColl copy = rows.getRunColl();
    benchmark::DoNotOptimize(copy.data());
  }
}

template <class T>
void contoursTrace(benchmark::State& state) {
  const RowIntersections rows = blobRows();
  for (auto _ : state) benchmark::DoNotOptimize(traceContours<T>(rows, ePC_8));
}

template <class T>
void contoursRasterize(benchmark::State& state) {
  const auto contours = traceContours<T>(blobRows(), ePC_8);
  for (auto _ : state) benchmark::DoNotOptimize(rasterize(contours));
}

/// A star of 10⁵ vertices in 4096² pixels.
template <class T>
Polygon2d<T> smallStar() {
  Polygon2d<T> star = starPolygon<T>(100000);
  const auto moved = [](T value) { return static_cast<T>((value - T{5000}) * T{2} / T{15}); };
  for (auto& point : star.getPointColl()) point.setCoords(moved(point.getX()), moved(point.getY()));
  return star;
}

template <class T>
void rasterizeStar(benchmark::State& state) {
  const Polygon2d<T> star = smallStar<T>();
  const auto rule = static_cast<eRasterRule>(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(rasterize(star, rule));
}

}  // namespace

// clang-format off
BENCHMARK(contoursCopyRuns)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(contoursTrace, omInt32)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(contoursTrace, omReal32)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(contoursTrace, omReal64)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(contoursRasterize, omInt32)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(contoursRasterize, omReal64)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(rasterizeStar, omInt32)->ArgName("rule")->Arg(eRR_Center)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(rasterizeStar, omReal64)->ArgName("rule")->Arg(eRR_Center)->Arg(eRR_Touched)->Arg(eRR_Covered)->Unit(benchmark::kMillisecond);
// clang-format on

}  // namespace ormix::benchmarks
