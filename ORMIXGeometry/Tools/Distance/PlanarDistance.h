#pragma once

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>
#include <ORMIXGeometry/Tools/Distance/InteriorPolicy.h>
#include <ORMIXGeometry/Tools/Distance/NearestPoints.h>
#include <ORMIXGeometry/Tools/Distance/ParabolaArc2d.h>

/// \file
/// Distances of planar entities.

namespace ormix::geom {

/// Nearest points of planar entities.
using PlanarNearestPoints = NearestPoints<Point2dData<omReal64>>;

/// The distance of two planar entities of any coordinate types and a point of each at which it is taken; where several
/// pairs are nearest, one of them. Exchanging the entities exchanges the points and changes no bit of the answer.
///
/// Boxes, circles, ellipses, squares, rectangles, polygons, polygons with holes and shapes are regions, to all of whose
/// points the distance is, or only to those of their boundaries (eIP_Boundary). Regions are as locate() describes them:
/// inside an odd number of rings, so that holes are outside and islands inside; of a shape the polygons, else the
/// pixels. The sign of a radius or a size does not matter, and what has a size of 0 is the segment or the point that
/// it has shrunk to. A parabola has no area; the whole one may be one of the two entities. An arc has none, either, and
/// no distance from an ellipse or a parabola.
///
/// Exactly 0, and both points the same, where the entities have a point in common. This is decided without rounding for
/// all that has straight edges and corners as they are stored (squares and rectangles have computed ones), and for
/// curves up to rounding: 1e-12 of the size for ellipses of 1 : 1000, less for rounder ones. Other distances are right
/// to a few units in the last place of the largest coordinate, of two curves to 1e-13 of their size. Coordinates may
/// have any magnitude; a distance that exceeds the largest finite number is infinite.
///
/// Edges are in two trees of boxes, which are descended together: mostly the time that it takes to read the entities,
/// more where boundaries are close along their whole length, and that of all pairs at worst, as of points around the
/// centre of a circle of edges. An edge at a smooth curve takes constant time, two curves some 10 microseconds. All
/// local minima are looked at: nearestOfArcs() says how.
/// \throw ORMIXGeometryException, logged first, for lines and vectors, for two whole parabolas, a degenerated parabola,
/// for what has no points, where a coordinate or size is not finite, and for a pair of classes that has no distance
/// @{
ORMIX_GEOMETRY_API PlanarNearestPoints nearestPoints(const BaseGeometryEntity2d& a, const BaseGeometryEntity2d& b,
                                                     eInteriorPolicy policy = eIP_Filled);
ORMIX_GEOMETRY_API PlanarNearestPoints nearestPoints(const ParabolaArc2d& a, const BaseGeometryEntity2d& b,
                                                     eInteriorPolicy policy = eIP_Filled);
ORMIX_GEOMETRY_API PlanarNearestPoints nearestPoints(const BaseGeometryEntity2d& a, const ParabolaArc2d& b,
                                                     eInteriorPolicy policy = eIP_Filled);
ORMIX_GEOMETRY_API PlanarNearestPoints nearestPoints(const ParabolaArc2d& a, const ParabolaArc2d& b);
/// @}

/// The distance alone.
/// @{
inline omReal64 distance(const BaseGeometryEntity2d& a, const BaseGeometryEntity2d& b,
                         eInteriorPolicy policy = eIP_Filled) {
  return nearestPoints(a, b, policy).distance;
}
inline omReal64 distance(const ParabolaArc2d& a, const BaseGeometryEntity2d& b, eInteriorPolicy policy = eIP_Filled) {
  return nearestPoints(a, b, policy).distance;
}
inline omReal64 distance(const BaseGeometryEntity2d& a, const ParabolaArc2d& b, eInteriorPolicy policy = eIP_Filled) {
  return nearestPoints(a, b, policy).distance;
}
inline omReal64 distance(const ParabolaArc2d& a, const ParabolaArc2d& b) { return nearestPoints(a, b).distance; }
/// @}

}  // namespace ormix::geom
