#pragma once

#include <ORMIXGeometry/Entity/2d/Circle/Circle2d.h>
#include <ORMIXGeometry/Entity/2d/Rectangle/Rectangle2d.h>
#include <ORMIXMath/Hull/RotatingCalipers.h>

/// \file
/// Sizes of planar entities in any direction: smallest rectangles, widths and diameters, and the largest circle inside.
///
/// All take any entity that has a convex hull (ConvexHullTransform2d), of which they are the extents; of squares and
/// rectangles the corners are not rounded. Every function throws ORMIXGeometryException, logged first with the message
/// of that transform, where an entity has none. Angles are in radians from the x axis towards the y axis, in
/// (−π/2, π/2]. O(n log n) for n points.

namespace ormix::geom {

/// The smallest rectangle around an entity, in any direction, by area or perimeter; `getHalfLength()` is that of the
/// longer side, whose direction is the orientation. Of an ellipse it lies along the axes. It contains every stored
/// point up to rounding, a few units in the last place of its size and place.
ORMIX_GEOMETRY_API Rectangle2d<omReal64> smallestRectangle(const BaseGeometryEntity2d& entity,
                                                           eRectangleSize size = eRectangleSize::Area);

/// The greatest distance of two parallel lines that touch the entity from both sides, which is the greatest distance of
/// two of its points.
ORMIX_GEOMETRY_API FeretDiameter greatestFeretDiameter(const BaseGeometryEntity2d& entity);

/// The least distance of such lines: the width of the entity.
ORMIX_GEOMETRY_API FeretDiameter leastFeretDiameter(const BaseGeometryEntity2d& entity);

/// The distance of such lines across a direction.
/// \param angle of the direction in which it is measured, any finite number
ORMIX_GEOMETRY_API FeretDiameter feretDiameterAt(const BaseGeometryEntity2d& entity, omReal64 angle);

/// A largest circle inside an entity that has an area: a polygon, with its holes where it has some, the boundaries of a
/// shape, a box, a square, a rectangle, a circle or an ellipse.
/// \param excess where given, gets a bound: no circle inside has a radius larger by more than it, see
/// largestInscribedCircle() of ORMIXMath; mostly 1e-9 of the radius
/// \throw ORMIXGeometryException, logged first, for the other entities, and where the area is 0
ORMIX_GEOMETRY_API Circle2d<omReal64> largestInscribedCircle(const BaseGeometryEntity2d& entity,
                                                             omReal64* excess = nullptr);

}  // namespace ormix::geom
