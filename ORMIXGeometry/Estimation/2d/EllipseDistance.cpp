#include <ORMIXGeometry/Estimation/2d/EllipseDistance.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace ormix::geom::detail {
namespace {

// Below this ratio an ellipse is a segment to far less than rounding.
constexpr omReal64 s_flat = 1e-20;
// Beyond this many radii the distance is that of the centre to far less than rounding.
constexpr omReal64 s_far = 1e100;
// So close to the major axis, in parts of the minor radius, a point is on it.
constexpr omReal64 s_onAxis = 1e-200;
// A step this short, in parts of what it changes, is the last one.
constexpr omReal64 s_lastStep = 1e-10;

omReal64 distanceToSegment(omReal64 x, omReal64 y, omReal64 halfLength) {
  return std::hypot(x > halfLength ? x - halfLength : x - std::min(x, halfLength), y);
}

}  // namespace

EllipseDistance::EllipseDistance(omReal64 cx, omReal64 cy, omReal64 a, omReal64 b, omReal64 theta)
    : _cx(cx),
      _cy(cy),
      _cosTheta(std::cos(theta)),
      _sinTheta(std::sin(theta)),
      _major(std::abs(a)),
      _minor(std::abs(b)),
      _ratio(0),
      _excess(0) {
  if (_major < _minor) {
    std::swap(_major, _minor);
    // The direction across theta; signs do not matter, as the ellipse is symmetric.
    std::swap(_cosTheta, _sinTheta);
    _cosTheta = -_cosTheta;
  }
  if (_minor > s_flat * _major) {
    const omReal64 quotient = _major / _minor;
    _ratio = quotient * quotient;
    _excess = ((_major - _minor) / _minor) * (quotient + 1);
  }
}

omReal64 EllipseDistance::operator()(omReal64 x, omReal64 y) const {
  const omReal64 dx = x - _cx;
  const omReal64 dy = y - _cy;
  return inFirstQuadrant(std::abs(dx * _cosTheta + dy * _sinTheta), std::abs(dy * _cosTheta - dx * _sinTheta));
}

// The nearest point is (a^2 x / (a^2 + t), b^2 y / (b^2 + t)) with the largest t for which it lies on the ellipse
// (Eberly 2013, Distance from a Point to an Ellipse). With w = 1 + t / b^2 both terms of the norm fall in w, the
// inverse of the norm is concave, and Newton's iteration on it climbs from the left to the root without ever passing it
// (Conn, Gould and Toint 2000, Trust-Region Methods, 7.3): safe from the start below, and a handful of steps in nearly
// all cases, since the function is close to a straight line.
omReal64 EllipseDistance::inFirstQuadrant(omReal64 x, omReal64 y) const {
  if (_ratio == 0) return distanceToSegment(x, y, _major);
  const omReal64 p = x / _major;
  const omReal64 q = y / _minor;
  if (p > s_far || q > s_far) return std::hypot(x, y);
  if (q < s_onAxis) return onMajorAxis(x);
  omReal64 w = std::max(q, _ratio * p - _excess);
  omReal64 u = 0;
  omReal64 v = 0;
  bool isSettled = false;
  // Few need more than 8 steps; the bound is for what nobody has seen.
  for (int step = 0; step < 64; ++step) {
    const omReal64 wider = w + _excess;
    u = _ratio * p / wider;
    v = q / w;
    if (isSettled) break;
    const omReal64 square = u * u + v * v;
    const omReal64 change = (std::sqrt(square) - 1) * square / (u * u / wider + v * v / w);
    // The next error is about the square of this step. NaN settles, too, as does rounding that would lead back.
    isSettled = !(change > s_lastStep * w);
    if (change > 0) w += change;
  }
  return std::hypot(_major * u - x, _minor * v - y);
}

// Inside the centre of curvature of the axis' end two points off the axis are nearest.
omReal64 EllipseDistance::onMajorAxis(omReal64 x) const {
  const omReal64 u = _ratio * (x / _major) / _excess;
  if (!(u < 1)) return std::abs(x - _major);
  return std::hypot(_major * u - x, _minor * std::sqrt((1 - u) * (1 + u)));
}

}  // namespace ormix::geom::detail
