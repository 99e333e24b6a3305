#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Scalar/DifferenceOfProducts.h>
#include <ORMIXMath/Scalar/Twofold.h>
#include <ORMIXMath/Shape/EllipseConic.h>
#include <ORMIXUtil/NumericLimits.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace ormix {
namespace {

using detail::difference;
using detail::Twofold;

/// Gradient of the quadratic form at a point.
struct Gradient {
  Twofold du;
  Twofold dv;
};
/// Value and gradient.
struct ValueAndGradient {
  Twofold value;
  Twofold du;
  Twofold dv;
};

[[gnu::always_inline]] inline Gradient gradient(const EllipseConic& q, const Twofold& u, const Twofold& v) {
  return {sum(sum(times(2 * q.a, u), times(q.b, v)), {q.d, 0}), sum(sum(times(q.b, u), times(2 * q.c, v)), {q.e, 0})};
}

[[gnu::always_inline]] inline ValueAndGradient evaluate(const EllipseConic& q, const Twofold& u, const Twofold& v) {
  // With g = 2 a u + b v + d and h = b u + 2 c v + e the value is ((g + d) u + (h + e) v) / 2 + f.
  const auto [du, dv] = gradient(q, u, v);
  const Twofold twice = sum(product(sum(du, {q.d, 0}), u), product(sum(dv, {q.e, 0}), v));
  return {sum(times(0.5, twice), {q.f, 0}), du, dv};
}

bool isFinite(const EllipseConic& q) {
  const std::array<omReal64, 8> all{q.a, q.b, q.c, q.d, q.e, q.f, q.originX, q.originY};
  return std::all_of(all.begin(), all.end(), [](omReal64 value) { return std::isfinite(value); });
}

/// Scales a conic to a + c >= 0 and the largest magnitude of a, b, c in [1/2, 1); false when these are all zero.
bool normalise(EllipseConic& q) {
  const omReal64 largest = std::max({std::abs(q.a), std::abs(q.b), std::abs(q.c)});
  if (!(largest > 0)) return false;
  int exponent = 0;
  std::frexp(largest, &exponent);
  const omReal64 sign = q.a + q.c < 0 ? -1.0 : 1.0;
  for (omReal64* value : {&q.a, &q.b, &q.c, &q.d, &q.e, &q.f}) *value = sign * std::ldexp(*value, -exponent);
  return true;
}

// A determinant of the quadratic part up to this times the square of the larger eigenvalue may be due to rounding: the
// curve cannot be told from a parabola. This limits the ratio of the radii to 2.4e7.
constexpr omReal64 s_parabolaTolerance = 8 * NumericLimits<omReal64>::s_eps;

/// The quadratic part as a symmetric matrix.
struct QuadraticPart {
  omReal64 determinant;
  omReal64 smaller;    ///< Smaller eigenvalue.
  omReal64 larger;     ///< Larger eigenvalue.
  omReal64 direction;  ///< Direction of the eigenvector of the larger one, in (-pi/2, pi/2].
};

QuadraticPart quadraticPart(const EllipseConic& q) {
  // For a large ratio of the radii the two products nearly cancel.
  const omReal64 half = q.b / 2;
  const omReal64 determinant = detail::differenceOfProducts(q.a, q.c, half, half);
  const omReal64 larger = (q.a + q.c) / 2 + std::hypot((q.a - q.c) / 2, half);
  return {determinant, determinant / larger, larger, std::atan2(q.b, q.a - q.c) / 2};
}

/// The point of zero gradient, and the value there with the other sign.
struct Center {
  Twofold u;
  Twofold v;
  omReal64 depth;
};

/// Computes the centre by a Newton step from the origin, which is exact except for rounding, and two more that remove
/// the rounding errors. False when it is not finite.
[[gnu::always_inline]] inline bool findCenterInline(const EllipseConic& q, omReal64 determinant, Center& center) {
  Twofold u{0, 0}, v{0, 0};
  Gradient at{{q.d, 0}, {q.e, 0}};
  for (int step = 0; step < 3; ++step) {
    if (step > 0) at = gradient(q, u, v);
    const omReal64 g = at.du.high;
    const omReal64 h = at.dv.high;
    u = sum(u, {(q.b * h - 2 * q.c * g) / (4 * determinant), 0});
    v = sum(v, {(q.b * g - 2 * q.a * h) / (4 * determinant), 0});
    if (!std::isfinite(u.high) || !std::isfinite(v.high)) return false;
  }
  center = {u, v, -evaluate(q, u, v).value.high};
  return true;
}

#if defined(__x86_64__)
/// The same with the fused multiplications of the processor, where it has them: the same bits in a quarter of the time.
[[gnu::target("fma"), gnu::flatten]] bool findCenterFma(const EllipseConic& q, omReal64 determinant, Center& center) {
  return findCenterInline(q, determinant, center);
}
#endif

bool findCenter(const EllipseConic& q, omReal64 determinant, Center& center) {
#if defined(__x86_64__)
  if (__builtin_cpu_supports("fma")) return findCenterFma(q, determinant, center);
#endif
  return findCenterInline(q, determinant, center);
}

/// The direction perpendicular to one in (-pi/2, pi/2], in [0, pi).
omReal64 perpendicularTo(omReal64 direction) {
  const omReal64 sum = direction + s_pi / 2;
  return sum >= s_pi ? 0 : std::max(sum, 0.0);
}

}  // namespace

bool conicFromEllipse(omReal64 cx, omReal64 cy, omReal64 a, omReal64 b, omReal64 theta, EllipseConic& conic) {
  const omReal64 smaller = std::min(a, b);
  // ellipseFromConic() could not tell larger ratios from a parabola.
  constexpr omReal64 largestRatio = 1e7;
  if (!(a > 0) || !(b > 0) || !std::isfinite(theta) || !(std::max(a, b) <= largestRatio * smaller)) return false;
  const omReal64 square = smaller * smaller;
  if (!std::isnormal(square) || !std::isfinite(cx) || !std::isfinite(cy)) return false;
  const omReal64 along = (smaller / a) * (smaller / a);
  const omReal64 across = (smaller / b) * (smaller / b);
  const omReal64 co = std::cos(theta);
  const omReal64 si = std::sin(theta);
  conic = {along * co * co + across * si * si,
           2 * (along - across) * co * si,
           along * si * si + across * co * co,
           0,
           0,
           -square,
           cx,
           cy};
  return true;
}

EllipseConic conicAbout(const EllipseConic& conic, omReal64 originX, omReal64 originY) {
  const ValueAndGradient at = evaluate(conic, difference(originX, conic.originX), difference(originY, conic.originY));
  return {conic.a, conic.b, conic.c, at.du.high, at.dv.high, at.value.high, originX, originY};
}

bool ellipseFromConic(const EllipseConic& conic, omReal64& cx, omReal64& cy, omReal64& a, omReal64& b,
                      omReal64& theta) {
  EllipseConic q = conic;
  if (!isFinite(q) || !normalise(q)) return false;
  const QuadraticPart part = quadraticPart(q);
  if (!(part.determinant > s_parabolaTolerance * part.larger * part.larger)) return false;
  Center center;
  if (!findCenter(q, part.determinant, center)) return false;
  const omReal64 depth = center.depth;
  const omReal64 major = std::sqrt(depth / part.smaller);
  const omReal64 minor = std::sqrt(depth / part.larger);
  const omReal64 x = q.originX + center.u.high;
  const omReal64 y = q.originY + center.v.high;
  if (!(depth > 0) || !(minor > 0) || !std::isfinite(major) || !std::isfinite(x) || !std::isfinite(y)) return false;
  const bool isCircle = q.a == q.c && q.b == 0;
  cx = x;
  cy = y;
  a = std::max(major, minor);
  b = minor;
  theta = isCircle ? 0 : perpendicularTo(part.direction);
  return true;
}

}  // namespace ormix
