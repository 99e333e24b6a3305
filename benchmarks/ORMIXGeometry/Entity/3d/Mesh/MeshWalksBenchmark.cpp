#include <ORMIXGeometry/Entity/3d/Mesh/MeshWalks.h>
#include <benchmark/benchmark.h>
#include <benchmarks/support/TorusMesh.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <vector>

namespace ormix::benchmarks {
namespace {

using namespace geom;

constexpr std::size_t nbTriangles = 1000000;

/// The torus; with an argument of 1 its triangles are in random order.
Mesh3d<omReal64> torus(const benchmark::State& state) {
  Mesh3d<omReal64> mesh = torusMesh<omReal64>(nbTriangles);
  if (state.range(0) == 0) return mesh;
  std::vector<std::size_t> order(mesh.getNbTriangles());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::shuffle(order.begin(), order.end(), std::mt19937(3));
  Mesh3d<omReal64>::IndexColl shuffled;
  for (const std::size_t triangle : order) {
    const omUInt32* corners = &mesh.getVertexIndexColl()[3 * triangle];
    shuffled.insert(shuffled.end(), corners, corners + 3);
  }
  Mesh3d<omReal64> result;
  if (const BoolResult built = result.build(mesh.getVertexColl(), shuffled); !built)
    throw std::runtime_error(built.getMessage());
  return result;
}

void meshTrianglesAdded(benchmark::State& state) {
  const Mesh3d<omReal64> mesh = torus(state);
  const auto& indices = mesh.getVertexIndexColl();
  for (auto _ : state) {
    MeshTopology topology;
    for (std::size_t first = 0; first < indices.size(); first += 3)
      if (!topology.addTriangle(indices[first], indices[first + 1], indices[first + 2], mesh.getNbVertices()))
        state.SkipWithError("a triangle was refused");
    benchmark::DoNotOptimize(topology.getNbTriangles());
  }
}

void meshFans(benchmark::State& state) {
  const Mesh3d<omReal64> mesh = torus(state);
  const std::vector<omUInt32> outgoing = collectOutgoingHalfEdges(mesh.getTopology(), mesh.getNbVertices());
  for (auto _ : state) {
    std::size_t sum = 0;
    for (const omUInt32 halfEdge : outgoing)
      visitFan(mesh.getTopology(), halfEdge, [&sum](std::size_t visited) { sum += visited; });
    benchmark::DoNotOptimize(sum);
  }
}

void meshBoundaryLoops(benchmark::State& state) {
  const Mesh3d<omReal64> mesh = torus(state);
  for (auto _ : state) benchmark::DoNotOptimize(getNbBoundaryLoops(mesh.getTopology()));
}

void meshComponentLabels(benchmark::State& state) {
  const Mesh3d<omReal64> mesh = torus(state);
  std::vector<omUInt32> labels;
  for (auto _ : state) benchmark::DoNotOptimize(labelComponents(mesh.getTopology(), labels));
}

void orders(benchmark::internal::Benchmark* row) {
  row->ArgName("shuffled")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
}

}  // namespace

BENCHMARK(meshTrianglesAdded)->Apply(orders);
BENCHMARK(meshFans)->Apply(orders);
BENCHMARK(meshBoundaryLoops)->Apply(orders);
BENCHMARK(meshComponentLabels)->Apply(orders);

}  // namespace ormix::benchmarks
