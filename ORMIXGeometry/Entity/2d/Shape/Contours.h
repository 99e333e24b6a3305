#pragma once

#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXGeometry/Entity/2d/Shape/PixelConnectivity.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <vector>

namespace ormix::geom {

/// The boundaries of the connected regions of a set of pixels, as trees: the roots are regions that no other one
/// encloses, their holes may contain islands, these holes again. The pixel (x, y) is the square [x, x + 1) × [y, y +
/// 1), so that
/// - vertices are whole numbers, at corners of the boundary only: horizontal and vertical edges alternate,
/// - the area of the polygons is the number of pixels, and rasterize() of them is `rows`, both exactly,
/// - neighbouring regions of a label image share their border.
///
/// Pixels that touch at a corner only are in one region for ePC_8 and in two for ePC_4, and the reverse for the
/// background; the rings touch at that corner and never cross. Each ring is closed, its last vertex repeating the
/// first, which is the first one row by row; exterior rings have the role eP2DT_Exterior and holes eP2DT_Interior, and
/// both have a positive area in their role (AreaMsr2d). Roots and holes are in order of their first vertices.
///
/// Adjacent runs are as good as one. Linear in the rows and runs; no recursion, so that the depth of trees is bounded
/// by memory only.
/// \throw ORMIXGeometryException, logged, if T does not hold a coordinate exactly: for omReal32 these are most from
/// 16,777,216 on. Or if there are 2³⁰ runs or more
template <class T>
std::vector<boost::shared_ptr<PolygonWithHoles2d<T>>> traceContours(const RowIntersections& rows,
                                                                    ePixelConnectivity connectivity);

}  // namespace ormix::geom
