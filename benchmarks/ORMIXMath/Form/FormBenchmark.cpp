#include <ORMIXMath/Form/FormDeviation.h>

#include <benchmark/benchmark.h>
#include <benchmarks/support/PhysicalLimit.h>

#include <cmath>
#include <random>
#include <vector>

namespace {

using namespace ormix;
using FormFunction = EstimationStatus (*)(const SampleView&, eFormReference, FormDeviation&);

enum eSurface { eS_Plane, eS_Circle, eS_Lobes, eS_Sphere, eS_Cylinder };

/// Points near a surface of radius 10, in random order, with errors of 0.001; a profile with lobes has none.
std::vector<omReal64> pointsNear(std::size_t nbPoints, eSurface surface) {
  std::mt19937 engine(1);
  std::uniform_real_distribution<omReal64> uniform(0, 1);
  std::normal_distribution<omReal64> normal(0, 1);
  std::vector<omReal64> points;
  for (std::size_t i = 0; i < nbPoints; ++i) {
    const omReal64 turn = 6.283185307179586 * uniform(engine);
    const omReal64 height = uniform(engine);
    const omReal64 error = surface == eS_Lobes ? 0.02 * std::sin(3 * turn) : 0.001 * normal(engine);
    const omReal64 across = surface == eS_Sphere ? 2 * std::sqrt(height * (1 - height)) : 1;
    const omReal64 radius = across * (10 + error);
    if (surface == eS_Plane)
      points.insert(points.end(), {turn, 7 * height, error});
    else
      points.insert(points.end(), {radius * std::cos(turn), radius * std::sin(turn)});
    if (surface == eS_Sphere) points.push_back((2 * height - 1) * (10 + error));
    if (surface == eS_Cylinder) points.push_back(30 * height);
  }
  return points;
}

void measure(benchmark::State& state, FormFunction form, eFormReference reference, eSurface surface) {
  const auto nbPoints = static_cast<std::size_t>(state.range(0));
  const std::vector<omReal64> points = pointsNear(nbPoints, surface);
  FormDeviation result;
  for (auto _ : state)
    benchmark::DoNotOptimize(form({points.data(), nbPoints, points.size() / nbPoints}, reference, result).code);
}

/// What all that looks at each point takes at least.
void readPoints(benchmark::State& state) {
  benchmarks::measureReading(state, pointsNear(static_cast<std::size_t>(state.range(0)), eS_Sphere));
}

void sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
}

}  // namespace

BENCHMARK(readPoints)->Apply(sizes);
BENCHMARK_CAPTURE(measure, flatness, flatness, eFR_MinimumZone, eS_Plane)->Apply(sizes);
BENCHMARK_CAPTURE(measure, roundness, roundness, eFR_MinimumZone, eS_Circle)->Apply(sizes);
BENCHMARK_CAPTURE(measure, roundness_of_lobes, roundness, eFR_MinimumZone, eS_Lobes)->Apply(sizes);
BENCHMARK_CAPTURE(measure, inscribed_circle, roundness, eFR_MaximumInscribed, eS_Circle)->Apply(sizes);
BENCHMARK_CAPTURE(measure, sphericity, sphericity, eFR_MinimumZone, eS_Sphere)->Apply(sizes);
BENCHMARK_CAPTURE(measure, cylindricity, cylindricity, eFR_MinimumZone, eS_Cylinder)->Apply(sizes);
