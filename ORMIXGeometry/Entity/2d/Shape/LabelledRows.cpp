#include <ORMIXGeometry/Entity/2d/Shape/LabelledRows.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersectionsBuilder.h>
#include <ORMIXGeometry/Entity/2d/Shape/RunFinder.h>
#include <ORMIXGeometry/Entity/2d/Shape/ViewCheck.h>

#include <array>
#include <limits>
#include <string>
#include <utility>

namespace ormix::geom {

namespace {

/// A run of pixels of one label.
struct LabelledRun {
  omUInt32 label;  // signed labels as their two's complement
  omUInt32 row;
  PixelRun run;
};

using LabelledRunColl = std::vector<LabelledRun>;

/// The runs row by row.
template <class T>
LabelledRunColl runsOf(const MaskView<const T>& labels) {
  LabelledRunColl runs;
  detail::RunFinder<T, detail::LabelEdges<T>> finder;
  for (std::size_t y = 0; y < labels.height && labels.width > 0; ++y) {
    const T* const row = labels.data + y * labels.rowStride;
    finder.visitRuns(row, labels.width, [&runs, row, y](omUInt32 begin, omUInt32 end) {
      if (row[begin] != 0) runs.push_back({static_cast<omUInt32>(row[begin]), static_cast<omUInt32>(y), {begin, end}});
    });
  }
  return runs;
}

/// Sorts by label ^ `signBit`; the order of runs with equal labels is kept. By digits, so that the time is linear for
/// any labels: a table of them could be made slow by an image whose labels fall into one slot.
void sortByLabel(LabelledRunColl& runs, omUInt32 signBit) {
  constexpr unsigned nbBits = 11;
  constexpr std::size_t nbDigits = std::size_t{1} << nbBits;
  LabelledRunColl sorted(runs.size());
  for (unsigned shift = 0; shift < 32; shift += nbBits) {
    const auto digitOf = [shift, signBit](const LabelledRun& run) {
      return (run.label ^ signBit) >> shift & (nbDigits - 1);
    };
    std::array<std::size_t, nbDigits + 1> begins{};
    for (const LabelledRun& run : runs) ++begins[digitOf(run) + 1];
    if (begins[digitOf(runs.front()) + 1] == runs.size()) continue;  // all have the same digit
    for (std::size_t digit = 0; digit < nbDigits; ++digit) begins[digit + 1] += begins[digit];
    for (const LabelledRun& run : runs) sorted[begins[digitOf(run)]++] = run;
    std::swap(runs, sorted);
  }
}

/// Each label takes the rows from its first to its last one, which may be many where labels are strewn.
void checkNbRows(const LabelledRunColl& runs) {
  omUInt64 nbRows = 0;
  for (std::size_t begin = 0, end = 0; begin < runs.size(); begin = end) {
    while (end < runs.size() && runs[end].label == runs[begin].label) ++end;
    nbRows += runs[end - 1].row - runs[begin].row + 1;
  }
  if (nbRows > RowIntersections::s_maxNbRows)
    logAndThrow("Labels from their first to their last row have " + std::to_string(nbRows) +
                    " rows together, there can be at most " + std::to_string(RowIntersections::s_maxNbRows),
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

template <class T>
std::vector<LabelledRows> rowsOfLabels(const MaskView<const T>& labels) {
  detail::checkView(labels);
  std::vector<LabelledRows> result;
  LabelledRunColl runs = runsOf(labels);
  if (runs.empty()) return result;
  sortByLabel(runs, std::is_signed_v<T> ? omUInt32{1} << 31 : 0);
  checkNbRows(runs);
  for (std::size_t begin = 0, end = 0; begin < runs.size(); begin = end) {
    while (end < runs.size() && runs[end].label == runs[begin].label) ++end;
    detail::RowIntersectionsBuilder builder;
    builder.reserve(runs[end - 1].row - runs[begin].row + 1, end - begin);
    for (std::size_t index = begin; index < end; ++index) builder.addRun(runs[index].row, runs[index].run);
    result.push_back({static_cast<T>(runs[begin].label), builder.take()});
  }
  return result;
}

}  // namespace

// clang-format off
std::vector<LabelledRows> labelledRows(const MaskView<const omUInt8>& labels) { return rowsOfLabels(labels); }
std::vector<LabelledRows> labelledRows(const MaskView<const omUInt16>& labels) { return rowsOfLabels(labels); }
std::vector<LabelledRows> labelledRows(const MaskView<const omUInt32>& labels) { return rowsOfLabels(labels); }
std::vector<LabelledRows> labelledRows(const MaskView<const omInt32>& labels) { return rowsOfLabels(labels); }
// clang-format on

}  // namespace ormix::geom
