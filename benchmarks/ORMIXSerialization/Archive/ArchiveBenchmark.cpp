#include <ORMIXGeometry/Entity/2d/Circle/Circle2d.h>
#include <ORMIXSerialization/Archive/CborIArchive.h>
#include <ORMIXSerialization/Archive/CborOArchive.h>
#include <ORMIXSerialization/Archive/JsonIArchive.h>
#include <ORMIXSerialization/Archive/JsonOArchive.h>
#include <benchmark/benchmark.h>
#include <benchmarks/support/CerealObjects.h>
#include <benchmarks/support/MemoryBuffer.h>
#include <benchmarks/support/StarPolygon.h>
#include <benchmarks/support/TorusMesh.h>

#include <algorithm>
#include <charconv>
#include <istream>
#include <numeric>
#include <ostream>
#include <random>
#include <sstream>
#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace ormix::benchmarks {
namespace {

using Polygon = geom::Polygon2d<omReal64>;
using Circles = std::vector<geom::Circle2d<omReal64>>;
constexpr std::size_t nbPoints = 1000000;
constexpr std::size_t nbCircles = 100000;

#if defined(__GLIBC__)
/// Memory given back stays with the process. Otherwise it depends on what ran before whether a large block comes fresh
/// from the system, and taking its pages costs more than archiving into them.
const bool g_memoryIsKept = mallopt(M_MMAP_THRESHOLD, 1 << 30) != 0 && mallopt(M_TRIM_THRESHOLD, 1 << 30) != 0;
#endif

/// A program that archives into memory knows about how much will come, and asks for it at once.
template <class OArchive, class Write>
std::string written(std::size_t expectedSize, Write write) {
  StringSink sink(expectedSize);
  {
    std::ostream stream(&sink);
    OArchive archive(stream);
    write(archive);
    archive.close();
  }
  return sink.take();
}

template <class OArchive>
std::string writtenRing(const Polygon& ring) {
  return written<OArchive>(16 * ring.getNbPoints() + 4096, [&ring](BaseOArchive& archive) { ring.write(archive); });
}

template <class OArchive>
std::string writtenCircles(const Circles& circles) {
  return written<OArchive>(0, [&circles](BaseOArchive& archive) {
    for (const auto& circle : circles) circle.write(archive);
  });
}

Circles smallCircles() {
  Circles circles;
  const std::vector<omReal64> xy = starRing<omReal64>(nbCircles);
  for (std::size_t i = 0; i < xy.size(); i += 2)
    circles.emplace_back(geom::Point2dData<omReal64>(xy[i], xy[i + 1]), 0.001 * xy[i]);
  return circles;
}

template <class OArchive>
void writeRing(benchmark::State& state) {
  const Polygon ring = starPolygon<omReal64>(nbPoints);
  for (auto _ : state) benchmark::DoNotOptimize(writtenRing<OArchive>(ring));
}

template <class OArchive, class IArchive>
void readRing(benchmark::State& state) {
  const std::string text = writtenRing<OArchive>(starPolygon<omReal64>(nbPoints));
  for (auto _ : state) {
    StringSource source(text);
    std::istream stream(&source);
    IArchive archive(stream);
    Polygon ring;
    const BoolResult result = ring.read(archive);
    if (!result) return state.SkipWithError(result.getMessage().c_str());
    benchmark::DoNotOptimize(ring.getPointColl().data());
  }
}

template <class OArchive>
void writeCircles(benchmark::State& state) {
  const Circles circles = smallCircles();
  for (auto _ : state) benchmark::DoNotOptimize(writtenCircles<OArchive>(circles));
}

template <class OArchive, class IArchive>
void readCircles(benchmark::State& state) {
  const std::string text = writtenCircles<OArchive>(smallCircles());
  for (auto _ : state) {
    StringSource source(text);
    std::istream stream(&source);
    IArchive archive(stream);
    Circles circles(nbCircles);
    for (auto& circle : circles) {
      const BoolResult result = circle.read(archive);
      if (!result) return state.SkipWithError(result.getMessage().c_str());
    }
    benchmark::DoNotOptimize(circles.data());
  }
}

#if defined(ORMIX_BENCHMARK_CEREAL)
void cerealReadRing(benchmark::State& state) {
  std::ostringstream output;
  cereal::BinaryOutputArchive{output}(starRing<omReal64>(nbPoints));
  const std::string text = output.str();
  for (auto _ : state) {
    StringSource source(text);
    std::istream stream(&source);
    std::vector<omReal64> xy;
    cereal::BinaryInputArchive{stream}(xy);
    benchmark::DoNotOptimize(xy.data());
  }
}
#endif

/// A mesh whose vertices and triangles have no order.
geom::Mesh3d<omReal64> shuffledMesh() {
  using Mesh = geom::Mesh3d<omReal64>;
  const Mesh ordered = torusMesh<omReal64>(1000000);
  std::mt19937_64 generator(18);
  std::vector<omUInt32> places(ordered.getNbVertices()), triangles(ordered.getNbTriangles());
  std::iota(places.begin(), places.end(), omUInt32{0});
  std::iota(triangles.begin(), triangles.end(), omUInt32{0});
  std::shuffle(places.begin(), places.end(), generator);
  std::shuffle(triangles.begin(), triangles.end(), generator);
  Mesh::VertexColl vertices(places.size());
  for (std::size_t vertex = 0; vertex < places.size(); ++vertex)
    vertices[places[vertex]] = ordered.getVertexColl()[vertex];
  Mesh::IndexColl indices;
  for (const omUInt32 triangle : triangles)
    for (const std::size_t vertex : ordered.getTriangleVertexIndices(triangle)) indices.push_back(places[vertex]);
  Mesh mesh;
  mesh.build(std::move(vertices), std::move(indices));
  return mesh;
}

void readMesh(benchmark::State& state) {
  const geom::Mesh3d<omReal64> mesh = state.range(0) != 0 ? shuffledMesh() : torusMesh<omReal64>(1000000);
  const std::string text = written<CborOArchive>(1 << 27, [&mesh](BaseOArchive& archive) { mesh.write(archive); });
  for (auto _ : state) {
    StringSource source(text);
    std::istream stream(&source);
    CborIArchive archive(stream);
    geom::Mesh3d<omReal64> read;
    if (const BoolResult result = read.read(archive); !result) return state.SkipWithError(result.getMessage().c_str());
    benchmark::DoNotOptimize(read.getVertexColl().data());
  }
}

/// Copying the coordinates into a new string: the limit of writing CBOR, and of reading it too.
void cborLimit(benchmark::State& state) {
  const std::vector<omReal64> xy = starRing<omReal64>(nbPoints);
  const auto* bytes = reinterpret_cast<const char*>(xy.data());
  for (auto _ : state) benchmark::DoNotOptimize(std::string(bytes, xy.size() * sizeof(omReal64)));
}

/// Converting the numbers one after the other: the limit of reading JSON.
void jsonReadLimit(benchmark::State& state) {
  std::string text;
  char number[32];
  for (const omReal64 value : starRing<omReal64>(nbPoints))
    text.append(number, std::to_chars(number, number + sizeof number, value).ptr).push_back(' ');
  for (auto _ : state) {
    std::vector<omReal64> xy;
    for (const char *at = text.data(), *end = at + text.size(); at != end; ++at) {
      omReal64 value = 0;
      at = std::from_chars(at, end, value).ptr;
      xy.push_back(value);
    }
    benchmark::DoNotOptimize(xy.data());
  }
}

/// Formatting the numbers one after the other: the limit of writing JSON.
void jsonWriteLimit(benchmark::State& state) {
  const std::vector<omReal64> xy = starRing<omReal64>(nbPoints);
  std::vector<char> text(xy.size() * 32);
  for (auto _ : state) {
    char* at = text.data();
    for (const omReal64 value : xy) at = std::to_chars(at, at + 32, value).ptr;
    benchmark::DoNotOptimize(at);
  }
}

}  // namespace

// clang-format off
BENCHMARK(cborLimit)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(writeRing, CborOArchive)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(readRing, CborOArchive, CborIArchive)->Unit(benchmark::kMillisecond);
#if defined(ORMIX_BENCHMARK_CEREAL)
BENCHMARK(cerealReadRing)->Unit(benchmark::kMillisecond);
#endif
BENCHMARK(readMesh)->ArgName("shuffled")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(jsonWriteLimit)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(writeRing, JsonOArchive)->Unit(benchmark::kMillisecond);
BENCHMARK(jsonReadLimit)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(readRing, JsonOArchive, JsonIArchive)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(writeCircles, CborOArchive)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(readCircles, CborOArchive, CborIArchive)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(writeCircles, JsonOArchive)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(readCircles, JsonOArchive, JsonIArchive)->Unit(benchmark::kMillisecond);
// clang-format on

}  // namespace ormix::benchmarks
