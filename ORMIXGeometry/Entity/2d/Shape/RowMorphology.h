#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/PixelConnectivity.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>

namespace ormix::geom {

// Pixels are in the plane: its columns and rows left of and above 0 are background to all of these functions. Results
// have no adjacent runs, and no rows without runs at either end. Adjacent runs of arguments are as good as joined ones.

/// The pixels at most `halfWidth` columns and `halfHeight` rows away from one of `rows`: each pixel grows to a box of
/// (2·halfWidth + 1) × (2·halfHeight + 1) pixels. What lies left of column 0, right of column 2³² - 2, above row 0 or
/// below row 2⁶⁴ - 2 is left out. Of n runs at most in time n·halfHeight, mostly in n·log(halfHeight).
/// \throw ORMIXGeometryException, logged, if there were more than `RowIntersections::s_maxNbRows` rows
ORMIX_GEOMETRY_API RowIntersections dilate(const RowIntersections& rows, omUInt32 halfWidth, omUInt32 halfHeight);

/// The pixels whose centres are at most `radius` away from that of a pixel of `rows`, decided exactly. What lies
/// outside the columns and rows is left out as for boxes. Linear in the runs times the radius, times at most the
/// radius' logarithm.
/// \throw ORMIXGeometryException, logged, if the radius is negative, NaN, or 2³² or more, or there were more than
/// `RowIntersections::s_maxNbRows` rows
ORMIX_GEOMETRY_API RowIntersections dilate(const RowIntersections& rows, omReal64 radius);

/// The pixels whose box of (2·halfWidth + 1) × (2·halfHeight + 1) pixels lies wholly in `rows`. In time as dilate().
ORMIX_GEOMETRY_API RowIntersections erode(const RowIntersections& rows, omUInt32 halfWidth, omUInt32 halfHeight);

/// The pixels for which all pixels at most `radius` away, from centre to centre and decided exactly, are in `rows`. In
/// time as dilate().
/// \throw ORMIXGeometryException, logged, if the radius is negative, NaN, or 2³² or more
ORMIX_GEOMETRY_API RowIntersections erode(const RowIntersections& rows, omReal64 radius);

/// The pixels and their holes: those parts of the background that do not reach infinity. Linear in the runs and rows.
/// \param connectivity of the pixels; their background has the other one
/// \throw ORMIXGeometryException, logged, if there are 2³¹ runs or more
ORMIX_GEOMETRY_API RowIntersections fillHoles(const RowIntersections& rows, ePixelConnectivity connectivity = ePC_8);

}  // namespace ormix::geom
