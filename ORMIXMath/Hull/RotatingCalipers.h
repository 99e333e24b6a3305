#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Export.h>

#include <cstddef>

/// \file
/// Extents of convex rings, given as `nbVertices` interleaved pairs x0, y0, x1, … as convexHull2d() answers them:
/// counter-clockwise, no vertex repeated, no three on a line; one vertex or two are fine. Linear in the vertices
/// (Toussaint1983). Coordinates are finite; results are right to a few units in the last place of the ring's extent,
/// wherever it lies, of any size as long as the extent is finite. Angles are in radians from the x axis to the y axis,
/// in (−π/2, π/2], as directions have no sign. There must be at least one vertex.

namespace ormix {

/// The distance of two parallel lines that touch a ring from both sides, and where.
struct FeretDiameter {
  omReal64 length = 0;  ///< in the unit of the coordinates
  omReal64 angle = 0;   ///< of the direction in which it is measured, across the lines
  PlanarPoint from{};   ///< a point of the first line
  PlanarPoint to{};     ///< a point of the second one, straight across where the diameter is the greatest or the least
};

/// A rectangle in any direction.
struct OrientedRectangle {
  PlanarPoint center{};     ///< in the unit of the coordinates
  omReal64 halfLength = 0;  ///< half the longer side
  omReal64 halfWidth = 0;   ///< half the shorter side
  omReal64 angle = 0;       ///< of the longer side; 0 where there is only one point
};

/// What a smallest rectangle has the least of.
enum class eRectangleSize { Area, Perimeter };

/// The greatest Feret diameter, which is the greatest distance of two vertices, `from` and `to`.
ORMIX_MATH_API FeretDiameter greatestFeretDiameter(const omReal64* xy, std::size_t nbVertices);

/// The least Feret diameter, or width: between the line of an edge and the vertex farthest from it, which is `to`;
/// `from` is the point of that line straight across. 0 across a segment.
ORMIX_MATH_API FeretDiameter leastFeretDiameter(const omReal64* xy, std::size_t nbVertices);

/// The Feret diameter in a direction; `from` and `to` are the vertices where the lines touch.
/// \param angle of the direction, any finite number; the result's is the same direction
ORMIX_MATH_API FeretDiameter feretDiameterAt(const omReal64* xy, std::size_t nbVertices, omReal64 angle);

/// The smallest rectangle around a ring; one of its sides runs along an edge. Of several equal ones the one with the
/// edge that comes first.
ORMIX_MATH_API OrientedRectangle smallestRectangle(const omReal64* xy, std::size_t nbVertices, eRectangleSize size);

}  // namespace ormix
