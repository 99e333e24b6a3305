#pragma once

#include <ORMIXGeometry/Entity/2d/BoundingBox/BoundingBox2d.h>
#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>
#include <ORMIXGeometry/Enumeration.h>

#include <array>
#include <boost/smart_ptr/shared_ptr.hpp>
#include <cstddef>
#include <string_view>
#include <vector>

namespace ormix::geom {

/// Which pixels belong to a region. The pixel (x, y) is the square [x, x + 1) × [y, y + 1), its centre (x + 0.5, y +
/// 0.5). Each rule keeps at least the pixels of the one before it in the order eRR_Covered, eRR_Center, eRR_Touched.
enum eRasterRule {
  /// The centre is inside. A centre on an edge counts where the region is to its right, or below it for a horizontal
  /// edge (y grows downwards): of regions that divide the plane exactly one has the pixel.
  eRR_Center,
  /// A point of the closed region, its edges included, lies in the pixel, of which the left and the upper side are a
  /// part: an edge on the border of two pixels touches the one to the right of it, or below.
  eRR_Touched,
  /// The pixel is wholly inside: its centre is, and no edge passes through the interior of the square. An edge that two
  /// rings have in common passes through too, although the region may be on both sides of it.
  eRR_Covered
};

/// Without a box to clip to, pixels of at most this many rows are made; each takes 8 bytes, also one without pixels.
constexpr std::size_t s_maxNbRasterRows = std::size_t{1} << 26;

/// The pixels of a polygon, of a polygon with all its holes and their islands, or of several of these. A point is
/// inside if a ray from it crosses the rings an odd number of times, whatever their roles and orientations (even-odd
/// rule): also where a ring crosses itself or others, and so polygons that overlap are outside where they do. A ring
/// that is stored open is closed by an edge from its last vertex to its first. A null hole counts as none.
///
/// Exact for all finite coordinates of every type and size: a rounded number decides only where its error bound allows
/// it, what is left is decided by exact arithmetic. rasterize() of what traceContours() has made is the same set of
/// pixels. The result has no adjacent runs, and no rows without runs at either end.
///
/// Linear in the vertices, the rows and the pairs of an edge and a row that it crosses, as long as edges keep their
/// order from left to right; where m of them do not, m log m in their row. Memory for the vertices' monotone chains,
/// the rows, and the runs.
/// \throw ORMIXGeometryException, logged, if a coordinate is not finite (the text names ring and vertex; rings are counted
/// from 0, a polygon before its holes), a polygon of a collection is null, a pixel is at a negative column or row or
/// beyond column 2³² - 2, the rings extend over more than `s_maxNbRasterRows` rows, or beyond row 2⁵²
/// @{
template <class T>
RowIntersections rasterize(const Polygon2d<T>& polygon, eRasterRule rule = eRR_Center);
template <class T>
RowIntersections rasterize(const PolygonWithHoles2d<T>& polygon, eRasterRule rule = eRR_Center);
template <class T>
RowIntersections rasterize(const std::vector<boost::shared_ptr<PolygonWithHoles2d<T>>>& polygons,
                           eRasterRule rule = eRR_Center);
/// @}

/// The same for the pixels in a box only, the columns [xMin, xMax) and the rows [yMin, yMax), wherever the rings
/// extend.
/// \throw ORMIXGeometryException, logged, if a coordinate is not finite, a polygon of a collection is null, a bound of the
/// box is not a whole number from 0 on, xMax is above 2³² - 1 or yMax above 2⁵², or there are more than
/// `RowIntersections::s_maxNbRows` rows
/// @{
template <class T>
RowIntersections rasterize(const Polygon2d<T>& polygon, const BoundingBox2d<T>& box, eRasterRule rule = eRR_Center);
template <class T>
RowIntersections rasterize(const PolygonWithHoles2d<T>& polygon, const BoundingBox2d<T>& box,
                           eRasterRule rule = eRR_Center);
template <class T>
RowIntersections rasterize(const std::vector<boost::shared_ptr<PolygonWithHoles2d<T>>>& polygons,
                           const BoundingBox2d<T>& box, eRasterRule rule = eRR_Center);
/// @}

}  // namespace ormix::geom

namespace ormix {

/// Texts of eRasterRule.
template <>
struct EnumerationNames<geom::eRasterRule> {
  static constexpr std::string_view typeName = "eRasterRule";  ///< name of the enumeration
  /// Names of the enumerators, in order of their values.
  static constexpr std::array<std::string_view, 3> names{"eRR_Center", "eRR_Touched", "eRR_Covered"};
};

}  // namespace ormix
