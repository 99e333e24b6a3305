#include <ORMIXGeometry/Entity/3d/Mesh/QuickHull.h>
#include <benchmark/benchmark.h>
#include <benchmarks/support/PhysicalLimit.h>

#include <cmath>
#include <random>

namespace ormix::benchmarks {
namespace {

using namespace geom;
using Points = std::vector<Point3dData<omReal64>>;

/// Points in a ball, or on its sphere, evenly spread and in no order.
Points ball(const benchmark::State& state, bool isSphere) {
  std::mt19937_64 random(21);
  std::normal_distribution<omReal64> normal;
  std::uniform_real_distribution<omReal64> uniform;
  Points points;
  for (auto left = state.range(0); left > 0; --left) {
    const omReal64 x = normal(random);
    const omReal64 y = normal(random);
    const omReal64 z = normal(random);
    const omReal64 scale = 1000 * (isSphere ? 1 : std::cbrt(uniform(random))) / std::sqrt(x * x + y * y + z * z);
    points.emplace_back(2000 + scale * x, 2000 + scale * y, 2000 + scale * z);
  }
  return points;
}

void hullOf(benchmark::State& state, const Points& points) {
  for (auto _ : state) {
    Mesh3d<omReal64> mesh;
    if (!quickHull(points, mesh)) state.SkipWithError("no hull");
    benchmark::DoNotOptimize(mesh.getNbTriangles());
  }
}

/// On a cone, each turn larger than the one before by a fixed factor: the order by height would be quadratic.
void hullOfSpiral(benchmark::State& state) {
  Points points;
  for (auto i = state.range(0); i > 0; --i) {
    const omReal64 turn = 200.0 * static_cast<omReal64>(i) / static_cast<omReal64>(state.range(0));
    const omReal64 radius = std::exp(turn);
    points.emplace_back(radius * std::cos(10 * turn), radius * std::sin(10 * turn), radius);
  }
  hullOf(state, points);
}

void hullReadLimit(benchmark::State& state) { measureReading(state, ball(state, false)); }
void hullOfBall(benchmark::State& state) { hullOf(state, ball(state, false)); }
/// All points are corners of the hull.
void hullOfSphere(benchmark::State& state) { hullOf(state, ball(state, true)); }

}  // namespace

// clang-format off
BENCHMARK(hullReadLimit)->Unit(benchmark::kMillisecond)->Arg(100000)->Arg(1000000);
BENCHMARK(hullOfBall)->Unit(benchmark::kMillisecond)->Arg(100000)->Arg(1000000)->Arg(2000000);
BENCHMARK(hullOfSphere)->Unit(benchmark::kMillisecond)->Arg(100000)->Arg(200000);
BENCHMARK(hullOfSpiral)->Unit(benchmark::kMillisecond)->Arg(10000)->Arg(20000)->Arg(40000);
// clang-format on

}  // namespace ormix::benchmarks
