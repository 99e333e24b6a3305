#pragma once

#include <ORMIXMath/Scalar/Cast.h>

#include <cstddef>
#include <ostream>
#include <type_traits>
#include <vector>

/// \file
/// Printing and casting of contiguous points, for polygons, point clouds and meshes; not installed.

namespace ormix::geom::detail {

/// Prints "[", the points separated by ", ", and "]".
template <class Point>
std::ostream& printPoints(std::ostream& stream, const std::vector<Point>& points) {
  stream << '[';
  const char* separator = "";
  for (const Point& point : points) {
    stream << separator << point;
    separator = ", ";
  }
  return stream << ']';
}

/// Casts every coordinate of the points, see castScalar(). `result` may be `points`. Linear.
template <class PointOut, class PointIn>
void castPoints(const std::vector<PointIn>& points, std::vector<PointOut>& result) {
  if constexpr (std::is_same_v<PointOut, PointIn>) {
    result = points;
  } else {
    using TOut = typename PointOut::CoordinateType;
    using TIn = typename PointIn::CoordinateType;
    result.resize(points.size());
    const TIn* from = coordinates(points);
    TOut* to = coordinates(result);
    for (std::size_t i = 0; i < points.size() * (sizeof(PointIn) / sizeof(TIn)); ++i) to[i] = castScalar<TOut>(from[i]);
  }
}

}  // namespace ormix::geom::detail
