#include <ORMIXGeometry/Entity/2d/Circle/Circle2d.h>
#include <ORMIXGeometry/Measure/2d/AreaMsr2d.h>
#include <ORMIXGeometry/Measure/2d/PerimeterMsr2d.h>
#include <ORMIXMath/Shape/Ring.h>
#include <benchmark/benchmark.h>
#include <benchmarks/support/StarPolygon.h>

namespace ormix::benchmarks {
namespace {

using namespace geom;

/// What a measure costs through the double dispatch: `entity` is known as its base only.
template <class Measure>
void measureThroughBase(benchmark::State& state, const BaseGeometryEntity2d& entity) {
  const Measure measure;
  const BaseGeometryEntity2d* hidden = &entity;
  omReal64 value = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(hidden);
    benchmark::DoNotOptimize(measure.measure(*hidden, value));
    benchmark::DoNotOptimize(value);
  }
}

template <class Measure, class T>
void measurePolygon(benchmark::State& state) {
  measureThroughBase<Measure>(state, starPolygon<T>(static_cast<std::size_t>(state.range(0))));
}

void measureCircleArea(benchmark::State& state) {
  measureThroughBase<AreaMsr2d>(state, Circle2d<omReal64>(Point2dData<omReal64>(1, 2), 3));
}

/// In one call, which makes a measure of its own and throws where none is defined.
void measureCircleAreaInOneCall(benchmark::State& state) {
  const Circle2d<omReal64> circle(Point2dData<omReal64>(1, 2), 3);
  const BaseGeometryEntity2d* hidden = &circle;
  for (auto _ : state) {
    benchmark::DoNotOptimize(hidden);
    benchmark::DoNotOptimize(AreaMsr2d::measure(*hidden));
  }
}

template <class Measure>
void measurePolygonInOneCall(benchmark::State& state) {
  const Polygon2d<omReal64> polygon = starPolygon<omReal64>(static_cast<std::size_t>(state.range(0)));
  const BaseGeometryEntity2d* hidden = &polygon;
  for (auto _ : state) {
    benchmark::DoNotOptimize(hidden);
    benchmark::DoNotOptimize(Measure::measure(*hidden));
  }
}

/// The direct functions that the measures of small entities are compared with; the dispatch may cost 10 ns.
void directCircleArea(benchmark::State& state) {
  const Circle2d<omReal64> circle(Point2dData<omReal64>(1, 2), 3);
  const Circle2d<omReal64>* hidden = &circle;
  for (auto _ : state) {
    benchmark::DoNotOptimize(hidden);
    benchmark::DoNotOptimize(hidden->area());
  }
}

void directPolygonArea(benchmark::State& state) {
  const Polygon2d<omReal64> polygon = starPolygon<omReal64>(static_cast<std::size_t>(state.range(0)));
  const std::vector<Point2dData<omReal64>>* points = &polygon.getPointColl();
  for (auto _ : state) {
    benchmark::DoNotOptimize(points);
    benchmark::DoNotOptimize(ringSignedArea(coordinates(*points), points->size()));
  }
}

}  // namespace

// clang-format off
BENCHMARK(measureCircleArea);
BENCHMARK(measureCircleAreaInOneCall);
BENCHMARK(directCircleArea);
BENCHMARK_TEMPLATE(measurePolygon, AreaMsr2d, omReal64)->Arg(5)->Arg(1000000);
BENCHMARK(directPolygonArea)->Arg(5);
BENCHMARK_TEMPLATE(measurePolygonInOneCall, AreaMsr2d)->Arg(5);
BENCHMARK_TEMPLATE(measurePolygonInOneCall, PerimeterMsr2d)->Arg(5);
BENCHMARK_TEMPLATE(measurePolygon, AreaMsr2d, omReal32)->Arg(1000000);
BENCHMARK_TEMPLATE(measurePolygon, AreaMsr2d, omInt32)->Arg(1000000);
BENCHMARK_TEMPLATE(measurePolygon, PerimeterMsr2d, omReal64)->Arg(1000000);
BENCHMARK_TEMPLATE(measurePolygon, PerimeterMsr2d, omReal32)->Arg(1000000);
BENCHMARK_TEMPLATE(measurePolygon, PerimeterMsr2d, omInt32)->Arg(1000000);
// clang-format on

}  // namespace ormix::benchmarks
