#include <ORMIXGeometry/Entity/3d/Shape/ConnectedVoxels.h>
#include <ORMIXGeometry/Entity/3d/Shape/SurfaceNets.h>
#include <ORMIXGeometry/Entity/3d/Shape/VolumeView.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelSurfaces.h>
#include <ORMIXGeometry/Entity/3d/Shape/Voxelize.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <vector>

namespace ormix::benchmarks {
namespace {

using namespace geom;

constexpr int s_side = 512;
constexpr auto s_size = static_cast<std::size_t>(s_side);

/// 512³ voxels with 10⁴ balls of the radii 2 to 6 at fixed places: 554,000 runs, some 8,700 regions, 3.3 million faces.
const std::vector<omUInt8>& volume() {
  static const std::vector<omUInt8> made = [] {
    std::vector<omUInt8> voxels(s_size * s_size * s_size);
    std::mt19937 engine(7);
    const auto below = [&engine](unsigned bound) { return static_cast<int>(engine() % bound); };
    for (int ball = 0; ball < 10000; ++ball) {
      const int x = below(s_side), y = below(s_side), z = below(s_side), radius = 2 + below(5);
      for (int k = std::max(0, z - radius); k <= std::min(s_side - 1, z + radius); ++k)
        for (int j = std::max(0, y - radius); j <= std::min(s_side - 1, y + radius); ++j)
          for (int i = std::max(0, x - radius); i <= std::min(s_side - 1, x + radius); ++i)
            if ((i - x) * (i - x) + (j - y) * (j - y) + (k - z) * (k - z) <= radius * radius)
              voxels[static_cast<std::size_t>((k * s_side + j) * s_side + i)] = 255;
    }
    return voxels;
  }();
  return made;
}

RowIntersections3d runs() {
  return toRowIntersections3d(
      VolumeView<const omUInt8>{volume().data(), s_size, s_size, s_size, s_side, s_side * s_side});
}

void volumeToRuns(benchmark::State& state) {
  volume();
  for (auto _ : state) benchmark::DoNotOptimize(runs());
}
BENCHMARK(volumeToRuns)->Unit(benchmark::kMillisecond);

void volumeComponents(benchmark::State& state) {
  const RowIntersections3d voxels = runs();
  const auto connectivity = static_cast<eVoxelConnectivity>(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(measureComponents(voxels, componentsOf(voxels, connectivity)));
}
BENCHMARK(volumeComponents)->Arg(eVC_6)->Arg(eVC_26)->Unit(benchmark::kMillisecond);

void volumeFaces(benchmark::State& state) {
  const RowIntersections3d voxels = runs();
  for (auto _ : state) benchmark::DoNotOptimize(voxelSurfaces<omReal32>(voxels, eVC_26));
}
BENCHMARK(volumeFaces)->Unit(benchmark::kMillisecond);

void volumeNets(benchmark::State& state) {
  const RowIntersections3d voxels = runs();
  for (auto _ : state) benchmark::DoNotOptimize(surfaceNets<omReal32>(voxels, eVC_26));
}
BENCHMARK(volumeNets)->Unit(benchmark::kMillisecond);

void volumeVoxelize(benchmark::State& state) {
  const auto meshes = surfaceNets<omReal32>(runs(), eVC_26);
  const VoxelGrid grid{{0, 0, 0}, {1, 1, 1}, s_side, s_side, s_side};
  for (auto _ : state) benchmark::DoNotOptimize(voxelize(meshes, grid));
}
BENCHMARK(volumeVoxelize)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace ormix::benchmarks
