#include <ORMIXGeometry/Entity/2d/BoundingBox/BoundingBox2d.h>
#include <ORMIXGeometry/Entity/2d/Shape/CombinedRuns.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersectionsBuilder.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowSetOperations.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>
#include <string>

namespace ormix::geom {

namespace {

/// Combines rows one by one; its memory is used again for each.
template <detail::eKeptPixels Kept>
class RowCombiner {
 public:
  void addRow(omUInt64 row, const RowIntersections::Row& ofA, const RowIntersections::Row& ofB) {
    const RowIntersections::Row a = detail::joinedRuns(ofA, _joinedOfA);
    const RowIntersections::Row b = detail::joinedRuns(ofB, _joinedOfB);
    if (const std::size_t nbRuns = a.size() + b.size(); _combined.size() < nbRuns) _combined.resize(2 * nbRuns);
    _builder.addRow(row, _combined.data(), detail::combineRuns<Kept>(a, b, _combined.data()));
  }
  void reserve(std::size_t nbRows, std::size_t nbRuns) { _builder.reserve(nbRows, nbRuns); }
  RowIntersections take() { return _builder.take(); }

 private:
  detail::RowIntersectionsBuilder _builder;
  RowIntersections::RunColl _joinedOfA;
  RowIntersections::RunColl _joinedOfB;
  RowIntersections::RunColl _combined{1};
};

template <detail::eKeptPixels Kept>
RowIntersections combine(const RowIntersections& a, const RowIntersections& b) {
  constexpr bool keepsOnlyB = Kept == detail::eKP_Unite || Kept == detail::eKP_Exclude;
  RowCombiner<Kept> combiner;
  const auto addRows = [&](omUInt64 begin, omUInt64 end) {
    for (omUInt64 row = begin; row < end; ++row)
      combiner.addRow(row, detail::rowOrNone(a, row), detail::rowOrNone(b, row));
  };
  if constexpr (Kept == detail::eKP_Intersect) {
    addRows(std::max(a.getStartRow(), b.getStartRow()), std::min(a.getEndRow(), b.getEndRow()));
  } else if constexpr (keepsOnlyB) {
    // The rows between two sets may be very many, so they are not visited.
    const bool aIsFirst = b.getNbRows() == 0 || (a.getNbRows() > 0 && a.getStartRow() <= b.getStartRow());
    const RowIntersections& first = aIsFirst ? a : b;
    const RowIntersections& second = aIsFirst ? b : a;
    combiner.reserve(0, std::max(a.getRunColl().size(), b.getRunColl().size()));
    addRows(first.getStartRow(), first.getEndRow());
    addRows(std::max(first.getEndRow(), second.getStartRow()), second.getEndRow());
  } else {
    addRows(a.getStartRow(), a.getEndRow());
  }
  return combiner.take();
}

/// A bound of a box as a column or row.
template <class T>
omUInt64 wholeBound(T value, const char* name, omUInt64 last) {
  const auto bound = static_cast<omReal64>(value);
  if (bound >= 0 && bound <= static_cast<omReal64>(last) && bound == std::floor(bound))
    return static_cast<omUInt64>(bound);
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text.precision(std::numeric_limits<omReal64>::max_digits10);
  text << "Box of pixels: " << name << " = " << bound << " is not a whole number from 0 to " << last;
  logAndThrow(text.str(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

}  // namespace

RowIntersections normalized(const RowIntersections& rows) { return combine<detail::eKP_Subtract>(rows, {}); }

RowIntersections unite(const RowIntersections& a, const RowIntersections& b) {
  return combine<detail::eKP_Unite>(a, b);
}

RowIntersections intersect(const RowIntersections& a, const RowIntersections& b) {
  return combine<detail::eKP_Intersect>(a, b);
}

RowIntersections subtract(const RowIntersections& a, const RowIntersections& b) {
  return combine<detail::eKP_Subtract>(a, b);
}

RowIntersections exclude(const RowIntersections& a, const RowIntersections& b) {
  return combine<detail::eKP_Exclude>(a, b);
}

template <class T>
RowIntersections complement(const RowIntersections& rows, const BoundingBox2d<T>& box) {
  constexpr omUInt64 lastColumn = std::numeric_limits<omUInt32>::max();
  constexpr omUInt64 lastRow = omUInt64{1} << 53;  // up to here each whole number is an omReal64
  const PixelRun columns{static_cast<omUInt32>(wholeBound(box.getXMin(), "xMin", lastColumn)),
                         static_cast<omUInt32>(wholeBound(box.getXMax(), "xMax", lastColumn))};
  const omUInt64 yMin = wholeBound(box.getYMin(), "yMin", lastRow);
  const omUInt64 yMax = wholeBound(box.getYMax(), "yMax", lastRow);
  if (columns.begin > columns.end || yMin > yMax)
    logAndThrow("Box of pixels: columns from " + std::to_string(columns.begin) + " to " + std::to_string(columns.end) +
                    " and rows from " + std::to_string(yMin) + " to " + std::to_string(yMax) + " do not ascend",
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
  if (columns.begin == columns.end || yMin == yMax) return {};
  detail::RowIntersectionsBuilder::checkRows(yMin, yMax - 1);
  RowCombiner<detail::eKP_Subtract> combiner;
  for (omUInt64 row = yMin; row < yMax; ++row)
    combiner.addRow(row, {&columns, &columns + 1}, detail::rowOrNone(rows, row));
  return combiner.take();
}

RowIntersections translate(const RowIntersections& rows, omInt64 dx, omInt64 dy) {
  // Sums in unsigned numbers wrap around, as those of rows and columns that cannot be represented do.
  const omUInt64 shiftOfX = static_cast<omUInt64>(dx);
  const omUInt64 shiftOfY = static_cast<omUInt64>(dy);
  const auto checkIndex = [dx, dy](omUInt64 index, omUInt64 shift, omUInt64 end, const char* name) {
    const omUInt64 image = index + shift;
    const bool hasWrapped = (shift >> 63) != 0 ? image >= index : image < index;
    if (hasWrapped || image >= end)
      logAndThrow("Pixels of " + std::string(name) + " " + std::to_string(index) + " cannot be moved by (" +
                      std::to_string(dx) + ", " + std::to_string(dy) + "), there is no such " + name,
                  __PRETTY_FUNCTION__, __FILE__, __LINE__);
  };
  detail::RowIntersectionsBuilder builder;
  builder.reserve(rows.getNbRows(), rows.getRunColl().size());
  for (omUInt64 row = rows.getStartRow(); row < rows.getEndRow(); ++row) {
    const RowIntersections::Row runs = rows.getRow(row);
    if (runs.empty()) continue;
    checkIndex(row, shiftOfY, std::numeric_limits<omUInt64>::max(), "row");
    checkIndex(runs[0].begin, shiftOfX, std::numeric_limits<omUInt32>::max(), "column");
    checkIndex(runs[runs.size() - 1].end - 1, shiftOfX, std::numeric_limits<omUInt32>::max(), "column");
    for (const PixelRun& run : runs)
      builder.addRun(row + shiftOfY,
                     {static_cast<omUInt32>(run.begin + shiftOfX), static_cast<omUInt32>(run.end + shiftOfX)});
  }
  return builder.take();
}

bool contains(const RowIntersections& rows, omUInt64 x, omUInt64 y) {
  const RowIntersections::Row runs = detail::rowOrNone(rows, y);
  const PixelRun* next = std::upper_bound(runs.begin(), runs.end(), x,
                                          [](omUInt64 column, const PixelRun& run) { return column < run.end; });
  return next != runs.end() && next->begin <= x;
}

template ORMIX_GEOMETRY_API RowIntersections complement(const RowIntersections&, const BoundingBox2d<omInt32>&);
template ORMIX_GEOMETRY_API RowIntersections complement(const RowIntersections&, const BoundingBox2d<omUInt32>&);
template ORMIX_GEOMETRY_API RowIntersections complement(const RowIntersections&, const BoundingBox2d<omReal32>&);
template ORMIX_GEOMETRY_API RowIntersections complement(const RowIntersections&, const BoundingBox2d<omReal64>&);

}  // namespace ormix::geom
