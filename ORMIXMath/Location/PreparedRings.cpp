#include <ORMIXMath/Location/EdgeCrossing.h>
#include <ORMIXMath/Location/PreparedRings.h>

#include <cmath>

namespace ormix {

namespace {

using detail::orientationInline;
using detail::operator*;

// Lowest bits of the number of a cell's first edge.
constexpr omUInt32 s_isInside = 1;
constexpr omUInt32 s_isUseless = 2;
constexpr int s_nbFlags = 2;

// "Centres" lie off the middle of cells, where rings with coordinates in round numbers have edges more often.
constexpr omReal64 s_centerShare = 0.4453125;

// How many cells there are for each edge, and how many edges are in a cell on the rings, about. With fewer the grid is
// larger, and points far from the rings cost more.
constexpr omReal64 s_cellsPerEdge = 1.0;
constexpr omReal64 s_edgesPerCell = 6.0;

bool isOnEdge(const PlanarPoint& p, const PlanarPoint& a, const PlanarPoint& b) {
  const bool isInBox =
      std::min(a.x, b.x) <= p.x && p.x <= std::max(a.x, b.x) && std::min(a.y, b.y) <= p.y && p.y <= std::max(a.y, b.y);
  return isInBox && orientationInline(a, b, p) == 0;
}

}  // namespace

// Strips of no width are one.
void PreparedRings::Strips::divide(omReal64 nbStrips) {
  number = high > low ? std::max(nbStrips, 1.0) : 1;
  width = (high - low) / number;
  nbPerLength = high > low ? number / (high - low) : 0;
}

// Does not decrease with the coordinate, whatever is rounded.
inline std::size_t PreparedRings::Strips::of(omReal64 coordinate) const {
  const omReal64 strip = (coordinate - low) * nbPerLength;
  return strip > 0 ? static_cast<std::size_t>(std::min(strip, number - 1)) : 0;
}

inline omReal64 PreparedRings::Strips::center(std::size_t strip) const {
  return low + (static_cast<omReal64>(strip) + s_centerShare) * width;
}

inline PlanarPoint PreparedRings::center(std::size_t cell) const {
  return {_columns.center(cell % nbColumns()), _rows.center(cell / nbColumns())};
}

bool PreparedRings::build() {
  const bool isPossible =
      _edges.size() < (std::size_t{1} << 28) && std::all_of(_edges.begin(), _edges.end(), [](const Edge& edge) {
        return std::isfinite(edge.a.x) && std::isfinite(edge.a.y);
      });
  if (!isPossible) _edges.clear();
  if (_edges.empty()) return isPossible;
  scale();
  chooseCells();
  sortIntoCells();
  findCentersInside();
  return true;
}

void PreparedRings::scale() {
  omReal64 largest = 0;
  for (const Edge& edge : _edges) largest = std::max({largest, std::abs(edge.a.x), std::abs(edge.a.y)});
  _scale = detail::safeScale({largest});
  if (_scale == 1.0) return;
  for (Edge& edge : _edges) edge = {edge.a * _scale, edge.b * _scale};
}

// With nx columns and ny rows, X and Y edges that an upright and a level line across the box meet on average, and Z the
// sum of the areas of the edges' boxes in that of all, the n edges are in n + nx X + ny Y + nx ny Z cells, and the
// rings in nx X + ny Y cells: that sum is to be a share of n, and nx ny about n. Where both cannot be, the two parts of
// the sum are equal.
void PreparedRings::chooseCells() {
  PlanarPoint low = _edges.front().a;
  PlanarPoint high = low;
  omReal64 nbUpright = 0;
  omReal64 nbLevel = 0;
  omReal64 area = 0;
  for (const Edge& edge : _edges) {
    low = {std::min(low.x, edge.a.x), std::min(low.y, edge.a.y)};
    high = {std::max(high.x, edge.a.x), std::max(high.y, edge.a.y)};
    const omReal64 dx = std::abs(edge.b.x - edge.a.x);
    const omReal64 dy = std::abs(edge.b.y - edge.a.y);
    nbUpright += dx;
    nbLevel += dy;
    area += dx * dy;
  }
  _columns = {low.x, high.x, 1, 0, 0};
  _rows = {low.y, high.y, 1, 0, 0};
  nbUpright = high.x > low.x ? nbUpright / (high.x - low.x) : 0;
  nbLevel = high.y > low.y ? nbLevel / (high.y - low.y) : 0;
  area = nbUpright > 0 && nbLevel > 0 ? area / (high.x - low.x) / (high.y - low.y) : 0;
  const omReal64 n = static_cast<omReal64>(_edges.size());
  nbUpright = std::max(nbUpright, 1.0);
  nbLevel = std::max(nbLevel, 1.0);
  const omReal64 nbCells = std::min(s_cellsPerEdge * n, n / std::max(area, 1.0));
  const omReal64 product = nbCells * nbUpright * nbLevel;
  const omReal64 sum = std::clamp(2 * std::sqrt(product), n / s_edgesPerCell, n);
  const omReal64 larger = 0.5 * (sum + std::sqrt(std::max(sum * sum - 4 * product, 0.0)));
  const omReal64 smaller = std::min(product / larger, larger);
  // Many rows where a level line meets fewer edges.
  const bool areRowsMany = nbLevel <= nbUpright;
  const omReal64 nbColumns = std::floor((areRowsMany ? smaller : larger) / nbUpright);
  const omReal64 nbRows = std::floor((areRowsMany ? larger : smaller) / nbLevel);
  _columns.divide(nbColumns);
  _rows.divide(nbRows);
}

void PreparedRings::sortIntoCells() {
  const std::size_t width = nbColumns();
  const auto forCellsOf = [this, width](const Edge& edge, auto&& visit) {
    const auto [left, right] = std::minmax({_columns.of(edge.a.x), _columns.of(edge.b.x)});
    const auto [bottom, top] = std::minmax({_rows.of(edge.a.y), _rows.of(edge.b.y)});
    for (std::size_t row = bottom; row <= top; ++row)
      for (std::size_t column = left; column <= right; ++column) visit(row * width + column);
  };
  const std::size_t nbCells = width * static_cast<std::size_t>(_rows.number);
  _cells.assign(nbCells + 2, 0);
  for (const Edge& edge : _edges) forCellsOf(edge, [this](std::size_t cell) { ++_cells[cell + 2]; });
  for (std::size_t cell = 2; cell < _cells.size(); ++cell) _cells[cell] += _cells[cell - 1];
  _edgesOfCells.resize(_cells.back());
  for (const Edge& edge : _edges) forCellsOf(edge, [&](std::size_t cell) { _edgesOfCells[_cells[cell + 1]++] = edge; });
  _cells.pop_back();
  for (omUInt32& cell : _cells) cell <<= s_nbFlags;
}

// From centre to centre along each row: an edge that crosses between two of them is in one of their cells.
void PreparedRings::findCentersInside() {
  const std::size_t width = nbColumns();
  for (std::size_t cell = 0; cell + 1 < _cells.size(); ++cell) {
    const std::size_t column = cell % width;
    const PlanarPoint here = center(cell);
    const PlanarPoint before = column > 0 ? center(cell - 1) : here;
    bool isInside = column > 0 && (_cells[cell - 1] & s_isInside) != 0;
    bool isUseless = _columns.of(here.x) != column || _rows.of(here.y) != cell / width;
    const auto isLeftOf = [](const Edge& edge, const PlanarPoint& p) {
      const int side = orientationInline(edge.a, edge.b, p);
      return edge.a.y <= p.y ? side < 0 : side > 0;
    };
    const auto add = [&](const Edge& edge) {
      if ((edge.a.y <= here.y) == (edge.b.y <= here.y)) return;
      const bool wasLeft = column > 0 && isLeftOf(edge, before);
      if (isLeftOf(edge, here) != wasLeft) isInside = !isInside;
    };
    for (std::size_t i = _cells[cell] >> s_nbFlags; i < _cells[cell + 1] >> s_nbFlags; ++i) {
      const Edge& edge = _edgesOfCells[i];
      isUseless = isUseless || isOnEdge(here, edge.a, edge.b);
      add(edge);
    }
    for (std::size_t i = column > 0 ? _cells[cell - 1] >> s_nbFlags : 0,
                     end = column > 0 ? _cells[cell] >> s_nbFlags : 0;
         i < end; ++i) {
      const Edge& edge = _edgesOfCells[i];
      if (_columns.of(std::max(edge.a.x, edge.b.x)) < column) add(edge);
    }
    _cells[cell] |= (isInside ? s_isInside : 0) | (isUseless ? s_isUseless : 0);
  }
}

RingCrossings PreparedRings::crossings(omReal64 x, omReal64 y) const {
  RingCrossings result;
  const PlanarPoint p{x * _scale, y * _scale};
  const bool isInBox = p.x >= _columns.low && p.x <= _columns.high && p.y >= _rows.low && p.y <= _rows.high;
  if (_edges.empty() || !isInBox) return result;
  const std::size_t cell = _rows.of(p.y) * nbColumns() + _columns.of(p.x);
  const omUInt32 flags = _cells[cell];
  if ((flags & s_isUseless) != 0) {
    for (const Edge& edge : _edges) detail::addEdge(result, edge.a, edge.b, p);
    return result;
  }
  result.isOdd = (flags & s_isInside) != 0;
  const std::size_t end = _cells[cell + 1] >> s_nbFlags;
  std::size_t i = flags >> s_nbFlags;
  if (i == end) return result;
  const PlanarPoint c = center(cell);
  for (; i < end; ++i) {
    const Edge& edge = _edgesOfCells[i];
    // The line from the point to the centre parts the ends of an edge, one exactly on it counting to the right.
    const int sideA = orientationInline(p, c, edge.a);
    const int sideB = orientationInline(p, c, edge.b);
    if (sideA * sideB > 0) continue;
    const int side = orientationInline(edge.a, edge.b, p);
    if (side == 0 && isOnEdge(p, edge.a, edge.b)) {
      result.isOnBoundary = true;
      return result;
    }
    const bool isParted = (sideA > 0) != (sideB > 0);
    if (isParted && side * orientationInline(edge.a, edge.b, c) < 0) result.isOdd = !result.isOdd;
  }
  return result;
}

}  // namespace ormix
