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

/// The form's value and its gradient at (u, v).
struct Jet {
  Twofold value;
  Twofold du;
  Twofold dv;
};

Jet evaluate(const EllipseConic& q, const Twofold& u, const Twofold& v) {
  // With g = 2 a u + b v + d and h = b u + 2 c v + e the value is ((g + d) u + (h + e) v) / 2 + f.
  const Twofold du = sum(sum(times(2 * q.a, u), times(q.b, v)), {q.d, 0});
  const Twofold dv = sum(sum(times(q.b, u), times(2 * q.c, v)), {q.e, 0});
  const Twofold twice = sum(product(sum(du, {q.d, 0}), u), product(sum(dv, {q.e, 0}), v));
  return {sum(times(0.5, twice), {q.f, 0}), du, dv};
}

bool isFinite(const EllipseConic& q) {
  const std::array<omReal64, 8> all{q.a, q.b, q.c, q.d, q.e, q.f, q.originX, q.originY};
  return std::all_of(all.begin(), all.end(), [](omReal64 value) { return std::isfinite(value); });
}

/// The same conic with a + c positive and the largest of a, b, c in [1/2, 1]; false when these are all zero.
bool normalise(EllipseConic& q) {
  const omReal64 largest = std::max({std::abs(q.a), std::abs(q.b), std::abs(q.c)});
  if (!(largest > 0)) return false;
  int exponent = 0;
  std::frexp(largest, &exponent);
  const omReal64 sign = q.a + q.c < 0 ? -1.0 : 1.0;
  for (omReal64* value : {&q.a, &q.b, &q.c, &q.d, &q.e, &q.f}) *value = sign * std::ldexp(*value, -exponent);
  return true;
}

// Below this part of the square of the larger eigenvalue the determinant of the quadratic part is rounding: the curve
// may as well be a parabola. It bounds the ratio of the radii at 2.4e7.
constexpr omReal64 s_parabolaSlack = 8 * NumericLimits<omReal64>::s_eps;

/// The quadratic part: eigenvalues and the direction, in (-pi/2, pi/2], of the eigenvector of the larger one.
struct QuadraticPart {
  omReal64 determinant;
  omReal64 smaller;
  omReal64 larger;
  omReal64 direction;
};

QuadraticPart quadraticPart(const EllipseConic& q) {
  // For a large ratio of the radii the two products nearly cancel.
  const omReal64 half = q.b / 2;
  const omReal64 determinant = detail::differenceOfProducts(q.a, q.c, half, half);
  const omReal64 larger = (q.a + q.c) / 2 + std::hypot((q.a - q.c) / 2, half);
  return {determinant, determinant / larger, larger, std::atan2(q.b, q.a - q.c) / 2};
}

/// Moves (u, v) to where the gradient vanishes: Newton's step, exact but for rounding, then twice more for that.
bool findCentre(const EllipseConic& q, omReal64 determinant, Twofold& u, Twofold& v) {
  u = v = {0, 0};
  for (int step = 0; step < 3; ++step) {
    const Jet jet = evaluate(q, u, v);
    const omReal64 g = jet.du.high;
    const omReal64 h = jet.dv.high;
    u = sum(u, {(q.b * h - 2 * q.c * g) / (4 * determinant), 0});
    v = sum(v, {(q.b * g - 2 * q.a * h) / (4 * determinant), 0});
    if (!std::isfinite(u.high) || !std::isfinite(v.high)) return false;
  }
  return true;
}

/// The direction across the given one of (-pi/2, pi/2], brought to [0, pi).
omReal64 across(omReal64 direction) {
  const omReal64 turned = direction + s_pi / 2;
  return turned >= s_pi ? 0 : std::max(turned, 0.0);
}

}  // namespace

bool conicFromEllipse(omReal64 cx, omReal64 cy, omReal64 a, omReal64 b, omReal64 theta, EllipseConic& conic) {
  const omReal64 smaller = std::min(a, b);
  // No larger ratio than this is told from a parabola again.
  constexpr omReal64 largestRatio = 1e7;
  if (!(a > 0) || !(b > 0) || !std::isfinite(theta) || !(std::max(a, b) <= largestRatio * smaller)) return false;
  const omReal64 square = smaller * smaller;
  if (!std::isnormal(square) || !std::isfinite(cx) || !std::isfinite(cy)) return false;
  const omReal64 along = (smaller / a) * (smaller / a);
  const omReal64 acrossIt = (smaller / b) * (smaller / b);
  const omReal64 co = std::cos(theta);
  const omReal64 si = std::sin(theta);
  conic = {along * co * co + acrossIt * si * si,
           2 * (along - acrossIt) * co * si,
           along * si * si + acrossIt * co * co,
           0,
           0,
           -square,
           cx,
           cy};
  return true;
}

EllipseConic conicAbout(const EllipseConic& conic, omReal64 originX, omReal64 originY) {
  const Jet jet = evaluate(conic, difference(originX, conic.originX), difference(originY, conic.originY));
  return {conic.a, conic.b, conic.c, jet.du.high, jet.dv.high, jet.value.high, originX, originY};
}

bool ellipseFromConic(const EllipseConic& conic, omReal64& cx, omReal64& cy, omReal64& a, omReal64& b,
                      omReal64& theta) {
  EllipseConic q = conic;
  if (!isFinite(q) || !normalise(q)) return false;
  const QuadraticPart part = quadraticPart(q);
  if (!(part.determinant > s_parabolaSlack * part.larger * part.larger)) return false;
  Twofold u{};
  Twofold v{};
  if (!findCentre(q, part.determinant, u, v)) return false;
  const omReal64 depth = -evaluate(q, u, v).value.high;
  const omReal64 major = std::sqrt(depth / part.smaller);
  const omReal64 minor = std::sqrt(depth / part.larger);
  const omReal64 x = q.originX + u.high;
  const omReal64 y = q.originY + v.high;
  if (!(depth > 0) || !(minor > 0) || !std::isfinite(major) || !std::isfinite(x) || !std::isfinite(y)) return false;
  const bool isCircle = q.a == q.c && q.b == 0;
  cx = x;
  cy = y;
  a = std::max(major, minor);
  b = minor;
  theta = isCircle ? 0 : across(part.direction);
  return true;
}

}  // namespace ormix
