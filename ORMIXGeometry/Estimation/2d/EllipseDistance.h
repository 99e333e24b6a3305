#pragma once

#include <ORMIXGeometry/Estimation/AxesDistance.h>

/// \file
/// Distance of points to an ellipse, as residuals need it; not installed.

namespace ormix::geom::detail {

/// Distance to the curve (not the disk) with the radii a, along the direction theta, and b about the centre (cx, cy).
/// Signs of radii are ignored; a radius 0 leaves a segment, two a point. Accuracy as of AxesDistance.
class EllipseDistance {
 public:
  EllipseDistance(omReal64 cx, omReal64 cy, omReal64 a, omReal64 b, omReal64 theta);

  omReal64 operator()(omReal64 x, omReal64 y) const;

 private:
  omReal64 _cx;
  omReal64 _cy;
  omReal64 _cosTheta;  ///< Of the direction of the larger radius.
  omReal64 _sinTheta;
  AxesDistance<2> _alongAxes;
};

}  // namespace ormix::geom::detail
