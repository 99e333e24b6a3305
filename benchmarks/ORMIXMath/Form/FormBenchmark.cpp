#include <ORMIXMath/Form/FormDeviation.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

namespace {

using namespace ormix;
using FormFunction = EstimationStatus (*)(const SampleView&, eFormReference, FormDeviation&);

/// Points near a cylinder of radius 10, its section, or a plane, with errors of 0.001.
std::vector<omReal64> pointsNear(std::size_t nbPoints, std::size_t dimension, bool isFlat) {
  std::mt19937 engine(1);
  std::uniform_real_distribution<omReal64> uniform(0, 1);
  std::normal_distribution<omReal64> error(0, 0.001);
  std::vector<omReal64> points;
  for (std::size_t i = 0; i < nbPoints; ++i) {
    const omReal64 turn = 6.283185307179586 * uniform(engine);
    const omReal64 radius = 10 + error(engine);
    if (isFlat)
      points.insert(points.end(), {10 * uniform(engine), 7 * uniform(engine)});
    else
      points.insert(points.end(), {radius * std::cos(turn), radius * std::sin(turn)});
    if (dimension == 3) points.push_back(isFlat ? error(engine) : 30 * uniform(engine));
  }
  return points;
}

void measure(benchmark::State& state, FormFunction form, std::size_t dimension, bool isFlat) {
  const auto nbPoints = static_cast<std::size_t>(state.range(0));
  const std::vector<omReal64> points = pointsNear(nbPoints, dimension, isFlat);
  FormDeviation result;
  for (auto _ : state)
    benchmark::DoNotOptimize(form({points.data(), nbPoints, dimension}, eFR_MinimumZone, result).code);
}

}  // namespace

BENCHMARK_CAPTURE(measure, flatness, flatness, 3, true)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(measure, roundness, roundness, 2, false)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(measure, cylindricity, cylindricity, 3, false)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
