#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

/// \file
/// Shapes of measured parts as plain numbers, and the distances of points to them. Lengths are in the unit of the
/// points, angles in radians. Directions and normals have length 1; those without a natural sense have their component
/// of largest magnitude, the first of equals, positive.
///
/// Distances are those to the nearest point of the shape, right to a few units in the last place of the distance to
/// its reference point. Those of surfaces have a sign: positive outside, on the side that does not hold the axis (of a
/// torus, the circle in the middle of the tube). Constant time.

namespace ormix {

/// A line of space that does not end.
struct SpatialLine {
  SpatialPoint point;      ///< where it passes; of a fitted line the mean of the samples
  SpatialPoint direction;  ///< of length 1
};

/// A circle of space, a curve.
struct SpatialCircle {
  SpatialPoint center;  ///< its centre
  SpatialPoint normal;  ///< of its plane, of length 1
  omReal64 radius;      ///< positive
};

/// An arc of a circle of the plane.
struct PlanarArc {
  PlanarPoint center;   ///< of the circle
  omReal64 radius;      ///< positive
  omReal64 startAngle;  ///< of its first point, from the x axis to the y axis, in (−π, π]
  omReal64 sweep;       ///< from there counter-clockwise, in (0, 2π]
};

/// The surface of a sphere.
struct SpatialSphere {
  SpatialPoint center;  ///< its centre
  omReal64 radius;      ///< positive
};

/// The surface of a round cylinder that does not end.
struct SpatialCylinder {
  SpatialPoint point;      ///< of the axis; of a fitted cylinder the nearest one to the middle of the samples
  SpatialPoint direction;  ///< of the axis, of length 1
  omReal64 radius;         ///< positive
};

/// One nappe of a round cone, from its apex on without end.
struct SpatialCone {
  SpatialPoint apex;       ///< where it begins
  SpatialPoint direction;  ///< of the axis, from the apex into the cone, of length 1
  omReal64 halfAngle;      ///< between axis and surface, in (0, π/2)
};

/// A ring torus: all points at a distance from a circle.
struct SpatialTorus {
  SpatialPoint center;   ///< of the circle in the middle of the tube
  SpatialPoint axis;     ///< normal of that circle, of length 1
  omReal64 majorRadius;  ///< of that circle; greater than minorRadius
  omReal64 minorRadius;  ///< of the tube; positive
};

/// \name Distances of a point
/// @{

/// To a line; not negative.
ORMIX_MATH_API omReal64 distanceTo(const SpatialLine& line, const SpatialPoint& point);
/// To a circle, the curve; not negative.
ORMIX_MATH_API omReal64 distanceTo(const SpatialCircle& circle, const SpatialPoint& point);
/// To an arc, its ends included; not negative.
ORMIX_MATH_API omReal64 distanceTo(const PlanarArc& arc, const PlanarPoint& point);
/// To a sphere, positive outside.
ORMIX_MATH_API omReal64 distanceTo(const SpatialSphere& sphere, const SpatialPoint& point);
/// To a cylinder, positive outside.
ORMIX_MATH_API omReal64 distanceTo(const SpatialCylinder& cylinder, const SpatialPoint& point);
/// To a cone, positive outside; behind the apex the distance to that.
ORMIX_MATH_API omReal64 distanceTo(const SpatialCone& cone, const SpatialPoint& point);
/// To a torus, positive outside the tube.
ORMIX_MATH_API omReal64 distanceTo(const SpatialTorus& torus, const SpatialPoint& point);
/// @}

}  // namespace ormix
