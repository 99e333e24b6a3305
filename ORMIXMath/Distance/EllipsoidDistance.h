#pragma once

#include <ORMIXMath/Distance/NearestPair.h>
#include <ORMIXMath/Distance/SpatialTriangle.h>
#include <ORMIXMath/Export.h>

#include <array>

/// \file
/// Distances of ellipsoids in space. Sizes and coordinates between 2^-200 and 2^200 in size; callers scale others.
/// Constant time, no allocation, but for surfaces of one ellipsoid in another.

namespace ormix {

/// The ellipsoid { center + Σ s_k radii[k] axes[k] : Σ s_k² <= 1 }. A sphere has equal radii.
struct SpatialEllipsoid {
  SpatialPoint center;               ///< Its centre.
  std::array<SpatialPoint, 3> axes;  ///< Unit vectors, perpendicular to each other.
  std::array<omReal64, 3> radii;     ///< Positive, in any order; see toSpatialEllipsoid().
};

/// An ellipsoid from the angles of Rz(alpha)·Ry(beta)·Rx(chi). Signs of radii are ignored. A radius below 1e-12 of the
/// largest counts as that, so that flat ellipsoids have a normal everywhere; all radii may be 0 only for callers that
/// treat a point as a point.
ORMIX_MATH_API SpatialEllipsoid toSpatialEllipsoid(const SpatialPoint& center, omReal64 a, omReal64 b, omReal64 c,
                                                   omReal64 alpha, omReal64 beta, omReal64 chi);

/// Σ s_k² of a point: below 1 inside, 1 on the surface.
ORMIX_MATH_API omReal64 ellipsoidLevel(const SpatialEllipsoid& ellipsoid, const SpatialPoint& point);

/// The point of the surface at which the outward normal has a direction, which need not be of length 1, but not 0.
ORMIX_MATH_API SpatialPoint supportPoint(const SpatialEllipsoid& ellipsoid, const SpatialPoint& direction);

/// A point of the surface that is nearest to a point inside or outside, or farthest from it, to 1e-15 of the
/// largest size. Newton's steps to the one root that belongs to it, from the side where they do not pass it
/// (Eberly2013); the sum is over distances from the pole, so that nothing cancels for points near a plane of symmetry.
/// @{
ORMIX_MATH_API SpatialPoint nearestOnEllipsoid(const SpatialEllipsoid& ellipsoid, const SpatialPoint& point);
ORMIX_MATH_API SpatialPoint farthestOnEllipsoid(const SpatialEllipsoid& ellipsoid, const SpatialPoint& point);
/// @}

/// From a triangle, a segment (two equal corners) or a point (three) to an ellipsoid, with its inside or to its surface
/// only. Exactly 0 where they meet, else to 1e-13 of the sizes: a triangle inside is nearest to the surface at a
/// corner, as the distance to the surface is concave there; outside, where the distance is convex, it is nearest where
/// the ellipsoid is nearest to its plane or, if that is beside it, on an edge.
ORMIX_MATH_API SpatialNearestPair triangleEllipsoidNearestPair(const SpatialTriangle& triangle,
                                                               const SpatialEllipsoid& ellipsoid, bool isFilled);

/// Of two ellipsoids, with their insides or of their surfaces only.
///
/// Whether they meet, and whether one is inside the other, is decided where one is the unit sphere, by the nearest and
/// the farthest point of the other from its centre. Apart, the distance is the largest separation of the planes of
/// support with a common normal, a concave function where it is positive, and Newton's steps find it to 1e-13 of the
/// sizes. A surface inside another is at the least separation of planes of support, which may have many local minima:
/// branch and bound over the normals, with the least and largest radii of curvature for a bound of second order, makes
/// it certain to 2e-10 of the outer size.
ORMIX_MATH_API SpatialNearestPair ellipsoidsNearestPair(const SpatialEllipsoid& a, const SpatialEllipsoid& b,
                                                        bool isFilled);

}  // namespace ormix
