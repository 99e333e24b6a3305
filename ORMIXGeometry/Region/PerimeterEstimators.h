#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/PixelConnectivity.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXGeometry/Region/PixelSpacing.h>

/// \file
/// Estimates of the length of the boundary of a set of pixels, the boundaries of holes included, in the unit of the
/// spacing. What a camera sees of a smooth boundary is a staircase; each estimate makes up for that in its own way, and
/// none is the best for all shapes. docs/accuracy.md has their errors on digitized disks and squares. All are linear in
/// the runs and in the corners of the boundary.

namespace ormix::geom {

/// By the steps of the path through the centers of the boundary pixels: 0.980 for one along a row or a column, 1.406
/// for a diagonal one, −0.091 for each change of direction (VossepoelSmeulders1982), and the perimeter of a pixel's
/// disk, as the path is half a pixel inside. Good on all shapes; a hole is taken as a region of its own. With pixels
/// that are not square, steps count by their lengths and the estimate is only rough.
ORMIX_GEOMETRY_API omReal64 cornerCountPerimeter(const RowIntersections& pixels, ePixelConnectivity connectivity,
                                                 const PixelSpacing& spacing = {});

/// By Cauchy's and Crofton's formula: the numbers of crossings with all lines of pixels in four directions, along rows,
/// columns and both diagonals, each weighted by the distance of its lines and the angle it stands for
/// (LehmannLegland2012). The best on disks and on what has no preferred direction; up to 5 % off on straight sides.
/// Does not depend on the connectivity.
ORMIX_GEOMETRY_API omReal64 croftonPerimeter(const RowIntersections& pixels, const PixelSpacing& spacing = {});

/// The length of the shortest closed path that passes between the centers of the boundary pixels and those of their
/// neighbours outside (SklanskyChazinHansen1972), and the perimeter of a pixel's disk, as such a path keeps to the
/// inner side of convex parts. The best on straight sides.
ORMIX_GEOMETRY_API omReal64 minimumLengthPerimeter(const RowIntersections& pixels, ePixelConnectivity connectivity,
                                                   const PixelSpacing& spacing = {});

/// Along the edges of the pixels: the perimeter of the polygons of traceContours(). Right for shapes whose sides run
/// along rows and columns, up to 4/pi times too long for others.
ORMIX_GEOMETRY_API omReal64 edgePerimeter(const RowIntersections& pixels, const PixelSpacing& spacing = {});

}  // namespace ormix::geom
