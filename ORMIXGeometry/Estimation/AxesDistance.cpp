#include <ORMIXGeometry/Estimation/AxesDistance.h>
#include <ORMIXMath/Scalar/EuclideanNorm.h>

#include <algorithm>
#include <cmath>

namespace ormix::geom::detail {
namespace {

// A radius below this fraction of the largest one counts as 0: the error is far below rounding.
constexpr omReal64 s_flat = 1e-20;
// At more than this many radii the distance is taken to the centre: the error is far below rounding.
constexpr omReal64 s_far = 1e100;
// A point counts as in the plane across the shortest axis when it is at most this fraction of that radius away.
constexpr omReal64 s_onPlane = 1e-200;
// The iteration ends with a step that is at most this fraction of the value.
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
  Values off;
  for (std::size_t i = 0; i < N; ++i) x[i] = std::abs(point[i]);
  if (_nbAxes == N) return toSurface(x, off);
  // With zero radii the set is a solid disk, a segment or a point: over its inside only the distance across it counts.
  Values beside{};
  std::copy(x.begin() + _nbAxes, x.end(), beside.begin() + _nbAxes);
  const omReal64 across = lengthOf(beside);
  omReal64 depth = 0;
  for (std::size_t i = 0; i < _nbAxes; ++i) depth += (x[i] / _radii[i]) * (x[i] / _radii[i]);
  return depth <= 1 ? across : euclideanNorm(toSurface(x, off), across);
}

template <std::size_t N>
omReal64 AxesDistance<N>::nearest(const Values& point, Values& foot) const {
  Values x;
  Values off;
  for (std::size_t i = 0; i < N; ++i) x[i] = std::abs(point[i]);
  const omReal64 distance = toSurface(x, off);
  for (std::size_t i = 0; i < N; ++i) foot[i] = std::copysign(x[i] + off[i], point[i]);
  return distance;
}

// The nearest point is (r² x / (r² + t)) in each coordinate, with the largest t for which it lies on the surface
// (Eberly 2013, Distance from a Point to an Ellipse, an Ellipsoid, or a Hyperellipsoid). With w = 1 + t / smallest² all
// terms of the norm decrease in w, the inverse of the norm is concave, and Newton's iteration on it increases from a
// start below the root towards it without passing it (Conn, Gould and Toint 2000, Trust-Region Methods, 7.3). It
// converges from the start below, and in a handful of steps in nearly all cases, since the function is nearly linear.
template <std::size_t N>
omReal64 AxesDistance<N>::toSurface(const Values& x, Values& off) const {
  off = {};
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
    // std::hypot is infinite also for infinity and NaN: rotating an infinite point gives both.
    for (std::size_t i = 0; i <= last; ++i) length = std::hypot(length, x[i]);
    return length;
  }
  std::size_t nbTerms = _nbAxes;
  omReal64 rise = 0;  // distance of the nearest point from the plane, for a point in it
  if (scaled[last] < s_onPlane && last > 0) {
    nbTerms = last;
    omReal64 square = 0;
    for (std::size_t i = 0; i < last; ++i)
      if (scaled[i] > 0) square += (scaled[i] / _excess[i]) * (scaled[i] / _excess[i]);
    // For points inside the evolute the two nearest points are not in the plane.
    if (square < 1) {
      w = 0;
      rise = _radii[last] * std::sqrt(1 - square);
    }
  }
  Values u{};
  bool isSettled = rise > 0;
  // More than 8 steps are rare; the bound guarantees an end.
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
    // The next error is about the square of this step. NaN ends the iteration too, as does a step that rounding makes
    // negative.
    isSettled = !(change > s_lastStep * w);
    if (change > 0) w += change;
  }
  for (std::size_t i = 0; i < nbTerms; ++i) off[i] = _radii[i] * u[i] - x[i];
  if (nbTerms < _nbAxes) off[last] = rise;
  return lengthOf(off);
}

template class AxesDistance<2>;
template class AxesDistance<3>;

}  // namespace ormix::geom::detail
