#include <ORMIXGeometry/Estimation/2d/EllipseDistance.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace ormix::geom::detail {

EllipseDistance::EllipseDistance(omReal64 cx, omReal64 cy, omReal64 a, omReal64 b, omReal64 theta)
    : _cx(cx),
      _cy(cy),
      _cosTheta(std::cos(theta)),
      _sinTheta(std::sin(theta)),
      _alongAxes({std::max(std::abs(a), std::abs(b)), std::min(std::abs(a), std::abs(b))}) {
  if (std::abs(a) < std::abs(b)) {
    // The direction across theta; signs do not matter, as the ellipse is symmetric.
    std::swap(_cosTheta, _sinTheta);
    _cosTheta = -_cosTheta;
  }
}

omReal64 EllipseDistance::operator()(omReal64 x, omReal64 y) const {
  const omReal64 dx = x - _cx;
  const omReal64 dy = y - _cy;
  return _alongAxes({dx * _cosTheta + dy * _sinTheta, dy * _cosTheta - dx * _sinTheta});
}

}  // namespace ormix::geom::detail
