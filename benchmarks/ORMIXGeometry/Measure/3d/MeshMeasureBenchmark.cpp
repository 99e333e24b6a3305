#include <ORMIXGeometry/Measure/3d/AreaMsr3d.h>
#include <ORMIXGeometry/Measure/3d/MeshMoments3d.h>
#include <ORMIXGeometry/Measure/3d/VolumeMsr3d.h>
#include <ORMIXMath/Distance/SpatialSegment.h>
#include <benchmark/benchmark.h>
#include <benchmarks/support/TorusMesh.h>

#include <cmath>

namespace ormix::benchmarks {
namespace {

using namespace geom;
using Vertex = Point3dData<omReal64>;

constexpr std::size_t nbTriangles = 1000000;

template <class Measure, class T>
void measureMesh(benchmark::State& state) {
  const Mesh3d<T> mesh = torusMesh<T>(nbTriangles);
  for (auto _ : state) benchmark::DoNotOptimize(Measure::measure(mesh));
}

void measureMeshLocalVolume(benchmark::State& state) {
  const Mesh3d<omReal64> mesh = torusMesh<omReal64>(nbTriangles);
  for (auto _ : state) benchmark::DoNotOptimize(localVolume(mesh));
}

SpatialPoint minus(const Vertex& a, const Vertex& b) {
  return {a.getX() - b.getX(), a.getY() - b.getY(), a.getZ() - b.getZ()};
}
SpatialPoint cross(const SpatialPoint& a, const SpatialPoint& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
omReal64 dot(const SpatialPoint& a, const SpatialPoint& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

/// What one writes first: the vertices of each triangle, one sum.
template <omReal64 (*ofTriangle)(const Vertex&, const Vertex&, const Vertex&)>
void plainMeshSum(benchmark::State& state) {
  const Mesh3d<omReal64> mesh = torusMesh<omReal64>(nbTriangles);
  for (auto _ : state) {
    omReal64 sum = 0;
    visitTriangles(mesh,
                   [&sum](const Vertex& p0, const Vertex& p1, const Vertex& p2) { sum += ofTriangle(p0, p1, p2); });
    benchmark::DoNotOptimize(sum);
  }
}
omReal64 area(const Vertex& p0, const Vertex& p1, const Vertex& p2) {
  const SpatialPoint normal = cross(minus(p1, p0), minus(p2, p0));
  return std::sqrt(dot(normal, normal)) / 2;
}
omReal64 volume(const Vertex& p0, const Vertex& p1, const Vertex& p2) {
  const Vertex origin;
  return dot(minus(p0, origin), cross(minus(p1, origin), minus(p2, origin))) / 6;
}

}  // namespace

// clang-format off
BENCHMARK_TEMPLATE(plainMeshSum, area)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(measureMesh, AreaMsr3d, omReal64)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(measureMesh, AreaMsr3d, omReal32)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(plainMeshSum, volume)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(measureMesh, VolumeMsr3d, omReal64)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(measureMesh, VolumeMsr3d, omReal32)->Unit(benchmark::kMillisecond);
BENCHMARK(measureMeshLocalVolume)->Unit(benchmark::kMillisecond);
// clang-format on

}  // namespace ormix::benchmarks
