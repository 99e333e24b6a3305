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

void RowIntersectionsBuilder::checkRows(omUInt64 first, omUInt64 last) {
  if (last - first < RowIntersections::s_maxNbRows && last != std::numeric_limits<omUInt64>::max()) return;
  logAndThrow("Pixels from row " + std::to_string(first) + " to row " + std::to_string(last) +
                  " are not one set, which has at most " + std::to_string(RowIntersections::s_maxNbRows) +
                  " rows, all of them below row " + std::to_string(std::numeric_limits<omUInt64>::max()),
              __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

void RowIntersectionsBuilder::openRow(omUInt64 row) {
  const bool isFirst = _rows.getNbRows() == 0;
  checkRows(isFirst ? row : _rows.getStartRow(), row);
  if (isFirst) _rows._startRow = row;
  const auto nbMore = static_cast<std::size_t>(row - _rows.getEndRow()) + 1;
  if (nbMore == 1) {
    _rows._runEndColl.push_back(_rows._runColl.size());
    return;
  }
  reserveMore(_rows._runEndColl, nbMore);
  _rows._runEndColl.resize(_rows.getNbRows() + nbMore, _rows._runColl.size());
}

}  // namespace ormix::geom::detail
