#pragma once

#include <ORMIXUtil/ScalarTypes.h>

/// \file
/// Distance of points to an ellipse, as residuals need it; not installed.

namespace ormix::geom::detail {

/// Distance to the curve (not the disk) with the radii a, along the direction theta, and b about the centre (cx, cy).
/// Signs of radii are ignored; a radius 0 leaves a segment, two a point. Right to about an epsilon of the largest of
/// distance and radii wherever the point is: on the axes, at the centre, on the curve and far away. NaN and infinite
/// points have NaN and infinite distances.
class EllipseDistance {
 public:
  EllipseDistance(omReal64 cx, omReal64 cy, omReal64 a, omReal64 b, omReal64 theta);

  omReal64 operator()(omReal64 x, omReal64 y) const;

 private:
  omReal64 inFirstQuadrant(omReal64 x, omReal64 y) const;
  omReal64 onMajorAxis(omReal64 x) const;

  omReal64 _cx;
  omReal64 _cy;
  omReal64 _cosTheta;
  omReal64 _sinTheta;
  omReal64 _major;
  omReal64 _minor;
  omReal64 _ratio;   ///< Squared ratio of the radii, at least 1; 0 for a segment or point.
  omReal64 _excess;  ///< The ratio less 1, without cancellation.
};

}  // namespace ormix::geom::detail
