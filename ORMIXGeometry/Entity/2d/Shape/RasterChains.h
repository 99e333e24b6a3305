#pragma once

#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <ORMIXGeometry/Entity/2d/Shape/EdgeCrossing.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <array>
#include <cmath>
#include <deque>
#include <limits>
#include <sstream>
#include <type_traits>
#include <vector>

/// \file
/// Rings cut where they turn upwards or downwards, for walks over rows of pixels; not installed.

namespace ormix::geom::detail {

/// Consecutive rows.
struct RowRange {
  omInt64 begin;  ///< the first row
  omInt64 end;    ///< the row after the last one

  bool empty() const { return begin >= end; }
};

/// A part of a ring along which y does not decrease, from the vertex `top` on: the next vertex is at `top + step`.
template <class T>
struct RasterChain {
  const Point2dData<T>* top;
  const Point2dData<T>* bottom;  ///< the last vertex
  std::ptrdiff_t step;           ///< 1 or -1
  RowRange rows;                 ///< where it matters, not empty
};

/// The chains of rings, which must stay where they are.
/// \param Tracker its rowsOf(top, bottom) are the rows where a chain matters, of the y of its ends
template <class T, class Tracker>
class RasterChains {
 public:
  /// \param clip rows outside are left out
  explicit RasterChains(const RowRange& clip) : _clip(clip) {}

  /// Adds the chains of a ring.
  /// \throw ORMIXGeometryException, logged, if a coordinate is not finite
  void add(const Polygon2d<T>& ring, std::size_t ringIndex) {
    const auto& points = ring.getPointColl();
    if (points.empty()) return;
    checkFinite(points, ringIndex);
    addPath(points.data(), points.size());
    if (isClosed(ring)) return;
    _closingEdges.push_back({points.back(), points.front()});
    addPath(_closingEdges.back().data(), 2);
  }

  const std::vector<RasterChain<T>>& chains() const { return _chains; }

 private:
  static void checkFinite(const typename Polygon2d<T>::PointColl& points, std::size_t ringIndex) {
    if constexpr (std::is_floating_point_v<T>) {
      const T* values = coordinates(points);
      bool isFinite = true;
      for (std::size_t i = 0; i < 2 * points.size(); ++i)
        isFinite &= std::abs(values[i]) <= std::numeric_limits<T>::max();
      if (!isFinite) refuse(values, ringIndex);
    }
  }

  [[noreturn]] static void refuse(const T* values, std::size_t ringIndex) {
    std::size_t i = 0;
    while (std::isfinite(values[i])) ++i;
    std::ostringstream text;
    text << "A polygon cannot be rasterized: " << (i % 2 == 0 ? 'x' : 'y') << " of vertex " << i / 2 << " of ring "
         << ringIndex << " is " << values[i];
    logAndThrow(text.str(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
  }

  void addPath(const Point2dData<T>* points, std::size_t nbPoints) {
    std::size_t start = 0;
    int direction = 0;
    for (std::size_t i = 1; i < nbPoints; ++i) {
      const int turn = (points[i].getY() > points[i - 1].getY()) - (points[i].getY() < points[i - 1].getY());
      if (turn == 0 || turn == direction) continue;
      if (direction != 0) {
        addChain(points + start, points + i - 1, direction);
        start = i - 1;
      }
      direction = turn;
    }
    if (nbPoints > 1) addChain(points + start, points + nbPoints - 1, direction);
  }

  void addChain(const Point2dData<T>* first, const Point2dData<T>* last, int direction) {
    if (direction < 0) std::swap(first, last);
    RowRange rows = Tracker::rowsOf(static_cast<omReal64>(first->getY()), static_cast<omReal64>(last->getY()));
    rows.begin = std::max(rows.begin, _clip.begin);
    rows.end = std::min(rows.end, _clip.end);
    if (!rows.empty()) _chains.push_back({first, last, direction < 0 ? -1 : 1, rows});
  }

  RowRange _clip;
  std::vector<RasterChain<T>> _chains;
  std::deque<std::array<Point2dData<T>, 2>> _closingEdges;
};

}  // namespace ormix::geom::detail
