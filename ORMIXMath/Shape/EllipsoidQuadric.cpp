#include <ORMIXMath/Algebra/EigenDecomposition.h>
#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXMath/Scalar/Twofold.h>
#include <ORMIXMath/Shape/EllipsoidQuadric.h>
#include <ORMIXUtil/NumericLimits.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace ormix {
namespace {

using detail::difference;
using detail::Twofold;

// A smallest eigenvalue up to this times the largest one may be due to rounding: the surface cannot be told from a
// paraboloid or a cylinder. This limits the ratio of the radii to 2.4e7.
constexpr omReal64 s_cylinderTolerance = 8 * NumericLimits<omReal64>::s_eps;

// convertEllipsoidFromQuadratic() could not tell larger ratios of radii from a cylinder.
constexpr omReal64 s_largestRatio = 1e7;

using Vector = std::array<omReal64, 3>;
using TwofoldVector = std::array<Twofold, 3>;

/// The matrix of second derivatives: twice the symmetric matrix of the quadratic part, so that no coefficient is
/// halved.
using Hessian = std::array<Vector, 3>;

Hessian hessianOf(const EllipsoidQuadric& q) {
  return {{{2 * q.xx, q.xy, q.xz}, {q.xy, 2 * q.yy, q.yz}, {q.xz, q.yz, 2 * q.zz}}};
}

Twofold dot(const Vector& a, const TwofoldVector& b) {
  return sum(sum(times(a[0], b[0]), times(a[1], b[1])), times(a[2], b[2]));
}

TwofoldVector product(const Hessian& m, const TwofoldVector& v) { return {dot(m[0], v), dot(m[1], v), dot(m[2], v)}; }

/// Value and gradient of the quadratic form at a point.
struct ValueAndGradient {
  Twofold value;
  TwofoldVector gradient;
};

/// Evaluates the form at an offset from its origin.
ValueAndGradient evaluate(const EllipsoidQuadric& q, const TwofoldVector& offset) {
  const Vector linear{q.x, q.y, q.z};
  ValueAndGradient result{{0, 0}, product(hessianOf(q), offset)};
  // The value is (gradient + linear) · offset / 2 + constant.
  for (std::size_t k = 0; k < 3; ++k) {
    result.gradient[k] = sum(result.gradient[k], {linear[k], 0});
    result.value = sum(result.value, product(sum(result.gradient[k], {linear[k], 0}), offset[k]));
  }
  result.value = sum(times(0.5, result.value), {q.constant, 0});
  return result;
}

std::array<omReal64*, 10> coefficientsOf(EllipsoidQuadric& q) {
  return {&q.xx, &q.yy, &q.zz, &q.xy, &q.xz, &q.yz, &q.x, &q.y, &q.z, &q.constant};
}

/// Scales a quadric to xx + yy + zz >= 0 and the largest magnitude of a quadratic coefficient in [1/2, 1). False when
/// these are all zero or a value is not finite.
bool normalise(EllipsoidQuadric& q) {
  const std::array<omReal64*, 10> all = coefficientsOf(q);
  const bool isFinite = std::all_of(all.begin(), all.end(), [](const omReal64* v) { return std::isfinite(*v); }) &&
                        std::isfinite(q.originX) && std::isfinite(q.originY) && std::isfinite(q.originZ);
  omReal64 largest = 0;
  for (std::size_t k = 0; k < 6; ++k) largest = std::max(largest, std::abs(*all[k]));
  if (!isFinite || !(largest > 0)) return false;
  int exponent = 0;
  std::frexp(largest, &exponent);
  for (omReal64* value : all) *value = std::ldexp(*value, -exponent);
  if (q.xx + q.yy + q.zz < 0)
    for (omReal64* value : all) *value = -*value;
  return true;
}

/// Eigenvalues of the quadratic part, ascending, and the eigenvectors, which are the columns of a rotation.
struct Axes {
  Vector values;
  std::array<Vector, 3> directions;
};

Vector crossProduct(const Vector& a, const Vector& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

/// The Rayleigh quotient, computed with twice the precision. Its error is the square of that of the direction, so small
/// eigenvalues become accurate relative to themselves; those of the decomposition are so relative to the largest one.
omReal64 rayleighQuotient(const Hessian& hessian, const Vector& direction) {
  const TwofoldVector v{{{direction[0], 0}, {direction[1], 0}, {direction[2], 0}}};
  return dot(direction, product(hessian, v)).high / (2 * dot(direction, v).high);
}

/// Computes the axes; false when an eigenvalue is not positive, to rounding.
bool axesOf(const EllipsoidQuadric& q, Axes& axes) {
  omReal64 values[3];
  omReal64 vectors[9];
  if (!eigenDecomposition(q.xx, q.xy / 2, q.xz / 2, q.yy, q.yz / 2, q.zz, values, vectors)) return false;
  const Hessian hessian = hessianOf(q);
  for (std::size_t k = 0; k < 3; ++k) {
    axes.directions[k] = {vectors[3 * k], vectors[3 * k + 1], vectors[3 * k + 2]};
    axes.values[k] = rayleighQuotient(hessian, axes.directions[k]);
  }
  const bool isSphere = q.xx == q.yy && q.yy == q.zz && q.xy == 0 && q.xz == 0 && q.yz == 0;
  if (isSphere) axes.directions = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
  axes.directions[2] = crossProduct(axes.directions[0], axes.directions[1]);
  return axes.values[0] > s_cylinderTolerance * axes.values[2];
}

/// Computes the offset of zero gradient by a Newton step, which is exact except for rounding, and two more that remove
/// the rounding errors. False when it is not finite.
bool findCenter(const EllipsoidQuadric& q, const Axes& axes, TwofoldVector& center) {
  center = {};
  for (int step = 0; step < 3; ++step) {
    const ValueAndGradient at = evaluate(q, center);
    for (std::size_t k = 0; k < 3; ++k) {
      const Vector& axis = axes.directions[k];
      const omReal64 along = -dot(axis, at.gradient).high / (2 * axes.values[k]);
      for (std::size_t l = 0; l < 3; ++l) center[l] = sum(center[l], detail::product({along, 0}, {axis[l], 0}));
    }
    if (!std::all_of(center.begin(), center.end(), [](const Twofold& v) { return std::isfinite(v.high); }))
      return false;
  }
  return true;
}

/// The Euler angles of the rotation whose columns are the axes.
EulerAngles anglesOf(const Axes& axes) {
  RotationMatrix matrix;
  for (std::size_t row = 0; row < 3; ++row)
    for (std::size_t column = 0; column < 3; ++column) matrix[row][column] = axes.directions[column][row];
  return matrixToEuler(matrix);
}

}  // namespace

bool convertEllipsoidToQuadratic(const EllipsoidParameters& ellipsoid, EllipsoidQuadric& quadric) {
  const auto& [cx, cy, cz, a, b, c, alpha, beta, chi] = ellipsoid;
  const omReal64 smallest = std::min({a, b, c});
  const omReal64 square = smallest * smallest;
  if (!(a > 0) || !(b > 0) || !(c > 0) || !(std::max({a, b, c}) <= s_largestRatio * smallest)) return false;
  if (!std::isnormal(square) || !std::isfinite(cx) || !std::isfinite(cy) || !std::isfinite(cz)) return false;
  if (!std::isfinite(alpha) || !std::isfinite(beta) || !std::isfinite(chi)) return false;
  const RotationMatrix rotation = eulerToMatrix(alpha, beta, chi);
  const Vector values{(smallest / a) * (smallest / a), (smallest / b) * (smallest / b),
                      (smallest / c) * (smallest / c)};
  const auto element = [&](std::size_t row, std::size_t column) {
    Twofold total{0, 0};
    for (std::size_t k = 0; k < 3; ++k)
      total = sum(total, times(values[k], detail::product({rotation[row][k], 0}, {rotation[column][k], 0})));
    return total.high;
  };
  quadric = {element(0, 0),
             element(1, 1),
             element(2, 2),
             2 * element(0, 1),
             2 * element(0, 2),
             2 * element(1, 2),
             0,
             0,
             0,
             -square,
             cx,
             cy,
             cz};
  return true;
}

EllipsoidQuadric quadricAbout(const EllipsoidQuadric& quadric, omReal64 originX, omReal64 originY, omReal64 originZ) {
  const ValueAndGradient at =
      evaluate(quadric, {difference(originX, quadric.originX), difference(originY, quadric.originY),
                         difference(originZ, quadric.originZ)});
  EllipsoidQuadric moved = quadric;
  moved.x = at.gradient[0].high;
  moved.y = at.gradient[1].high;
  moved.z = at.gradient[2].high;
  moved.constant = at.value.high;
  moved.originX = originX;
  moved.originY = originY;
  moved.originZ = originZ;
  return moved;
}

bool convertEllipsoidFromQuadratic(const EllipsoidQuadric& quadric, EllipsoidParameters& ellipsoid) {
  EllipsoidQuadric q = quadric;
  Axes axes{};
  TwofoldVector center{};
  if (!normalise(q) || !axesOf(q, axes) || !findCenter(q, axes, center)) return false;
  const omReal64 depth = -evaluate(q, center).value.high;
  if (!(depth > 0)) return false;
  // Rounding may change the order of the radii of nearly equal eigenvalues.
  Vector radii{std::sqrt(depth / axes.values[0]), std::sqrt(depth / axes.values[1]), std::sqrt(depth / axes.values[2])};
  radii[1] = std::clamp(radii[1], std::min(radii[0], radii[2]), std::max(radii[0], radii[2]));
  const Vector position{q.originX + center[0].high, q.originY + center[1].high, q.originZ + center[2].high};
  const auto isFinite = [](omReal64 value) { return std::isfinite(value); };
  if (!(radii[2] > 0) || !std::isfinite(radii[0])) return false;
  if (!std::all_of(position.begin(), position.end(), isFinite)) return false;
  const EulerAngles angles = anglesOf(axes);
  ellipsoid = {
      position[0],  position[1], position[2], std::max(radii[0], radii[2]), radii[1], std::min(radii[0], radii[2]),
      angles.alpha, angles.beta, angles.chi};
  return true;
}

bool convertEllipsoidToQuadratic(omReal64 cx, omReal64 cy, omReal64 cz, omReal64 a, omReal64 b, omReal64 c,
                                 omReal64 alpha, omReal64 beta, omReal64 chi, std::array<omReal64, 10>& coefficients) {
  EllipsoidQuadric about;
  if (!convertEllipsoidToQuadratic({cx, cy, cz, a, b, c, alpha, beta, chi}, about)) return false;
  const EllipsoidQuadric q = quadricAbout(about, 0, 0, 0);
  const std::array<omReal64, 10> found{q.xx, q.yy, q.zz, q.xy, q.xz, q.yz, q.x, q.y, q.z, q.constant};
  const auto isFinite = [](omReal64 value) { return std::isfinite(value); };
  if (!std::all_of(found.begin(), found.end(), isFinite)) return false;
  coefficients = found;
  return true;
}

bool convertEllipsoidFromQuadratic(const std::array<omReal64, 10>& coefficients, omReal64& cx, omReal64& cy,
                                   omReal64& cz, omReal64& a, omReal64& b, omReal64& c, omReal64& alpha, omReal64& beta,
                                   omReal64& chi) {
  const auto& [xx, yy, zz, xy, xz, yz, x, y, z, constant] = coefficients;
  EllipsoidParameters e;
  if (!convertEllipsoidFromQuadratic({xx, yy, zz, xy, xz, yz, x, y, z, constant, 0, 0, 0}, e)) return false;
  cx = e.cx;
  cy = e.cy;
  cz = e.cz;
  a = e.a;
  b = e.b;
  c = e.c;
  alpha = e.alpha;
  beta = e.beta;
  chi = e.chi;
  return true;
}

}  // namespace ormix
