#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Fitting/ShapesFromPoints.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Scalar/DifferenceOfProducts.h>
#include <ORMIXUtil/NumericLimits.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace ormix {
namespace {

using namespace detail;

// Sines up to this times (largest coordinate / length of the sides) count as zero: rounding of the points' coordinates
// changes each side by up to an epsilon of the largest coordinate, and a product contains four such errors.
constexpr omReal64 s_degenerate = 8 * NumericLimits<omReal64>::s_eps;

omReal64 norm(const SpatialPoint& p) { return std::hypot(p.x, p.y, p.z); }

/// The cross product with every component right to its last digits, also for nearly parallel vectors.
SpatialPoint accurateCross(const SpatialPoint& p, const SpatialPoint& q) {
  return {differenceOfProducts(p.y, q.z, p.z, q.y), differenceOfProducts(p.z, q.x, p.x, q.z),
          differenceOfProducts(p.x, q.y, p.y, q.x)};
}

/// The largest magnitude; NaN when a value is.
omReal64 largestOf(std::initializer_list<omReal64> values) {
  omReal64 largest = 0;
  // Not std::max, which would ignore a NaN.
  for (const omReal64 value : values)
    if (std::isnan(value) || std::abs(value) > largest) largest = std::abs(value);
  return largest;
}

omReal64 largestOf(const SpatialPoint& p) { return largestOf({p.x, p.y, p.z}); }

/// The power of two that scales a length to [1/2, 1), clamped to normal numbers; 0 for a length that is 0 or not
/// finite.
omReal64 scaleFor(omReal64 length) {
  if (!(length > 0) || !std::isfinite(length)) return 0;
  int exponent = 0;
  std::frexp(length, &exponent);
  return std::ldexp(1.0, std::clamp(-exponent, -1022, 1022));
}

/// Makes +0 of -0: std::atan2 would return -pi for it where pi is meant.
omReal64 withoutNegativeZero(omReal64 value) { return value + 0.0; }

}  // namespace

bool circleFromPoints(omReal64 x0, omReal64 y0, omReal64 x1, omReal64 y1, omReal64 x2, omReal64 y2, omReal64& cx,
                      omReal64& cy, omReal64& radius) {
  const omReal64 length = largestOf({x1 - x0, y1 - y0, x2 - x0, y2 - y0});
  const omReal64 scale = scaleFor(length);
  if (scale == 0) return false;
  const omReal64 ux = (x1 - x0) * scale;
  const omReal64 uy = (y1 - y0) * scale;
  const omReal64 vx = (x2 - x0) * scale;
  const omReal64 vy = (y2 - y0) * scale;
  const omReal64 twiceArea = differenceOfProducts(ux, vy, uy, vx);
  const omReal64 largest = std::max(length, largestOf({x0, y0})) * scale;
  if (!(std::abs(twiceArea) > s_degenerate * largest)) return false;
  const omReal64 uu = ux * ux + uy * uy;
  const omReal64 vv = vx * vx + vy * vy;
  const omReal64 dx = differenceOfProducts(vy, uu, uy, vv) / (2 * twiceArea);
  const omReal64 dy = differenceOfProducts(ux, vv, vx, uu) / (2 * twiceArea);
  const omReal64 x = x0 + dx / scale;
  const omReal64 y = y0 + dy / scale;
  const omReal64 r = std::hypot(dx, dy) / scale;
  if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(r) || !(r > 0)) return false;
  cx = x;
  cy = y;
  radius = r;
  return true;
}

bool lineFromPoints(omReal64 x0, omReal64 y0, omReal64 x1, omReal64 y1, omReal64& theta, omReal64& rho) {
  const omReal64 scale = scaleFor(largestOf({x1 - x0, y1 - y0}));
  if (scale == 0 || !std::isfinite(x0) || !std::isfinite(y0)) return false;
  const omReal64 dx = (x1 - x0) * scale;
  const omReal64 dy = (y1 - y0) * scale;
  const omReal64 length = std::hypot(dx, dy);
  omReal64 nx = dy / length;
  omReal64 ny = -dx / length;
  omReal64 distance = differenceOfProducts(x0, nx, -y0, ny);
  if (distance < 0 || (distance == 0 && (ny < 0 || (ny == 0 && nx < 0)))) {
    nx = -nx;
    ny = -ny;
    distance = -distance;
  }
  if (!std::isfinite(distance)) return false;
  theta = std::atan2(withoutNegativeZero(ny), nx);
  rho = withoutNegativeZero(distance);
  return true;
}

bool planFromPoints(omReal64 x0, omReal64 y0, omReal64 z0, omReal64 x1, omReal64 y1, omReal64 z1, omReal64 x2,
                    omReal64 y2, omReal64 z2, omReal64& rho, omReal64& theta, omReal64& phi) {
  const SpatialPoint p{x0, y0, z0};
  const SpatialPoint first = SpatialPoint{x1, y1, z1} - p;
  const SpatialPoint second = SpatialPoint{x2, y2, z2} - p;
  const omReal64 length = std::max(largestOf(first), largestOf({largestOf(second), largestOf(first)}));
  const omReal64 scale = scaleFor(length);
  if (scale == 0 || !std::isfinite(largestOf(p))) return false;
  const SpatialPoint product = accurateCross(first * scale, second * scale);
  const omReal64 sine = norm(product);
  if (!(sine > s_degenerate * std::max(length, largestOf(p)) * scale)) return false;
  return planFromNormal(x0, y0, z0, product.x, product.y, product.z, rho, theta, phi);
}

bool planFromNormal(omReal64 px, omReal64 py, omReal64 pz, omReal64 nx, omReal64 ny, omReal64 nz, omReal64& rho,
                    omReal64& theta, omReal64& phi) {
  const SpatialPoint p{px, py, pz};
  SpatialPoint normal{nx, ny, nz};
  const omReal64 scale = scaleFor(largestOf(normal));
  if (scale == 0 || !std::isfinite(largestOf(p))) return false;
  normal = normal * scale;
  const omReal64 side = dot(normal, p);
  normal = normal * (1 / norm(normal));
  const omReal64 decisive = normal.z != 0 ? normal.z : normal.y != 0 ? normal.y : normal.x;
  if (side < 0 || (side == 0 && decisive < 0)) normal = normal * -1.0;
  omReal64 polar = std::atan2(std::hypot(normal.x, normal.y), normal.z);
  omReal64 azimuth = std::atan2(withoutNegativeZero(normal.y), withoutNegativeZero(normal.x));
  const bool pointsDown = polar == s_pi;
  if (pointsDown) polar = azimuth = 0;
  const SpatialPoint rebuilt{std::sin(polar) * std::cos(azimuth), std::sin(polar) * std::sin(azimuth), std::cos(polar)};
  // The distance is taken with the normal as rebuilt from the rounded angles; a tiny negative one, of a plane almost
  // through the origin, is rounding.
  const omReal64 distance = side == 0 ? 0 : pointsDown ? dot(rebuilt, p) : std::max(dot(rebuilt, p), 0.0);
  if (!std::isfinite(distance)) return false;
  rho = distance;
  theta = polar;
  phi = azimuth;
  return true;
}

bool sphereFromPoints(omReal64 x0, omReal64 y0, omReal64 z0, omReal64 x1, omReal64 y1, omReal64 z1, omReal64 x2,
                      omReal64 y2, omReal64 z2, omReal64 x3, omReal64 y3, omReal64 z3, omReal64& cx, omReal64& cy,
                      omReal64& cz, omReal64& radius) {
  const SpatialPoint p{x0, y0, z0};
  SpatialPoint u = SpatialPoint{x1, y1, z1} - p;
  SpatialPoint v = SpatialPoint{x2, y2, z2} - p;
  SpatialPoint w = SpatialPoint{x3, y3, z3} - p;
  const omReal64 length = largestOf({largestOf(u), largestOf(v), largestOf(w)});
  const omReal64 scale = scaleFor(length);
  if (scale == 0 || !std::isfinite(largestOf(p))) return false;
  u = u * scale;
  v = v * scale;
  w = w * scale;
  const SpatialPoint vw = accurateCross(v, w);
  const omReal64 volume = dot(u, vw);
  if (!(std::abs(volume) > 2 * s_degenerate * std::max(length, largestOf(p)) * scale)) return false;
  const SpatialPoint weighted = vw * dot(u, u) + accurateCross(w, u) * dot(v, v) + accurateCross(u, v) * dot(w, w);
  const SpatialPoint offset = weighted * (1 / (2 * volume));
  const SpatialPoint center = p + offset * (1 / scale);
  const omReal64 r = norm(offset) / scale;
  if (!std::isfinite(largestOf(center)) || !std::isfinite(r) || !(r > 0)) return false;
  cx = center.x;
  cy = center.y;
  cz = center.z;
  radius = r;
  return true;
}

}  // namespace ormix
