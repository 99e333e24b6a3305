#include <ORMIXGeometry/Tools/Skeleton/ComputeSkeleton.h>
#include <ORMIXGeometry/Tools/Skeleton/PruneSkeleton.h>
#include <ORMIXGeometry/Tools/Skeleton/SkeletonRegion.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <benchmark/benchmark.h>

#include <cmath>

namespace ormix::benchmarks {
namespace {

using namespace geom;

/// A smooth ring with seven arms.
Polygon2d<omReal64> smoothRing(std::size_t nbVertices) {
  Polygon2d<omReal64> ring;
  for (std::size_t i = 0; i <= nbVertices; ++i) {
    const omReal64 angle = 2 * s_pi * static_cast<omReal64>(i % nbVertices) / static_cast<omReal64>(nbVertices);
    const omReal64 radius = 2000 * (1 + 0.3 * std::sin(7 * angle));
    ring.getPointColl().emplace_back(radius * std::cos(angle), radius * std::sin(angle));
  }
  return ring;
}

/// A mask of round grains with holes, `nbGrains` along each side.
RowIntersections grains(std::size_t nbGrains) {
  constexpr std::size_t pitch = 40;
  const std::size_t size = nbGrains * pitch;
  std::vector<omUInt8> mask(size * size);
  for (std::size_t y = 0; y < size; ++y)
    for (std::size_t x = 0; x < size; ++x) {
      const omReal64 radius = std::hypot(omReal64(x % pitch) - pitch / 2.0, omReal64(y % pitch) - pitch / 2.0);
      const omReal64 outer = 12 + static_cast<omReal64>((x / pitch * 7 + y / pitch * 3) % 7);
      mask[y * size + x] = radius < outer && radius > outer / 8;
    }
  return toRowIntersections(MaskView<omUInt8>{mask.data(), size, size, size});
}

void skeletonOfRing(benchmark::State& state) {
  const auto ring = smoothRing(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(computeSkeleton(ring));
}

void skeletonsOfGrains(benchmark::State& state) {
  const auto pixels = grains(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(computeSkeleton(pixels));
}

void prune(benchmark::State& state) {
  const Skeleton2d skeleton = computeSkeleton(grains(static_cast<std::size_t>(state.range(0))));
  for (auto _ : state) benchmark::DoNotOptimize(pruneSkeleton(skeleton, 1.5));
}

void regionAgain(benchmark::State& state) {
  const Skeleton2d skeleton = computeSkeleton(smoothRing(static_cast<std::size_t>(state.range(0))));
  for (auto _ : state) benchmark::DoNotOptimize(regionOf(skeleton, 0.1));
}

BENCHMARK(skeletonOfRing)
    ->Name("skeleton/ring")
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(skeletonsOfGrains)->Name("skeleton/grains")->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(prune)->Name("skeleton/prune grains")->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(regionAgain)->Name("skeleton/region of ring")->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace ormix::benchmarks
