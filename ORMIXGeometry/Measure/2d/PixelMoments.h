#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>
#include <ORMIXGeometry/Measure/2d/Moments2dO3.h>

namespace ormix::geom {

/// Moments of a set of pixels, each of which is the square [x, x + 1) × [y, y + 1) with the mass 1: those of the region
/// within its contour, so the mass is the number of pixels, the centroid of one pixel is at (x + 0.5, y + 0.5), and its
/// second central moments are 1/12.
///
/// The sums are exact: integers of up to 192 bits about the whole pixel corner nearest to the centroid, each rounded
/// once at the end. In sets wider or higher than 2³¹ pixels that corner is kept within 2³¹ of all of them. O(runs).
ORMIX_GEOMETRY_API Moments2dO3 moments(const RowIntersections& rows);

}  // namespace ormix::geom
