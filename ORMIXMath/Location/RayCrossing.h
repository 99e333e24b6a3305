#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Export.h>

/// \file
/// Points inside closed surfaces of triangles by the parity of crossings, exactly; not installed.

namespace ormix::detail {

/// How a ray meets a triangle.
enum eRayCrossing {
  eRC_Misses,   ///< It does not.
  eRC_Crosses,  ///< It passes through it.
  eRC_Touches   ///< Its beginning is on the triangle, or in the plane of the triangle and in its box.
};

/// How the ray from p in the direction of ascending x meets the triangle a, b, c. Decided by exact signs: where the ray
/// runs through an edge or a vertex, it counts as if it began a little further along y and, by far less, along z
/// (simulation of simplicity, Edelsbrunner1990), so that it passes through one of the triangles that meet there, or
/// through none, and the number of crossings with a surface without boundary is odd exactly for points inside. A
/// triangle parallel to x is never crossed. Coordinates that are not finite: eRC_Misses.
ORMIX_MATH_API eRayCrossing rayCrossing(const SpatialPoint& p, const SpatialPoint& a, const SpatialPoint& b,
                                        const SpatialPoint& c);

}  // namespace ormix::detail
