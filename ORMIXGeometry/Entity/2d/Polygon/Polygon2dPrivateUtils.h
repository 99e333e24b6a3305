#pragma once

#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>

#include <string_view>
#include <vector>

/// \file
/// Parser of fromString() of polygons; not installed.

namespace ormix::geom::detail {

/// Appends the points of a WKT coordinate list in the syntax of fromString(), without closing the ring.
/// \throw boost::geometry::read_wkt_exception when the text is malformed; the points before the error are then appended
template <class T>
void readRing(std::string_view text, std::vector<Point2dData<T>>& points);

}  // namespace ormix::geom::detail
