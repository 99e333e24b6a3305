#include <ORMIXGeometry/Estimation/2d/Circle2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Ellipse2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Estimation2dUtils.h>
#include <ORMIXGeometry/Estimation/2d/HomographyTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Line2dEstimator.h>
#include <ORMIXMath/Estimation/RobustEstimation.h>
#include <benchmark/benchmark.h>
#include <benchmarks/support/PhysicalLimit.h>

#include <boost/numeric/ublas/vector.hpp>
#include <cmath>
#include <random>

namespace ormix::benchmarks {
namespace {

using namespace ormix::geom;
using Points = std::vector<Point2dData<omReal64>>;

/// Points about an ellipse off the origin, in no order, each off by about 1.
Points noisyEllipse(const benchmark::State& state, omReal64 majorRadius, omReal64 minorRadius) {
  std::mt19937 random(7);
  std::uniform_real_distribution<omReal64> angle(0, 6.28);
  std::normal_distribution<omReal64> noise;
  Points points;
  for (auto left = state.range(0); left > 0; --left) {
    const omReal64 at = angle(random);
    points.emplace_back(1000 + majorRadius * std::cos(at) + noise(random),
                        -500 + minorRadius * std::sin(at) + noise(random));
  }
  return points;
}

template <class Estimator>
void estimate(benchmark::State& state, const SampleView& samples) {
  RealVector params;
  if (!Estimator().computeEstimation(samples, params)) state.SkipWithError("the fit failed");
  benchmark::DoNotOptimize(params);
}

void fitReadLimit(benchmark::State& state) { measureReading(state, noisyEllipse(state, 500, 500)); }

/// From the points where they are.
template <class Estimator>
void fit(benchmark::State& state) {
  const Points points = noisyEllipse(state, 500, 300);
  for (auto _ : state) estimate<Estimator>(state, toSamples(points));
}

/// Of 20 points: what a fit takes beside reading them.
template <class Estimator>
void fitFew(benchmark::State& state) {
  std::vector<Points> clouds;
  const Points all = noisyEllipse(state, 30, 20);
  for (std::size_t first = 0; first + 20 <= all.size(); first += 20)
    clouds.emplace_back(all.begin() + static_cast<std::ptrdiff_t>(first),
                        all.begin() + static_cast<std::ptrdiff_t>(first + 20));
  for (auto _ : state)
    for (const Points& points : clouds) estimate<Estimator>(state, toSamples(points));
}

/// By way of one vector a point.
template <class Estimator>
void fitByDataSet(benchmark::State& state) {
  const Points points = noisyEllipse(state, 500, 300);
  for (auto _ : state) {
    RealVector params;
    if (!Estimator().computeEstimation(toDataSet(points), params)) state.SkipWithError("the fit failed");
    benchmark::DoNotOptimize(params);
  }
}

/// Points about a line or a circle, off by about 1, each followed by one that is anywhere.
template <class OnShape>
Points withAsManyOutliers(std::size_t nbPoints, omReal64 low, omReal64 high, OnShape onShape) {
  std::mt19937 random(15);
  std::uniform_real_distribution<omReal64> anywhere(low, high);
  std::uniform_real_distribution<omReal64> along(0, 1);
  std::normal_distribution<omReal64> noise;
  Points points;
  while (points.size() < nbPoints) {
    points.push_back(onShape(along(random), noise(random)));
    points.emplace_back(anywhere(random), anywhere(random));
  }
  return points;
}

template <class Estimator>
void fitRobustly(benchmark::State& state, const SampleView& samples, eRobustMethod method = eRM_Msac) {
  RobustOptions options;
  options.method = method;
  options.threshold = 3;
  for (auto _ : state) {
    ++options.seed;
    Estimator estimator;
    RobustResult result;
    if (!robustEstimation(estimator, samples, options, result)) state.SkipWithError("the fit failed");
    benchmark::DoNotOptimize(result.params);
  }
}
void fitLineRobustly(benchmark::State& state) {
  const Points points = withAsManyOutliers(10000, 0, 2000, [](omReal64 t, omReal64 noise) {
    return Point2dData<omReal64>(1600 * t - 0.6 * noise + 100, 1200 * t + 0.8 * noise + 50);
  });
  fitRobustly<Line2dEstimator>(state, toSamples(points));
}
template <eRobustMethod Method>
void fitCircleRobustly(benchmark::State& state) {
  const auto nbPoints = static_cast<std::size_t>(state.range(0));
  const Points points = withAsManyOutliers(nbPoints, 19000, 21000, [](omReal64 t, omReal64 noise) {
    return Point2dData<omReal64>(20000 + (500 + noise) * std::cos(6.28 * t),
                                 20000 + (500 + noise) * std::sin(6.28 * t));
  });
  fitRobustly<Circle2dEstimator>(state, toSamples(points), Method);
}

/// Pairs of which a share, in percent, have a target anywhere.
template <eRobustMethod Method>
void fitHomographyRobustly(benchmark::State& state) {
  std::mt19937 random(15);
  std::uniform_real_distribution<omReal64> anywhere(0, 1000);
  std::normal_distribution<omReal64> noise;
  std::vector<omReal64> pairs;
  for (auto k = state.range(0); k > 0; --k) {
    const omReal64 x = anywhere(random), y = anywhere(random), w = 1 + 2e-4 * x - 1e-4 * y;
    if (k % 100 < state.range(1))
      pairs.insert(pairs.end(), {x, y, anywhere(random), anywhere(random)});
    else
      pairs.insert(pairs.end(), {x, y, (0.9 * x + 0.1 * y + 30) / w + noise(random),
                                 (-0.1 * x + 0.95 * y + 50) / w + noise(random)});
  }
  fitRobustly<HomographyTransform2dEstimator>(state, {pairs.data(), pairs.size() / 4, 4}, Method);
}

void fitHomography(benchmark::State& state) {
  const Points from = noisyEllipse(state, 500, 300);
  const Points to = noisyEllipse(state, 490, 310);
  for (auto _ : state) estimate<HomographyTransform2dEstimator>(state, toSamples(from, to));
}

void sizes(benchmark::internal::Benchmark* row) { row->Arg(1000)->Arg(100000)->Arg(1000000); }

}  // namespace

// clang-format off
BENCHMARK(fitReadLimit)->Apply(sizes);
BENCHMARK_TEMPLATE(fit, Circle2dEstimator)->Apply(sizes);
BENCHMARK_TEMPLATE(fit, Ellipse2dEstimator)->Apply(sizes);
BENCHMARK_TEMPLATE(fit, Line2dEstimator)->Apply(sizes);
BENCHMARK_TEMPLATE(fitFew, Circle2dEstimator)->Arg(20000);
BENCHMARK_TEMPLATE(fitFew, Ellipse2dEstimator)->Arg(20000);
BENCHMARK_TEMPLATE(fitFew, Line2dEstimator)->Arg(20000);
BENCHMARK_TEMPLATE(fitByDataSet, Circle2dEstimator)->Apply(sizes);
BENCHMARK(fitHomography)->Arg(10000);
BENCHMARK(fitLineRobustly)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(fitCircleRobustly, eRM_Msac)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(fitCircleRobustly, eRM_Acontrario)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(fitHomographyRobustly, eRM_Msac)->Args({1000, 50})->Args({1000, 70})->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(fitHomographyRobustly, eRM_Acontrario)->Args({1000, 50})->Args({1000, 70})->Args({100000, 70})->Unit(benchmark::kMillisecond);
// clang-format on

}  // namespace ormix::benchmarks
