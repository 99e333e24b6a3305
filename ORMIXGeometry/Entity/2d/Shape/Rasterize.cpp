#include <ORMIXGeometry/Entity/2d/Shape/RasterSweep.h>
#include <ORMIXGeometry/Entity/2d/Shape/Rasterize.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersectionsBuilder.h>
#include <ORMIXGeometry/Message/EntityMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <limits>
#include <sstream>
#include <string>

namespace ormix::geom {

namespace {

using detail::ColumnSpan;
using detail::RowRange;
using SpanColl = std::vector<ColumnSpan>;  // not empty, ascending, not adjacent

// Runs end at 2^32 - 1 at most.
constexpr omInt64 s_columnEnd = std::numeric_limits<omUInt32>::max();
// Above, rows have centres that omReal64 does not hold.
constexpr omInt64 s_rowEnd = omInt64{1} << 52;

[[noreturn]] void refuse(const std::string& reason) {
  logAndThrow("A polygon cannot be rasterized: " + reason, __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

/// The pixels that are wanted, and whether it is an error that there are others.
struct Window {
  ColumnSpan columns;
  RowRange rows;
  bool isWhole;
};

constexpr Window s_wholePlane{{0, s_columnEnd}, {-detail::s_largestColumn, detail::s_largestColumn}, true};

template <class T>
omInt64 boundOf(const char* name, T bound, omInt64 largest) {
  const auto value = static_cast<omReal64>(bound);
  if (value >= 0 && value <= static_cast<omReal64>(largest) && value == std::floor(value))
    return static_cast<omInt64>(value);
  std::ostringstream text;
  text.precision(std::numeric_limits<omReal64>::max_digits10);
  text << name << " = " << value << " of the box is not a whole number from 0 to " << largest;
  refuse(text.str());
}

template <class T>
Window windowOf(const BoundingBox2d<T>& box) {
  const Window window{{boundOf("xMin", box.getXMin(), s_columnEnd), boundOf("xMax", box.getXMax(), s_columnEnd)},
                      {boundOf("yMin", box.getYMin(), s_rowEnd), boundOf("yMax", box.getYMax(), s_rowEnd)},
                      false};
  return window;
}

void checkRows(const RowRange& rows, const Window& window) {
  if (rows.empty()) return;
  const auto nbRows = static_cast<omUInt64>(rows.end - rows.begin);
  const std::size_t limit = window.isWhole ? s_maxNbRasterRows : RowIntersections::s_maxNbRows;
  if (nbRows > limit)
    refuse("it extends over " + std::to_string(nbRows) + " rows, more than " + std::to_string(limit) +
           (window.isWhole ? ", and there is no box to clip it to" : " in the box"));
  if (rows.end > s_rowEnd)
    refuse("it extends to row " + std::to_string(rows.end - 1) + ", behind the last one, " +
           std::to_string(s_rowEnd - 1));
}

void append(SpanColl& spans, const ColumnSpan& span) {
  if (span.begin >= span.end) return;
  if (!spans.empty() && span.begin <= spans.back().end)
    spans.back().end = std::max(spans.back().end, span.end);
  else
    spans.push_back(span);
}

/// Behind an odd number of crossings one is inside.
template <class Entries>
void spansBetween(const Entries& entries, const Window& window, SpanColl& spans) {
  spans.clear();
  if (window.isWhole && !entries.empty() &&
      (entries.front().place <= -detail::s_largestColumn || entries.back().place >= detail::s_largestColumn))
    refuse("it extends beyond column 2^53 in one direction, and there is no box to clip it to");
  for (std::size_t i = 0; i + 1 < entries.size(); i += 2) append(spans, {entries[i].place, entries[i + 1].place});
}

template <class Entries>
void spansUnder(const Entries& entries, SpanColl& spans) {
  spans.clear();
  for (const auto& entry : entries) append(spans, entry.place);
}

void unite(const SpanColl& a, const SpanColl& b, SpanColl& result) {
  result.clear();
  for (std::size_t i = 0, j = 0; i < a.size() || j < b.size();)
    append(result, j == b.size() || (i < a.size() && a[i].begin <= b[j].begin) ? a[i++] : b[j++]);
}

void subtract(const SpanColl& a, const SpanColl& b, SpanColl& result) {
  result.clear();
  std::size_t j = 0;
  for (ColumnSpan rest : a) {
    while (j < b.size() && b[j].end <= rest.begin) ++j;
    for (std::size_t k = j; k < b.size() && b[k].begin < rest.end; ++k) {
      append(result, {rest.begin, b[k].begin});
      rest.begin = b[k].end;
    }
    append(result, rest);
  }
}

/// Takes the spans of rows in ascending order.
class Output {
 public:
  explicit Output(const Window& window) : _window(window) {}

  void addRow(omInt64 row, const SpanColl& spans) {
    _runs.clear();
    for (const ColumnSpan& span : spans) {
      const omInt64 begin = std::max(span.begin, _window.columns.begin);
      const omInt64 end = std::min(span.end, _window.columns.end);
      if (_window.isWhole && (row < 0 || begin != span.begin || end != span.end)) refuseSpan(row, span);
      if (begin < end) _runs.push_back({static_cast<omUInt32>(begin), static_cast<omUInt32>(end)});
    }
    _builder.addRow(static_cast<omUInt64>(row), _runs.data(), _runs.data() + _runs.size());
  }

  RowIntersections take() { return _builder.take(); }

 private:
  [[noreturn]] static void refuseSpan(omInt64 row, const ColumnSpan& span) {
    refuse("it has the pixels [" + std::to_string(span.begin) + ", " + std::to_string(span.end) + "[ of row " +
           std::to_string(row) + ", columns are from 0 to " + std::to_string(s_columnEnd - 1) +
           " and rows from 0 on, and there is no box to clip it to");
  }

  Window _window;
  RowIntersections::RunColl _runs;
  detail::RowIntersectionsBuilder _builder;
};

template <class T>
using RingColl = std::vector<const Polygon2d<T>*>;

template <class Sweep, class T>
RowRange startSweep(Sweep& sweep, const RingColl<T>& rings, const Window& window) {
  for (std::size_t i = 0; i < rings.size(); ++i) sweep.add(*rings[i], i);
  const RowRange rows = sweep.rows();
  checkRows(rows, window);
  sweep.start(rows);
  return rows;
}

template <class T>
using CentreSweep = detail::RasterSweep<T, detail::CentreTracker<T>>;

template <class T>
RowIntersections rasterizeCentres(const RingColl<T>& rings, const Window& window) {
  CentreSweep<T> centers(window.rows);
  const RowRange rows = startSweep(centers, rings, window);
  Output output(window);
  SpanColl spans;
  for (omInt64 row = rows.begin; row < rows.end; ++row) {
    spansBetween(centers.row(row), window, spans);
    output.addRow(row, spans);
  }
  return output.take();
}

/// The pixels with their centre inside, with or without those that the rings touch.
template <class T, bool Covered>
RowIntersections rasterizeEdges(const RingColl<T>& rings, const Window& window) {
  CentreSweep<T> centers(window.rows);
  detail::RasterSweep<T, detail::TouchTracker<T, Covered>> touched(window.rows);
  const RowRange centerRows = startSweep(centers, rings, window);
  const RowRange touchedRows = startSweep(touched, rings, window);
  const RowRange rows{std::min(centerRows.begin, touchedRows.begin), std::max(centerRows.end, touchedRows.end)};
  Output output(window);
  SpanColl inside, onRings, spans;
  for (omInt64 row = rows.begin; row < rows.end; ++row) {
    spansBetween(centers.row(row), window, inside);
    spansUnder(touched.row(row), onRings);
    if constexpr (Covered)
      subtract(inside, onRings, spans);
    else
      unite(inside, onRings, spans);
    output.addRow(row, spans);
  }
  return output.take();
}

template <class T>
RowIntersections rasterizeRings(const RingColl<T>& rings, const Window& window, eRasterRule rule) {
  switch (rule) {
    case eRR_Touched:
      return rasterizeEdges<T, false>(rings, window);
    case eRR_Covered:
      return rasterizeEdges<T, true>(rings, window);
    default:
      return rasterizeCentres<T>(rings, window);
  }
}

template <class T>
RingColl<T> ringsOf(const Polygon2d<T>& polygon) {
  return {&polygon};
}

template <class T>
void appendRings(const PolygonWithHoles2d<T>& polygon, RingColl<T>& rings) {
  visitNodes(polygon, [&rings](const PolygonWithHoles2d<T>& node) {
    rings.push_back(&node.getExteriorPolygon());
    return true;
  });
}

template <class T>
RingColl<T> ringsOf(const PolygonWithHoles2d<T>& polygon) {
  RingColl<T> rings;
  appendRings(polygon, rings);
  return rings;
}

template <class T>
RingColl<T> ringsOf(const std::vector<boost::shared_ptr<PolygonWithHoles2d<T>>>& polygons) {
  RingColl<T> rings;
  for (const auto& polygon : polygons) {
    if (!polygon)
      logAndThrow(formatMessage<eEntityMessage>(eEntityMessage::eEM_NullPointer), __PRETTY_FUNCTION__, __FILE__,
                  __LINE__);
    appendRings(*polygon, rings);
  }
  return rings;
}

}  // namespace

template <class T>
RowIntersections rasterize(const Polygon2d<T>& polygon, eRasterRule rule) {
  return rasterizeRings(ringsOf(polygon), s_wholePlane, rule);
}
template <class T>
RowIntersections rasterize(const PolygonWithHoles2d<T>& polygon, eRasterRule rule) {
  return rasterizeRings(ringsOf(polygon), s_wholePlane, rule);
}
template <class T>
RowIntersections rasterize(const std::vector<boost::shared_ptr<PolygonWithHoles2d<T>>>& polygons, eRasterRule rule) {
  return rasterizeRings(ringsOf(polygons), s_wholePlane, rule);
}

template <class T>
RowIntersections rasterize(const Polygon2d<T>& polygon, const BoundingBox2d<T>& box, eRasterRule rule) {
  return rasterizeRings(ringsOf(polygon), windowOf(box), rule);
}
template <class T>
RowIntersections rasterize(const PolygonWithHoles2d<T>& polygon, const BoundingBox2d<T>& box, eRasterRule rule) {
  return rasterizeRings(ringsOf(polygon), windowOf(box), rule);
}
template <class T>
RowIntersections rasterize(const std::vector<boost::shared_ptr<PolygonWithHoles2d<T>>>& polygons,
                           const BoundingBox2d<T>& box, eRasterRule rule) {
  return rasterizeRings(ringsOf(polygons), windowOf(box), rule);
}

#define ORMIX_GEOMETRY_INSTANTIATE_RASTERIZE_OF(T, Entity)                     \
  template ORMIX_GEOMETRY_API RowIntersections rasterize(Entity, eRasterRule); \
  template ORMIX_GEOMETRY_API RowIntersections rasterize(Entity, const BoundingBox2d<T>&, eRasterRule);
#define ORMIX_GEOMETRY_INSTANTIATE_RASTERIZE(T)                            \
  ORMIX_GEOMETRY_INSTANTIATE_RASTERIZE_OF(T, const Polygon2d<T>&)          \
  ORMIX_GEOMETRY_INSTANTIATE_RASTERIZE_OF(T, const PolygonWithHoles2d<T>&) \
  ORMIX_GEOMETRY_INSTANTIATE_RASTERIZE_OF(T, const std::vector<boost::shared_ptr<PolygonWithHoles2d<T>>>&)

ORMIX_GEOMETRY_INSTANTIATE_RASTERIZE(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_RASTERIZE(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_RASTERIZE(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_RASTERIZE(omReal64)

}  // namespace ormix::geom
