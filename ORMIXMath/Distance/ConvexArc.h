#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Export.h>

/// \file
/// Smooth convex curves for distances; not installed.

namespace ormix::detail {

/// An ellipse, or an arc of a parabola: a curve with one point for each direction of its outward normal.
///
/// In its frame, whose origin is the centre or the vertex, the ellipse is (x / a)^2 + (y / b)^2 = 1 with a, b > 0, and
/// the parabola y = x^2 / (4 a) for from <= x <= to, its focal length being a > 0.
struct ConvexArc {
  bool isParabola;
  PlanarPoint origin;
  PlanarPoint axis;  ///< unit vector of x; that of y is a quarter turn to the left
  omReal64 a;
  omReal64 b;
  omReal64 from = 0;  ///< of a parabola
  omReal64 to = 0;    ///< of a parabola

  bool isCircle() const { return !isParabola && a == b; }
};

/// An interval of numbers.
struct Interval {
  omReal64 low;
  omReal64 high;
};

/// A point of the plane in the frame of an arc, and back.
/// @{
ORMIX_MATH_API PlanarPoint toFrame(const ConvexArc& arc, const PlanarPoint& point);
ORMIX_MATH_API PlanarPoint fromFrame(const ConvexArc& arc, const PlanarPoint& local);
/// @}

/// A vector, which has no origin, in the frame.
PlanarPoint vectorToFrame(const ConvexArc& arc, const PlanarPoint& v);

/// The parabola's point above an abscissa of its frame, in the frame.
ORMIX_MATH_API PlanarPoint parabolaPoint(const ConvexArc& arc, omReal64 abscissa);

/// The arc's point with this outward normal, a unit vector; of a normal that none of its points has, an end.
ORMIX_MATH_API PlanarPoint pointWithNormal(const ConvexArc& arc, const PlanarPoint& normal);

/// The angles of the outward normals, less than a half turn of a parabola, and a full one of an ellipse.
Interval normalAngles(const ConvexArc& arc);

/// Bounds of the radius of curvature where the angle of the normal is in an interval of at most an eighth of a turn, of
/// which the unit vectors at both ends are given. Attained up to rounding.
Interval curvatureRadii(const ConvexArc& arc, const PlanarPoint& low, const PlanarPoint& high);

/// The point of the arc nearest to a point, not of the area that an ellipse bounds. All stationary points of the
/// distance to a parabola are the roots of a cubic, which are isolated by those of its derivative.
ORMIX_MATH_API PlanarPoint nearestOnArc(const ConvexArc& arc, const PlanarPoint& point);

/// Whether a point is in the area of an ellipse or on it; false for a parabola.
ORMIX_MATH_API bool isInEllipse(const ConvexArc& arc, const PlanarPoint& point);

/// A number that is at most the distance of a point from the arc, for passing over those that are too far.
ORMIX_MATH_API omReal64 leastDistance(const ConvexArc& arc, const PlanarPoint& point);

}  // namespace ormix::detail
