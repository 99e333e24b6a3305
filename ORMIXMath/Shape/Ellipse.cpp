#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/Ellipse.h>
#include <ORMIXUtil/NumericLimits.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace ormix {

namespace {

// Relative margin by which the bounds are widened: two evaluations of the formula differ by at most thirteen roundings.
constexpr omReal64 s_boundMargin = 8 * NumericLimits<omReal64>::s_eps;

// Perimeter less Ramanujan's approximation for a flat ellipse (h = 1), divided by π (a + b).
constexpr omReal64 s_flatDefect = 4.0 / s_pi - 14.0 / 11.0;

/// h = ((a − b) / (a + b))², without overflow, for radii that are not negative and not both zero.
omReal64 perimeterParameter(omReal64 a, omReal64 b) {
  const omReal64 larger = std::max(a, b);
  const omReal64 ratio = std::min(a, b) / larger;
  const omReal64 difference = std::abs(a - b) / larger;
  return (difference / (1 + ratio)) * (difference / (1 + ratio));
}

/// Ramanujan's second approximation of the perimeter (Ramanujan1914), divided by π (a + b).
omReal64 ramanujanFactor(omReal64 h) { return 1 + 3 * h / (10 + std::sqrt(4 - 3 * h)); }

}  // namespace

omReal64 ellipseArea(omReal64 a, omReal64 b) { return s_pi * a * b; }

omReal64 ellipsePerimeterLowerBound(omReal64 a, omReal64 b) {
  const omReal64 sum = std::abs(a) + std::abs(b);
  if (sum == 0) return 0;
  const omReal64 h = perimeterParameter(std::abs(a), std::abs(b));
  return sum * (s_pi * ramanujanFactor(h) * (1 - s_boundMargin));
}

omReal64 ellipsePerimeterUpperBound(omReal64 a, omReal64 b) {
  const omReal64 sum = std::abs(a) + std::abs(b);
  if (sum == 0) return 0;
  const omReal64 h = perimeterParameter(std::abs(a), std::abs(b));
  const omReal64 correction = s_flatDefect * (h * h) * (h * h) * h;
  return sum * (s_pi * (ramanujanFactor(h) + correction) * (1 + s_boundMargin));
}

omReal64 ellipseExcentricity(omReal64 a, omReal64 b) {
  const omReal64 larger = std::max(std::abs(a), std::abs(b));
  const omReal64 smaller = std::min(std::abs(a), std::abs(b));
  if (a == 0 && b == 0) return 0;
  // (M − m)(M + m) / M², with M, m the larger and smaller radius: the difference of nearly equal radii is exact, that
  // of their squares is not.
  const omReal64 difference = std::abs(std::abs(a) - std::abs(b));
  const omReal64 square = (difference / larger) * (1 + smaller / larger);
  return std::min(std::sqrt(square), 1.0);
}

omReal64 ellipseRadius(omReal64 a, omReal64 b, omReal64 angle) {
  omReal64 larger = std::abs(a);
  omReal64 smaller = std::abs(b);
  omReal64 along = std::abs(std::cos(angle));
  omReal64 across = std::abs(std::sin(angle));
  if (larger < smaller) {
    std::swap(larger, smaller);
    std::swap(along, across);
  }
  if (a == 0 && b == 0) return 0;
  const omReal64 ratio = smaller / larger;
  // A flat ellipse, or one whose ratio underflows: the quotient below would be 0 / 0 along the axis.
  if (ratio == 0) return across <= NumericLimits<omReal64>::s_eps ? larger : smaller / across;
  const omReal64 radius = smaller / std::hypot(ratio * along, across);
  return std::isnan(radius) ? radius : std::clamp(radius, smaller, larger);
}

void ellipsePoint(omReal64 cx, omReal64 cy, omReal64 a, omReal64 b, omReal64 cosTheta, omReal64 sinTheta,
                  omReal64 angle, omReal64& x, omReal64& y) {
  const omReal64 radius = ellipseRadius(a, b, angle);
  const omReal64 along = radius * std::cos(angle);
  const omReal64 across = radius * std::sin(angle);
  x = cx + (cosTheta * along - sinTheta * across);
  y = cy + (sinTheta * along + cosTheta * across);
}

}  // namespace ormix
