#include <ORMIXGeometry/Entity/2d/Shape/RowIntersectionsBuilder.h>
#include <ORMIXGeometry/Entity/ReserveMore.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <limits>
#include <string>
#include <utility>

namespace ormix::geom::detail {

void RowIntersectionsBuilder::reserve(std::size_t nbRows, std::size_t nbRuns) {
  _rows._runEndColl.reserve(nbRows);
  _rows._runColl.reserve(nbRuns);
}

void RowIntersectionsBuilder::addRow(omUInt64 row, const PixelRun* first, const PixelRun* last) {
  if (first == last) return;
  openRow(row);
  _rows._runColl.insert(_rows._runColl.end(), first, last);
  _rows._runEndColl.back() = _rows._runColl.size();
}

RowIntersections RowIntersectionsBuilder::take() {
  RowIntersections result = std::move(_rows);
  _rows.clear();
  return result;
}

void RowIntersectionsBuilder::openRow(omUInt64 row) {
  const bool isFirst = _rows.getNbRows() == 0;
  const omUInt64 nbRows = isFirst ? 1 : row - _rows.getStartRow() + 1;
  if (nbRows > RowIntersections::s_maxNbRows || row == std::numeric_limits<omUInt64>::max())
    logAndThrow("Row " + std::to_string(row) + " cannot be added to pixels from row " +
                    std::to_string(isFirst ? row : _rows.getStartRow()) + " on, at most " +
                    std::to_string(RowIntersections::s_maxNbRows) + " rows below row " +
                    std::to_string(std::numeric_limits<omUInt64>::max()) + " are held",
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
  if (isFirst) _rows._startRow = row;
  const auto nbMore = static_cast<std::size_t>(nbRows) - _rows.getNbRows();
  reserveMore(_rows._runEndColl, nbMore);
  _rows._runEndColl.resize(static_cast<std::size_t>(nbRows), _rows._runColl.size());
}

}  // namespace ormix::geom::detail
