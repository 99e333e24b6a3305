#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/Ellipse.h>
#include <ORMIXMath/Shape/Ellipsoid.h>
#include <ORMIXUtil/NumericLimits.h>

#include <algorithm>
#include <array>
#include <boost/math/constants/constants.hpp>
#include <boost/math/special_functions/ellint_rg.hpp>
#include <boost/numeric/ublas/matrix.hpp>
#include <cmath>
#include <functional>
#include <limits>

namespace ormix {

namespace {

using Triple = std::array<omReal64, 3>;

Triple absolute(omReal64 a, omReal64 b, omReal64 c) { return {std::abs(a), std::abs(b), std::abs(c)}; }

bool hasNaN(const Triple& values) {
  return std::any_of(values.begin(), values.end(), [](omReal64 v) { return v != v; });
}

/// A number as mantissa · 2^exponent, for products and quotients whose intermediate results would overflow or
/// underflow.
struct Scaled {
  omReal64 mantissa;
  int exponent;
};

Scaled scaled(omReal64 value) {
  if (!std::isfinite(value)) return {value, 0};
  Scaled result{};
  result.mantissa = std::frexp(value, &result.exponent);
  return result;
}

/// The unit vector of a direction along the axes of a, b and c.
Triple unitVector(omReal64 theta, omReal64 phi) {
  return {std::sin(theta) * std::cos(phi), std::sin(theta) * std::sin(phi), std::cos(theta)};
}

/// The polar radius in the direction of a unit vector.
omReal64 radiusAlong(const Triple& radii, const Triple& direction) {
  const auto nan = std::numeric_limits<omReal64>::quiet_NaN();
  if (hasNaN(radii) || hasNaN(direction)) return nan;
  std::array<Scaled, 3> quotients{};
  int largest = std::numeric_limits<int>::min();
  for (std::size_t k = 0; k < 3; ++k) {
    // A zero radius: the quotient would be 0 / 0 for directions perpendicular to its axis.
    if (radii[k] == 0 && std::abs(direction[k]) > NumericLimits<omReal64>::s_eps) return 0;
    if (radii[k] == 0 || direction[k] == 0) continue;
    const Scaled over = scaled(direction[k]);
    const Scaled under = scaled(radii[k]);
    quotients[k] = {over.mantissa / under.mantissa, over.exponent - under.exponent};
    if (quotients[k].mantissa != 0) largest = std::max(largest, quotients[k].exponent);
  }
  if (largest == std::numeric_limits<int>::min()) return *std::max_element(radii.begin(), radii.end());
  Triple terms{};
  for (std::size_t k = 0; k < 3; ++k) terms[k] = std::ldexp(quotients[k].mantissa, quotients[k].exponent - largest);
  const omReal64 radius = std::ldexp(1 / std::hypot(terms[0], terms[1], terms[2]), -largest);
  const auto [lowest, highest] = std::minmax_element(radii.begin(), radii.end());
  return std::clamp(radius, *lowest, *highest);
}

}  // namespace

omReal64 ellipsoidVolume(omReal64 a, omReal64 b, omReal64 c) {
  const Scaled x = scaled(a);
  const Scaled y = scaled(b);
  const Scaled z = scaled(c);
  return std::ldexp(4.0 / 3.0 * s_pi * x.mantissa * y.mantissa * z.mantissa, x.exponent + y.exponent + z.exponent);
}

omReal64 ellipsoidArea(omReal64 a, omReal64 b, omReal64 c) {
  Triple radii = absolute(a, b, c);
  if (hasNaN(radii)) return std::numeric_limits<omReal64>::quiet_NaN();
  std::sort(radii.begin(), radii.end(), std::greater<>());
  const auto [major, medium, minor] = radii;
  if (medium == 0) return 0;
  if (std::isinf(major)) return major;
  // R_G is homogeneous: dividing its arguments by (major · medium)² leaves 1, (minor / medium)², (minor / major)².
  using Wide = long double;
  const Wide toMedium = Wide{minor} / medium;
  const Wide toMajor = Wide{minor} / major;
  const Wide integral = boost::math::ellint_rg(Wide{1}, toMedium * toMedium, toMajor * toMajor);
  const Scaled x = scaled(major);
  const Scaled y = scaled(medium);
  const Wide mantissa = 4 * boost::math::constants::pi<Wide>() * integral * x.mantissa * y.mantissa;
  return static_cast<omReal64>(std::ldexp(mantissa, x.exponent + y.exponent));
}

omReal64 ellipsoidExcentricity(omReal64 a, omReal64 b, omReal64 c) {
  const Triple radii = absolute(a, b, c);
  if (hasNaN(radii)) return std::numeric_limits<omReal64>::quiet_NaN();
  const auto [smallest, largest] = std::minmax_element(radii.begin(), radii.end());
  return ellipseExcentricity(*largest, *smallest);
}

omReal64 ellipsoidRadius(omReal64 a, omReal64 b, omReal64 c, const Matrix3x3& /*rotation*/, omReal64 theta,
                         omReal64 phi) {
  return radiusAlong(absolute(a, b, c), unitVector(theta, phi));
}

void ellipsoidPoint(omReal64 cx, omReal64 cy, omReal64 cz, omReal64 a, omReal64 b, omReal64 c,
                    const Matrix3x3& rotation, omReal64 theta, omReal64 phi, omReal64& x, omReal64& y, omReal64& z) {
  const Triple direction = unitVector(theta, phi);
  const omReal64 radius = radiusAlong(absolute(a, b, c), direction);
  const auto offset = [&](std::size_t row) {
    return radius * direction[0] * rotation(row, 0) + radius * direction[1] * rotation(row, 1) +
           radius * direction[2] * rotation(row, 2);
  };
  x = cx + offset(0);
  y = cy + offset(1);
  z = cz + offset(2);
}

}  // namespace ormix
