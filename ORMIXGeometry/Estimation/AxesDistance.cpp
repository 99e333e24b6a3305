#include <ORMIXGeometry/Estimation/AxesDistance.h>
#include <ORMIXMath/Scalar/EuclideanNorm.h>

#include <algorithm>
#include <cmath>

namespace ormix::geom::detail {
namespace {

// A radius below this part of the largest one is 0 to far less than rounding.
constexpr omReal64 s_flat = 1e-20;
// Beyond this many radii the distance is that of the centre to far less than rounding.
constexpr omReal64 s_far = 1e100;
// So close to the plane across the shortest axis, in parts of its radius, a point is on it.
constexpr omReal64 s_onPlane = 1e-200;
// A step this short, in parts of what it changes, is the last one.
constexpr omReal64 s_lastStep = 1e-10;

/// The length of a vector, as euclideanNorm() takes it.
template <std::size_t N>
omReal64 lengthOf(const std::array<omReal64, N>& v) {
  if constexpr (N == 2)
    return euclideanNorm(v[0], v[1]);
  else
    return euclideanNorm(v[0], v[1], v[2]);
}

}  // namespace

template <std::size_t N>
AxesDistance<N>::AxesDistance(const Values& radii) : _radii(radii) {
  while (_nbAxes < N && _radii[_nbAxes] > s_flat * _radii[0]) ++_nbAxes;
  for (std::size_t i = 0; i < _nbAxes; ++i) {
    const omReal64 smallest = _radii[_nbAxes - 1];
    const omReal64 quotient = _radii[i] / smallest;
    _ratio[i] = quotient * quotient;
    _excess[i] = ((_radii[i] - smallest) / smallest) * (quotient + 1);
  }
}

template <std::size_t N>
omReal64 AxesDistance<N>::operator()(const Values& point) const {
  Values x;
  for (std::size_t i = 0; i < N; ++i) x[i] = std::abs(point[i]);
  if (_nbAxes == N) return toSurface(x);
  // What is flat is full: a disk or a segment.
  Values beside{};
  std::copy(x.begin() + _nbAxes, x.end(), beside.begin() + _nbAxes);
  const omReal64 across = lengthOf(beside);
  omReal64 depth = 0;
  for (std::size_t i = 0; i < _nbAxes; ++i) depth += (x[i] / _radii[i]) * (x[i] / _radii[i]);
  return depth <= 1 ? across : euclideanNorm(toSurface(x), across);
}

// The nearest point is (r² x / (r² + t)) in each coordinate, with the largest t for which it lies on the surface
// (Eberly 2013, Distance from a Point to an Ellipse, an Ellipsoid, or a Hyperellipsoid). With w = 1 + t / smallest² all
// terms of the norm fall in w, the inverse of the norm is concave, and Newton's iteration on it climbs from the left to
// the root without ever passing it (Conn, Gould and Toint 2000, Trust-Region Methods, 7.3): safe from the start below,
// and a handful of steps in nearly all cases, since the function is close to a straight line.
template <std::size_t N>
omReal64 AxesDistance<N>::toSurface(const Values& x) const {
  const std::size_t last = _nbAxes - 1;
  Values scaled{};
  omReal64 w = 0;
  bool isFar = false;
  for (std::size_t i = 0; i <= last; ++i) {
    const omReal64 p = x[i] / _radii[i];
    isFar = isFar || p > s_far;
    scaled[i] = _ratio[i] * p;
    w = std::max(w, scaled[i] - _excess[i]);
  }
  if (isFar) {
    omReal64 length = 0;
    // Infinite beside a NaN, too, which turning an infinite point leaves.
    for (std::size_t i = 0; i <= last; ++i) length = std::hypot(length, x[i]);
    return length;
  }
  std::size_t nbTerms = _nbAxes;
  omReal64 rise = 0;  // of the nearest point over the plane, for a point on it
  if (scaled[last] < s_onPlane && last > 0) {
    nbTerms = last;
    omReal64 square = 0;
    for (std::size_t i = 0; i < last; ++i)
      if (scaled[i] > 0) square += (scaled[i] / _excess[i]) * (scaled[i] / _excess[i]);
    // Inside the evolute two points off the plane are nearest.
    if (square < 1) {
      w = 0;
      rise = _radii[last] * std::sqrt(1 - square);
    }
  }
  Values u{};
  bool isSettled = rise > 0;
  // Few need more than 8 steps; the bound is for what nobody has seen.
  for (int step = 0; step < 64; ++step) {
    omReal64 square = 0;
    omReal64 slope = 0;
    for (std::size_t i = 0; i < nbTerms; ++i) {
      if (scaled[i] == 0) continue;
      const omReal64 wider = w + _excess[i];
      u[i] = scaled[i] / wider;
      square += u[i] * u[i];
      slope += u[i] * u[i] / wider;
    }
    if (isSettled) break;
    const omReal64 change = (std::sqrt(square) - 1) * square / slope;
    // The next error is about the square of this step. NaN settles, too, as does rounding that would lead back.
    isSettled = !(change > s_lastStep * w);
    if (change > 0) w += change;
  }
  Values off{};  // from the nearest point
  for (std::size_t i = 0; i < nbTerms; ++i) off[i] = _radii[i] * u[i] - x[i];
  if (nbTerms < _nbAxes) off[last] = rise;
  return lengthOf(off);
}

template class AxesDistance<2>;
template class AxesDistance<3>;

}  // namespace ormix::geom::detail
