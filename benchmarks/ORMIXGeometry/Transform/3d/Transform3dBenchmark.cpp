#include <ORMIXGeometry/Entity/3d/PointCloud/PointCloud3d.h>
#include <ORMIXGeometry/Transform/3d/GeometryTransform3dUtils.h>
#include <ORMIXMath/ORMIXMath.h>
#include <benchmark/benchmark.h>
#include <benchmarks/support/PhysicalLimit.h>
#include <benchmarks/support/TorusMesh.h>

namespace ormix::benchmarks {
namespace {

using namespace geom;

constexpr std::size_t nbPoints = 1000000;

/// The vertices of a torus.
template <class T>
struct Cloud {
  static PointCloud3d<T> make() { return PointCloud3d<T>(torusMesh<T>(2 * nbPoints).getVertexColl()); }
  static std::vector<Point3dData<T>>& points(PointCloud3d<T>& cloud) { return cloud.getCollection(); }
};

/// A mesh of 10^6 triangles, which has half as many vertices.
template <class T>
struct Mesh {
  static Mesh3d<T> make() { return torusMesh<T>(nbPoints); }
  static std::vector<Point3dData<T>>& points(Mesh3d<T>& mesh) { return mesh.getVertexColl(); }
};

/// Near the identity, so that what is mapped again and again keeps its size.
GeometryTransform3dPtr rigid() { return convert(Rigid3d(1e-7, -1e-7, 1e-7, 1e-7, -1e-7, 1e-7)); }

/// In place, every image checked before the first one is stored.
template <class Subject>
void transform3dInSitu(benchmark::State& state) {
  auto entity = Subject::make();
  const GeometryTransform3dPtr transform = rigid();
  for (auto _ : state) {
    benchmark::DoNotOptimize(transform->applyInSitu(entity));
    benchmark::ClobberMemory();
  }
}
template <class Subject>
void transform3dInSituLimit(benchmark::State& state) {
  auto entity = Subject::make();
  measureRewriting(state, Subject::points(entity));
}

/// Into a new entity.
template <class Subject>
void transform3dCopy(benchmark::State& state) {
  const auto entity = Subject::make();
  const GeometryTransform3dPtr transform = rigid();
  for (auto _ : state) benchmark::DoNotOptimize(transform->apply(entity));
}
/// The copy that the row above makes, alone.
template <class Subject>
void transform3dCopyLimit(benchmark::State& state) {
  const auto entity = Subject::make();
  for (auto _ : state) {
    auto copy = entity;
    benchmark::DoNotOptimize(&copy);
    benchmark::ClobberMemory();
  }
}

}  // namespace

// clang-format off
BENCHMARK_TEMPLATE(transform3dInSituLimit, Cloud<omReal64>);
BENCHMARK_TEMPLATE(transform3dInSitu, Cloud<omReal64>);
BENCHMARK_TEMPLATE(transform3dCopyLimit, Cloud<omReal64>);
BENCHMARK_TEMPLATE(transform3dCopy, Cloud<omReal64>);
BENCHMARK_TEMPLATE(transform3dInSituLimit, Cloud<omReal32>);
BENCHMARK_TEMPLATE(transform3dInSitu, Cloud<omReal32>);
BENCHMARK_TEMPLATE(transform3dCopyLimit, Cloud<omReal32>);
BENCHMARK_TEMPLATE(transform3dCopy, Cloud<omReal32>);
BENCHMARK_TEMPLATE(transform3dInSituLimit, Cloud<omInt32>);
BENCHMARK_TEMPLATE(transform3dInSitu, Cloud<omInt32>);
BENCHMARK_TEMPLATE(transform3dCopyLimit, Cloud<omInt32>);
BENCHMARK_TEMPLATE(transform3dCopy, Cloud<omInt32>);
BENCHMARK_TEMPLATE(transform3dInSituLimit, Mesh<omReal64>);
BENCHMARK_TEMPLATE(transform3dInSitu, Mesh<omReal64>);
BENCHMARK_TEMPLATE(transform3dCopyLimit, Mesh<omReal64>);
BENCHMARK_TEMPLATE(transform3dCopy, Mesh<omReal64>);
// clang-format on

}  // namespace ormix::benchmarks
