#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Export.h>

/// \file
/// Frustums of cones, among them cylinders, and tori, among them circles of space: what a region of a half-plane makes
/// when it is turned about an axis. Nearest points are found in that half-plane, in closed form, with errors of some
/// units in the last place of the largest coordinate. All functions are constant time and do not allocate. Values that
/// are not finite give answers that are not.

namespace ormix {

/// The kinds of round solids.
enum eRoundSolidKind {
  eRS_Frustum,  ///< between two discs across the axis
  eRS_Torus     ///< what is near a circle around the axis
};

/// A solid with an axis. A point with the distance rho from the axis and the height z along it, from the origin, is in
/// a
///
/// - frustum when 0 <= z <= height and rho <= radius0 + (radius1 − radius0) z / height; a disc for height 0,
/// - torus when (rho − radius0)² + z² <= radius1²: a circle for radius1 = 0. For radius1 > radius0 the tube meets
///   itself; the solid then has no hole, and its surface is the outer part of the tube's.
struct RoundSolid {
  eRoundSolidKind kind;
  SpatialPoint origin;  ///< centre of the first disc, or of the torus
  SpatialPoint axis;    ///< of length 1
  omReal64 height;      ///< distance of the discs, at least 0; of a torus 0
  omReal64 radius0;     ///< of the first disc, or of the circle in the middle of the tube; at least 0
  omReal64 radius1;     ///< of the second disc, or of the tube; at least 0
};

/// The frustum between discs around two points; signs of radii are ignored. Equal points make a disc, whose axis is
/// (0, 0, 1).
ORMIX_MATH_API RoundSolid frustumBetween(const SpatialPoint& p0, const SpatialPoint& p1, omReal64 radius0,
                                         omReal64 radius1);
/// The torus around an axis of length 1; signs of radii are ignored.
ORMIX_MATH_API RoundSolid torusAround(const SpatialPoint& center, const SpatialPoint& axis, omReal64 majorRadius,
                                      omReal64 minorRadius);

/// Area of the whole surface: of a frustum π (r0² + r1² + (r0 + r1) s) with both discs, s being the length of a side;
/// of a torus 4 π² R r, and for r > R of its outer part, 4 π r (R t + r sin t) with cos t = −R / r.
ORMIX_MATH_API omReal64 area(const RoundSolid& solid);
/// Volume: of a frustum π h (r0² + r0 r1 + r1²) / 3, of a torus 2 π² R r², and for r > R
/// 2 π (R r² (t − sin t cos t) + 2/3 r³ sin³ t).
ORMIX_MATH_API omReal64 volume(const RoundSolid& solid);
/// The centre of the volume, also the limit of those of thin solids where that is 0.
ORMIX_MATH_API SpatialPoint centroid(const RoundSolid& solid);

/// The distance of a point from the surface, negative inside.
ORMIX_MATH_API omReal64 signedDistance(const RoundSolid& solid, const SpatialPoint& point);
/// A point of the surface that is nearest to a point, or the point itself where it is inside and the solid is filled.
ORMIX_MATH_API SpatialPoint nearestOn(const RoundSolid& solid, const SpatialPoint& point, bool isFilled);
/// The point of the solid that is farthest from a point.
ORMIX_MATH_API SpatialPoint farthestOn(const RoundSolid& solid, const SpatialPoint& point);
/// A point of the surface that has a distance from a point, one between those of the nearest and the farthest.
ORMIX_MATH_API SpatialPoint pointAtDistance(const RoundSolid& solid, const SpatialPoint& point, omReal64 distance);
/// A point of the solid that is outermost in a direction of length 1.
ORMIX_MATH_API SpatialPoint supportPoint(const RoundSolid& solid, const SpatialPoint& direction);
/// A point of the surface on the plane { p : n·p = rho }, n of length 1, that meets the solid.
ORMIX_MATH_API SpatialPoint pointOnPlane(const RoundSolid& solid, const SpatialPoint& n, omReal64 rho);

/// The smallest ball that contains the solid.
ORMIX_MATH_API void enclosingBall(const RoundSolid& solid, SpatialPoint& center, omReal64& radius);

/// A unit vector across one of length 1, always the same.
ORMIX_MATH_API SpatialPoint directionAcross(const SpatialPoint& direction);

/// A vector of the same direction and length 1, to an unit in the last place; what has it to eight is answered as
/// it is. NaN for the zero vector and what is not finite. Large and small vectors neither overflow nor underflow.
ORMIX_MATH_API SpatialPoint unitVector(const SpatialPoint& vector);

}  // namespace ormix
