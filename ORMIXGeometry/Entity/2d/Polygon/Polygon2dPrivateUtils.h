#pragma once

#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>

#include <string_view>
#include <vector>

// What the sources of polygons share; not installed.
namespace ormix::geom {

/// Appends the points of a WKT coordinate list; see `fromString`, which also closes.
/// \throw boost::geometry::read_wkt_exception when the text is malformed; the points read before it are then there
template <class T>
void readRing(std::string_view text, std::vector<Point2dData<T>>& points);

}  // namespace ormix::geom
