#pragma once

#include <ORMIXGeometry/Entity/2d/PlanarClasses.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>

namespace ormix::geom {

// Operations on sets of pixels. Arguments may have adjacent runs, and rows without runs at both ends; results have
// neither, so that equal sets of pixels compare equal. All are linear in the runs and the rows of their arguments.
//
// A set holds all rows between its first and its last pixel, 8 bytes each. Uniting or excluding two sets that are far
// apart makes the rows between them too; what would have more than `RowIntersections::s_maxNbRows` rows is refused.

/// The same pixels, with adjacent runs joined and without rows that have no runs at either end.
ORMIX_GEOMETRY_API RowIntersections normalized(const RowIntersections& rows);

/// The pixels of a or b.
/// \throw ORMIXGeometryException, logged, if there were more than `RowIntersections::s_maxNbRows` rows
ORMIX_GEOMETRY_API RowIntersections unite(const RowIntersections& a, const RowIntersections& b);
/// The pixels of both a and b.
ORMIX_GEOMETRY_API RowIntersections intersect(const RowIntersections& a, const RowIntersections& b);
/// The pixels of a that are not in b.
ORMIX_GEOMETRY_API RowIntersections subtract(const RowIntersections& a, const RowIntersections& b);
/// The pixels that are in one of a and b, and not in both.
/// \throw as unite()
ORMIX_GEOMETRY_API RowIntersections exclude(const RowIntersections& a, const RowIntersections& b);

/// The pixels of the box that are not in rows: those of the columns [xMin, xMax) and the rows [yMin, yMax). A box
/// without width or height has none. Linear in the rows of the box and the runs.
/// \throw ORMIXGeometryException, logged, if a bound of the box is not a whole number from 0 on, a minimum is above its
/// maximum, xMax above 2³² - 1, yMax above 2⁵³, or there are more than `RowIntersections::s_maxNbRows` rows
template <class T>
RowIntersections complement(const RowIntersections& rows, const BoundingBox2d<T>& box);

/// The pixels moved by dx columns and dy rows.
/// \throw ORMIXGeometryException, logged, if the image of a pixel is left of column 0, right of column 2³² - 2, above
/// row 0 or below row 2⁶⁴ - 2
ORMIX_GEOMETRY_API RowIntersections translate(const RowIntersections& rows, omInt64 dx, omInt64 dy);

/// Whether the pixel (x, y) is in rows. Logarithmic in the runs of its row.
ORMIX_GEOMETRY_API bool contains(const RowIntersections& rows, omUInt64 x, omUInt64 y);

}  // namespace ormix::geom
