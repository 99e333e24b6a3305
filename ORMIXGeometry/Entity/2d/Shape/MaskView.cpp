#include <ORMIXGeometry/Entity/2d/Shape/MaskView.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersectionsBuilder.h>
#include <ORMIXGeometry/Entity/2d/Shape/RunFinder.h>
#include <ORMIXGeometry/Entity/2d/Shape/ViewCheck.h>

#include <algorithm>
#include <string>

namespace ormix::geom {

namespace {

template <class T>
RowIntersections rowsOf(const MaskView<const T>& mask) {
  detail::checkView(mask);
  if (mask.width == 0) return {};
  detail::RowIntersectionsBuilder builder;
  detail::RunFinder<T, detail::MaskEdges<T>> finder;
  // Room for the runs of most masks: what is not used takes addresses only, while growing touches pages for the first
  // time and took a tenth of the time.
  constexpr std::size_t mostReserved = std::size_t{1} << 20;
  builder.reserve(std::min(mask.height, mostReserved), std::min(mask.width * mask.height / 64, mostReserved));
  std::vector<PixelRun> runs;
  for (std::size_t y = 0; y < mask.height; ++y) {
    runs.clear();
    finder.visitRuns(mask.data + y * mask.rowStride, mask.width, [&runs](omUInt32 begin, omUInt32 end) {
      runs.push_back({begin, end});
    });
    builder.addRow(y, runs.data(), runs.data() + runs.size());
  }
  return builder.take();
}

/// A failure for the first pixel outside the view.
template <class T>
BoolResult checkInside(const RowIntersections& rows, const MaskView<T>& view) {
  for (omUInt64 y = rows.getStartRow(); y < rows.getEndRow(); ++y) {
    const RowIntersections::Row runs = rows.getRow(y);
    if (runs.empty()) continue;
    const PixelRun& last = runs[runs.size() - 1];
    if (y < view.height && last.end <= view.width) continue;
    const omUInt64 x = y < view.height ? last.end - 1 : runs[0].begin;
    return failure("Pixel (" + std::to_string(x) + ", " + std::to_string(y) + ") lies outside the mask of " +
                   std::to_string(view.width) + " columns and " + std::to_string(view.height) + " rows");
  }
  return {};
}

template <class T>
BoolResult write(const RowIntersections& rows, const MaskView<T>& view, T inside) {
  detail::checkView(view);
  if (inside == 0) return failure("The value of pixels inside a mask cannot be 0, which is outside");
  if (BoolResult fits = checkInside(rows, view); !fits) return fits;
  for (std::size_t y = 0; y < view.height && view.width > 0; ++y) {
    T* const pixels = view.data + y * view.rowStride;
    std::fill(pixels, pixels + view.width, T{0});
    if (y < rows.getStartRow() || y >= rows.getEndRow()) continue;
    for (const PixelRun& run : rows.getRow(y)) std::fill(pixels + run.begin, pixels + run.end, inside);
  }
  return {};
}

}  // namespace

// clang-format off
RowIntersections toRowIntersections(const MaskView<const omUInt8>& mask) { return rowsOf(mask); }
RowIntersections toRowIntersections(const MaskView<const omUInt16>& mask) { return rowsOf(mask); }
RowIntersections toRowIntersections(const MaskView<const omUInt32>& mask) { return rowsOf(mask); }
RowIntersections toRowIntersections(const MaskView<const omInt32>& mask) { return rowsOf(mask); }

BoolResult toMask(const RowIntersections& rows, const MaskView<omUInt8>& view, omUInt8 inside) { return write(rows, view, inside); }
BoolResult toMask(const RowIntersections& rows, const MaskView<omUInt16>& view, omUInt16 inside) { return write(rows, view, inside); }
BoolResult toMask(const RowIntersections& rows, const MaskView<omUInt32>& view, omUInt32 inside) { return write(rows, view, inside); }
BoolResult toMask(const RowIntersections& rows, const MaskView<omInt32>& view, omInt32 inside) { return write(rows, view, inside); }
// clang-format on

}  // namespace ormix::geom
