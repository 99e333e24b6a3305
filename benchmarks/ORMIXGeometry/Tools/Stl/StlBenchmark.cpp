#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Tools/Stl/StlLoad.h>
#include <ORMIXGeometry/Tools/Stl/StlSave.h>
#include <benchmark/benchmark.h>
#include <benchmarks/support/TorusMesh.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace ormix::benchmarks {
namespace {

using namespace geom;
using Mesh = Mesh3d<omReal32>;

/// A file of its own, in memory where the system has such a folder; removed at the end.
class ScratchFile {
 public:
  ScratchFile() : _path(folder() + "/ormix_benchmark_" + std::to_string(getpid()) + ".stl") {}
  ~ScratchFile() { std::remove(_path.c_str()); }
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;
  const std::string& path() const { return _path; }

 private:
  static std::string folder() {
    return std::filesystem::exists("/dev/shm") ? "/dev/shm" : std::filesystem::temp_directory_path().string();
  }
  std::string _path;
};

Mesh torus(std::size_t nbTriangles) { return torusMesh<omReal32>(nbTriangles); }

/// One vertex in all triangles.
Mesh fan(std::size_t nbTriangles) {
  Mesh::VertexColl vertices{{10, 10, 10}};
  Mesh::IndexColl indices;
  for (omUInt32 rim = 1; rim <= nbTriangles; ++rim) {
    const omReal64 angle = 6 * static_cast<omReal64>(rim) / static_cast<omReal64>(nbTriangles);
    vertices.push_back(cast<omReal32>(Point3dData<omReal64>(10 + std::cos(angle), 10 + std::sin(angle), rim)));
    if (rim > 1) indices.insert(indices.end(), {0, rim - 1, rim});
  }
  Mesh mesh;
  if (!mesh.build(std::move(vertices), indices)) throw std::runtime_error("no fan");
  return mesh;
}

/// The same triangle over and over.
Mesh equalTriangles(std::size_t nbTriangles) {
  Mesh::IndexColl indices;
  while (indices.size() < 3 * nbTriangles) indices.insert(indices.end(), {0, 1, 2});
  Mesh mesh;
  if (!mesh.build({{1, 1, 1}, {2, 1, 1}, {1, 2, 1}}, indices, eNMP_OwnVertices)) throw std::runtime_error("no mesh");
  return mesh;
}

enum class Format { Binary, Ascii };

template <Format format>
void save(benchmark::State& state, const Mesh& mesh, const std::string& path) {
  if (!(format == Format::Ascii ? saveToStLAscii(path, mesh, "torus") : saveToStLBinary(path, mesh)))
    state.SkipWithError("not written");
}

template <Format format>
void stlWrite(benchmark::State& state) {
  const Mesh mesh = torus(static_cast<std::size_t>(state.range(0)));
  const ScratchFile file;
  for (auto _ : state) save<format>(state, mesh, file.path());
}

/// Vertices merged and put in order, half-edges built.
template <Format format, Mesh (*make)(std::size_t)>
void stlRead(benchmark::State& state) {
  const ScratchFile file;
  save<format>(state, make(static_cast<std::size_t>(state.range(0))), file.path());
  for (auto _ : state) benchmark::DoNotOptimize(readFromStLFile<omReal32>(file.path()));
}

/// The bytes of the files alone, out of one block of memory and into one.
template <Format format>
void stlBytesLimit(benchmark::State& state, bool isWritten) {
  const ScratchFile file;
  save<format>(state, torus(static_cast<std::size_t>(state.range(0))), file.path());
  const auto nbBytes = static_cast<std::streamsize>(std::filesystem::file_size(file.path()));
  std::vector<char> block(1 << 20);
  for (auto _ : state) {
    std::fstream stream(file.path(), std::ios::binary | (isWritten ? std::ios::out : std::ios::in));
    for (std::streamsize left = nbBytes; left > 0 && stream; left -= static_cast<std::streamsize>(block.size())) {
      const std::streamsize part = std::min(left, static_cast<std::streamsize>(block.size()));
      if (isWritten)
        stream.write(block.data(), part);
      else
        stream.read(block.data(), part);
    }
    if (!stream) state.SkipWithError("the file is not as long as it was");
  }
}
template <Format format>
void stlWriteLimit(benchmark::State& state) {
  stlBytesLimit<format>(state, true);
}
template <Format format>
void stlReadLimit(benchmark::State& state) {
  stlBytesLimit<format>(state, false);
}

void sizes(benchmark::internal::Benchmark* row) { row->Unit(benchmark::kMillisecond)->Arg(500000)->Arg(1000000); }

}  // namespace

// How time grows is seen from one size in a process: a second one finds the heap as the first left it.
// clang-format off
BENCHMARK_TEMPLATE(stlWriteLimit, Format::Binary)->Apply(sizes);
BENCHMARK_TEMPLATE(stlWrite, Format::Binary)->Apply(sizes);
BENCHMARK_TEMPLATE(stlWriteLimit, Format::Ascii)->Apply(sizes);
BENCHMARK_TEMPLATE(stlWrite, Format::Ascii)->Apply(sizes);
BENCHMARK_TEMPLATE(stlReadLimit, Format::Binary)->Apply(sizes);
BENCHMARK_TEMPLATE(stlRead, Format::Binary, torus)->Apply(sizes);
BENCHMARK_TEMPLATE(stlRead, Format::Binary, torus)->Unit(benchmark::kMillisecond)->Arg(1000000)->Iterations(1);
BENCHMARK_TEMPLATE(stlRead, Format::Binary, fan)->Apply(sizes);
BENCHMARK_TEMPLATE(stlRead, Format::Binary, equalTriangles)->Apply(sizes);
BENCHMARK_TEMPLATE(stlReadLimit, Format::Ascii)->Apply(sizes);
BENCHMARK_TEMPLATE(stlRead, Format::Ascii, torus)->Apply(sizes);
// clang-format on

}  // namespace ormix::benchmarks
