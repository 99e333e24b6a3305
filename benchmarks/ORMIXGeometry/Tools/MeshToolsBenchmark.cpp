#include <ORMIXGeometry/Entity/3d/Mesh/MeshConversion.h>
#include <ORMIXGeometry/Tools/Mesh/Components.h>
#include <ORMIXGeometry/Tools/Mesh/Validation.h>
#include <benchmark/benchmark.h>
#include <benchmarks/support/TorusMesh.h>

namespace ormix::benchmarks {
namespace {

using namespace geom;

constexpr std::size_t nbTriangles = 1000000;

template <class Operation>
void overFaceVertexMesh(benchmark::State& state, Operation operation) {
  const FaceVertexTriMesh3d<omReal64> mesh = toFaceVertexTriMesh3d(torusMesh<omReal64>(nbTriangles));
  for (auto _ : state) benchmark::DoNotOptimize(operation(mesh));
}

void meshOfFaceVertices(benchmark::State& state) {
  overFaceVertexMesh(state, [](const auto& mesh) { return toMesh3d(mesh).getNbTriangles(); });
}
void meshComponents(benchmark::State& state) {
  overFaceVertexMesh(state, [](const auto& mesh) { return extractComponents(mesh).size(); });
}
void meshValidation(benchmark::State& state) {
  MeshValidationOptions options;
  options.findsSelfIntersections = state.range(0) != 0;
  overFaceVertexMesh(state, [&options](const auto& mesh) { return validate(mesh, options).getNb(); });
}

}  // namespace

BENCHMARK(meshOfFaceVertices)->Unit(benchmark::kMillisecond);
BENCHMARK(meshComponents)->Unit(benchmark::kMillisecond);
BENCHMARK(meshValidation)->ArgName("selfIntersections")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace ormix::benchmarks
