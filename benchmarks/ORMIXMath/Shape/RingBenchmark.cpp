#include <ORMIXMath/Shape/Ring.h>
#include <benchmark/benchmark.h>
#include <benchmarks/support/PhysicalLimit.h>
#include <benchmarks/support/StarRing.h>

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/ring.hpp>

namespace ormix::benchmarks {
namespace {

template <class T>
std::vector<T> ringOf(const benchmark::State& state) {
  return starRing<T>(static_cast<std::size_t>(state.range(0)));
}

/// The same ring as Boost.Geometry's own type: counter-clockwise, closed.
template <class T>
auto boostRingOf(const benchmark::State& state) {
  using Point = boost::geometry::model::d2::point_xy<T>;
  boost::geometry::model::ring<Point, false, true> ring;
  const std::vector<T> xy = ringOf<T>(state);
  for (std::size_t i = 0; i < xy.size(); i += 2) ring.emplace_back(xy[i], xy[i + 1]);
  return ring;
}

template <class T>
void ringReadLimit(benchmark::State& state) {
  measureReading(state, ringOf<T>(state));
}

template <class T>
void ringAreaOurs(benchmark::State& state) {
  const std::vector<T> xy = ringOf<T>(state);
  for (auto _ : state) benchmark::DoNotOptimize(ringSignedArea(xy.data(), xy.size() / 2));
}

template <class T>
void ringAreaBoost(benchmark::State& state) {
  const auto ring = boostRingOf<T>(state);
  for (auto _ : state) benchmark::DoNotOptimize(boost::geometry::area(ring));
}

template <class T>
void ringPerimeterOurs(benchmark::State& state) {
  const std::vector<T> xy = ringOf<T>(state);
  for (auto _ : state) benchmark::DoNotOptimize(pathLength(xy.data(), xy.size() / 2));
}

template <class T>
void ringPerimeterWithoutVectors(benchmark::State& state) {
  const std::vector<T> xy = ringOf<T>(state);
  for (auto _ : state) benchmark::DoNotOptimize(detail::pathLengthPortable(xy.data(), xy.size() / 2));
}

template <class T>
void ringPerimeterBoost(benchmark::State& state) {
  const auto ring = boostRingOf<T>(state);
  for (auto _ : state) benchmark::DoNotOptimize(boost::geometry::perimeter(ring));
}

/// A few vertices, some thousand in the first cache, a million in memory.
void sizes(benchmark::internal::Benchmark* row) { row->Arg(5)->Arg(1000)->Arg(1000000); }

}  // namespace

// clang-format off
BENCHMARK_TEMPLATE(ringReadLimit, omReal64)->Apply(sizes);
BENCHMARK_TEMPLATE(ringReadLimit, omReal32)->Apply(sizes);
BENCHMARK_TEMPLATE(ringReadLimit, omInt32)->Apply(sizes);
BENCHMARK_TEMPLATE(ringAreaOurs, omReal64)->Apply(sizes);
BENCHMARK_TEMPLATE(ringAreaBoost, omReal64)->Apply(sizes);
BENCHMARK_TEMPLATE(ringAreaOurs, omReal32)->Apply(sizes);
BENCHMARK_TEMPLATE(ringAreaBoost, omReal32)->Apply(sizes);
BENCHMARK_TEMPLATE(ringAreaOurs, omInt32)->Apply(sizes);
BENCHMARK_TEMPLATE(ringAreaBoost, omInt32)->Apply(sizes);
BENCHMARK_TEMPLATE(ringPerimeterOurs, omReal64)->Apply(sizes);
BENCHMARK_TEMPLATE(ringPerimeterWithoutVectors, omReal64)->Apply(sizes);
BENCHMARK_TEMPLATE(ringPerimeterBoost, omReal64)->Apply(sizes);
BENCHMARK_TEMPLATE(ringPerimeterOurs, omReal32)->Apply(sizes);
BENCHMARK_TEMPLATE(ringPerimeterWithoutVectors, omReal32)->Apply(sizes);
BENCHMARK_TEMPLATE(ringPerimeterBoost, omReal32)->Apply(sizes);
BENCHMARK_TEMPLATE(ringPerimeterOurs, omInt32)->Apply(sizes);
BENCHMARK_TEMPLATE(ringPerimeterWithoutVectors, omInt32)->Apply(sizes);
BENCHMARK_TEMPLATE(ringPerimeterBoost, omInt32)->Apply(sizes);
BENCHMARK_TEMPLATE(ringPerimeterOurs, omUInt32)->Apply(sizes);
// clang-format on

}  // namespace ormix::benchmarks
