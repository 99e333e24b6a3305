#include <ORMIXGeometry/Entity/2d/Shape/ConnectedComponents.h>
#include <ORMIXGeometry/Entity/2d/Shape/LabelledRows.h>
#include <ORMIXGeometry/Entity/2d/Shape/MaskView.h>
#include <ORMIXGeometry/Entity/2d/Shape/OpenComponents.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowMorphology.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowSetOperations.h>
#include <benchmark/benchmark.h>
#include <benchmarks/support/BlobMask.h>

#include <cstring>
#include <vector>

namespace ormix::benchmarks {
namespace {

using namespace geom;

constexpr std::size_t side = blobMaskSide;

template <class T>
MaskView<const T> viewOf(const std::vector<T>& mask) {
  return {mask.data(), side, side, side};
}

/// The limit: every pixel is read once.
template <class T>
void regionsMaskRead(benchmark::State& state) {
  const std::vector<T> mask = blobMask<T>(77);
  for (auto _ : state) {
    omUInt64 sum = 0;
    for (std::size_t i = 0; i < mask.size(); i += 8 / sizeof(T)) {
      omUInt64 word;
      std::memcpy(&word, &mask[i], sizeof word);
      sum |= word;
    }
    benchmark::DoNotOptimize(sum);
  }
}

template <class T>
void regionsMaskToRuns(benchmark::State& state) {
  const std::vector<T> mask = blobMask<T>(77);
  for (auto _ : state) benchmark::DoNotOptimize(toRowIntersections(viewOf(mask)));
}

/// Measures `operation(a, b)` of two sets of blobs.
template <class Operation>
void measureOfRuns(benchmark::State& state, Operation operation) {
  const RowIntersections a = toRowIntersections(viewOf(blobMask<omUInt8>(77)));
  const RowIntersections b = toRowIntersections(viewOf(blobMask<omUInt8>(78)));
  for (auto _ : state) benchmark::DoNotOptimize(operation(a, b));
  state.counters["runs"] = static_cast<double>(a.getRunColl().size());
  state.counters["regions"] = static_cast<double>(componentsOf(a, ePC_8).nbComponents);
}

void regionsUnite(benchmark::State& state) {
  measureOfRuns(state, [](const auto& a, const auto& b) { return unite(a, b); });
}
void regionsComponents(benchmark::State& state) {
  measureOfRuns(state, [](const auto& a, const auto&) { return componentsOf(a, ePC_8); });
}
void regionsSplit(benchmark::State& state) {
  measureOfRuns(state, [](const auto& a, const auto&) { return connectedComponents(a, ePC_8); });
}
void regionsRowByRow(benchmark::State& state) {
  measureOfRuns(state, [](const auto& a, const auto&) {
    geom::detail::OpenComponents open(ePC_8);
    std::size_t nbRegions = 0;
    for (omUInt64 y = a.getStartRow(); y < a.getEndRow(); ++y) {
      open.addRow(y, a.getRow(y));
      nbRegions += open.takeFinished().size();
    }
    return nbRegions + open.finish().size();
  });
}
void regionsFillHoles(benchmark::State& state) {
  measureOfRuns(state, [](const auto& a, const auto&) { return fillHoles(a); });
}
void regionsDilateBox(benchmark::State& state) {
  measureOfRuns(state, [](const auto& a, const auto&) { return dilate(a, 5, 5); });
}
void regionsDilateDisc(benchmark::State& state) {
  measureOfRuns(state, [](const auto& a, const auto&) { return dilate(a, 5.0); });
}
void regionsErodeDisc(benchmark::State& state) {
  measureOfRuns(state, [](const auto& a, const auto&) { return erode(a, 5.0); });
}

/// From the mask to the components.
void regionsMaskToComponents(benchmark::State& state) {
  const std::vector<omUInt8> mask = blobMask<omUInt8>(77);
  for (auto _ : state) benchmark::DoNotOptimize(componentsOf(toRowIntersections(viewOf(mask)), ePC_8));
}

/// From a label image to the pixels of each label.
void regionsOfLabels(benchmark::State& state) {
  std::vector<omInt32> labels(side * side);
  omInt32 label = 0;
  for (const RowIntersections& region : connectedComponents(toRowIntersections(viewOf(blobMask<omUInt8>(77))), ePC_8)) {
    ++label;
    for (omUInt64 y = region.getStartRow(); y < region.getEndRow(); ++y)
      for (const PixelRun& run : region.getRow(y))
        std::fill(&labels[y * side + run.begin], &labels[y * side] + run.end, label);
  }
  for (auto _ : state) benchmark::DoNotOptimize(labelledRows(viewOf(labels)));
}

}  // namespace

// clang-format off
BENCHMARK_TEMPLATE(regionsMaskRead, omUInt8)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(regionsMaskRead, omInt32)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(regionsMaskToRuns, omUInt8)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(regionsMaskToRuns, omUInt16)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(regionsMaskToRuns, omInt32)->Unit(benchmark::kMillisecond);
BENCHMARK(regionsMaskToComponents)->Unit(benchmark::kMillisecond);
BENCHMARK(regionsComponents)->Unit(benchmark::kMillisecond);
BENCHMARK(regionsSplit)->Unit(benchmark::kMillisecond);
BENCHMARK(regionsRowByRow)->Unit(benchmark::kMillisecond);
BENCHMARK(regionsOfLabels)->Unit(benchmark::kMillisecond);
BENCHMARK(regionsUnite)->Unit(benchmark::kMillisecond);
BENCHMARK(regionsFillHoles)->Unit(benchmark::kMillisecond);
BENCHMARK(regionsDilateBox)->Unit(benchmark::kMillisecond);
BENCHMARK(regionsDilateDisc)->Unit(benchmark::kMillisecond);
BENCHMARK(regionsErodeDisc)->Unit(benchmark::kMillisecond);
// clang-format on

}  // namespace ormix::benchmarks
