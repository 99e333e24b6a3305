#pragma once

#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>
#include <ORMIXMath/Scalar/Cast.h>

#include <ostream>
#include <string_view>
#include <type_traits>
#include <vector>

// What the sources of polygons and point clouds share; not installed.
namespace ormix::geom {

/// Appends the points of a WKT coordinate list; see `fromString`, which also closes.
/// \throw boost::geometry::read_wkt_exception when the text is malformed; the points read before it are then there
template <class T>
void readRing(std::string_view text, std::vector<Point2dData<T>>& points);

/// "[" the points separated by ", " "]"
template <class T>
std::ostream& printPoints(std::ostream& stream, const std::vector<Point2dData<T>>& points) {
  stream << '[';
  const char* separator = "";
  for (const Point2dData<T>& point : points) {
    stream << separator << point;
    separator = ", ";
  }
  return stream << ']';
}

/// The cast of points over a run; `result` may be `points`.
template <class TOut, class TIn>
void castPoints(const std::vector<Point2dData<TIn>>& points, std::vector<Point2dData<TOut>>& result) {
  if constexpr (std::is_same_v<TOut, TIn>) {
    result = points;
  } else {
    result.resize(points.size());
    for (std::size_t i = 0; i < points.size(); ++i)
      result[i].setCoords(castScalar<TOut>(points[i].getX()), castScalar<TOut>(points[i].getY()));
  }
}

}  // namespace ormix::geom
