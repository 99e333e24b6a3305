#include <ORMIXGeometry/Entity/2d/PointCloud/PointCloud2d.h>
#include <ORMIXGeometry/Transform/2d/GeometryTransform2dUtils.h>
#include <ORMIXMath/ORMIXMath.h>
#include <benchmark/benchmark.h>
#include <benchmarks/support/PhysicalLimit.h>
#include <benchmarks/support/StarRing.h>

#include <array>
#include <boost/numeric/ublas/matrix.hpp>

namespace ormix::benchmarks {
namespace {

using namespace ormix::geom;

template <class T>
PointCloud2d<T> cloudOf(const benchmark::State& state) {
  const std::vector<T> xy = starRing<T>(static_cast<std::size_t>(state.range(0)));
  PointCloud2d<T> cloud;
  for (std::size_t i = 0; i < xy.size(); i += 2) cloud.push_back({xy[i], xy[i + 1]});
  return cloud;
}

/// Maps that stay near the identity, so that a cloud mapped again and again keeps its size.
Rigid2d rigid() { return {1e-7, 1e-7, -1e-7}; }
Similarity2d similarity() { return {1 + 1e-12, 1e-7, 1e-7, -1e-7}; }
Homography2d homography() {
  const std::array<omReal64, 9> rows{1, -1e-7, 1e-7, 1e-7, 1, -1e-7, 1e-15, -1e-15, 1};
  Matrix3x3 matrix(3, 3);
  std::copy(rows.begin(), rows.end(), matrix.data().begin());
  return Homography2d(matrix);
}

template <class T>
void transformReadLimit(benchmark::State& state) {
  measureReading(state, cloudOf<T>(state).getCollection());
}

/// In place, every image checked before the first one is stored.
template <class T, auto map>
void transformInSitu(benchmark::State& state) {
  PointCloud2d<T> cloud = cloudOf<T>(state);
  const GeometryTransform2dPtr transform = convert(map());
  for (auto _ : state) {
    benchmark::DoNotOptimize(transform->applyInSitu(cloud));
    benchmark::ClobberMemory();
  }
}

/// Into a new cloud.
template <class T, auto map>
void transformCopy(benchmark::State& state) {
  const PointCloud2d<T> cloud = cloudOf<T>(state);
  const GeometryTransform2dPtr transform = convert(map());
  for (auto _ : state) benchmark::DoNotOptimize(transform->apply(cloud));
}

/// The copy that the row above makes, alone.
template <class T>
void transformCopyLimit(benchmark::State& state) {
  const PointCloud2d<T> cloud = cloudOf<T>(state);
  for (auto _ : state) {
    PointCloud2d<T> copy = cloud;
    benchmark::DoNotOptimize(copy.getCollection().data());
  }
}

/// The mapping without the check, and the check alone.
template <class T, auto map>
void transformRunUnchecked(benchmark::State& state) {
  PointCloud2d<T> cloud = cloudOf<T>(state);
  for (auto _ : state) applyToRun(map(), coordinates(cloud.getCollection()), cloud.size());
}
template <class T, auto map>
void transformRunCheck(benchmark::State& state) {
  const PointCloud2d<T> cloud = cloudOf<T>(state);
  for (auto _ : state)
    benchmark::DoNotOptimize(firstUndefinedImage(map(), coordinates(cloud.getCollection()), cloud.size()));
}

void sizes(benchmark::internal::Benchmark* row) { row->Arg(5)->Arg(1000)->Arg(10000)->Arg(1000000); }

}  // namespace

// clang-format off
BENCHMARK_TEMPLATE(transformReadLimit, omReal64)->Apply(sizes);
BENCHMARK_TEMPLATE(transformInSitu, omReal64, rigid)->Apply(sizes);
BENCHMARK_TEMPLATE(transformInSitu, omReal32, rigid)->Apply(sizes);
BENCHMARK_TEMPLATE(transformInSitu, omInt32, rigid)->Apply(sizes);
BENCHMARK_TEMPLATE(transformInSitu, omReal64, similarity)->Apply(sizes);
BENCHMARK_TEMPLATE(transformInSitu, omReal32, similarity)->Apply(sizes);
BENCHMARK_TEMPLATE(transformInSitu, omInt32, similarity)->Apply(sizes);
BENCHMARK_TEMPLATE(transformInSitu, omReal64, homography)->Apply(sizes);
BENCHMARK_TEMPLATE(transformInSitu, omReal32, homography)->Apply(sizes);
BENCHMARK_TEMPLATE(transformInSitu, omInt32, homography)->Apply(sizes);
BENCHMARK_TEMPLATE(transformInSitu, omUInt32, rigid)->Apply(sizes);
BENCHMARK_TEMPLATE(transformCopy, omReal64, rigid)->Apply(sizes)->Arg(2000000)->Arg(4000000);
BENCHMARK_TEMPLATE(transformCopy, omReal32, rigid)->Apply(sizes);
BENCHMARK_TEMPLATE(transformCopy, omInt32, rigid)->Apply(sizes);
BENCHMARK_TEMPLATE(transformCopy, omReal64, similarity)->Apply(sizes);
BENCHMARK_TEMPLATE(transformCopy, omReal32, similarity)->Apply(sizes);
BENCHMARK_TEMPLATE(transformCopy, omInt32, similarity)->Apply(sizes);
BENCHMARK_TEMPLATE(transformCopy, omReal64, homography)->Apply(sizes);
BENCHMARK_TEMPLATE(transformCopy, omReal32, homography)->Apply(sizes);
BENCHMARK_TEMPLATE(transformCopy, omInt32, homography)->Apply(sizes);
BENCHMARK_TEMPLATE(transformCopy, omUInt32, rigid)->Apply(sizes);
BENCHMARK_TEMPLATE(transformCopyLimit, omReal64)->Apply(sizes);
BENCHMARK_TEMPLATE(transformRunUnchecked, omReal64, rigid)->Apply(sizes);
BENCHMARK_TEMPLATE(transformRunCheck, omReal64, rigid)->Apply(sizes);
BENCHMARK_TEMPLATE(transformRunUnchecked, omReal64, homography)->Apply(sizes);
// clang-format on

}  // namespace ormix::benchmarks
