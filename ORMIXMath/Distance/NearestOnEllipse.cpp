#include <ORMIXMath/Distance/NearestOnEllipse.h>

#include <algorithm>
#include <cmath>

namespace ormix {

namespace {

/// For a >= b: the foot of the perpendicular solves (a x / (t + a^2))^2 + (b y / (t + b^2))^2 = 1 for t > -b^2
/// (Eberly2013). With r = t / b^2 + 1, which keeps its digits near 0, the left side falls from the lower bound to the
/// upper one, and is halved down to neighbouring numbers.
PlanarPoint nearestOnWideEllipse(const PlanarPoint& p, omReal64 a, omReal64 b) {
  const omReal64 ratio = (a / b) * (a / b);
  // Also where the smaller radius is too small to matter.
  if (!(ratio < 0x1p1000)) return {std::clamp(p.x, -a, a), 0};
  const omReal64 x = std::abs(p.x) / a;
  const omReal64 y = std::abs(p.y) / b;
  if (a == b && x == 0 && y == 0) return {a, 0};
  const omReal64 ratioLess1 = (a - b) / b * ((a + b) / b);
  const auto excess = [&](omReal64 r) {
    const omReal64 u = ratio * x / (r + ratioLess1);
    const omReal64 v = y / r;
    return u * u + v * v - 1;
  };
  PlanarPoint foot{0, 0};
  if (y == 0 && ratio * x < ratioLess1) {
    // On the larger axis between the centres of curvature: two feet, of which the upper is taken.
    foot.x = a * (ratio * x / ratioLess1);
    const omReal64 share = foot.x / a;
    foot.y = b * std::sqrt(std::max(0.0, 1 - share * share));
  } else {
    omReal64 low = y;
    omReal64 high = std::hypot(ratio * x, y);
    for (int step = 0; step < 1100; ++step) {
      const omReal64 middle = 0.5 * (low + high);
      if (middle <= low || middle >= high) break;
      (excess(middle) > 0 ? low : high) = middle;
    }
    foot = {a * (ratio * x / (high + ratioLess1)), b * (y / high)};
  }
  return {std::copysign(std::min(foot.x, a), p.x), std::copysign(std::min(foot.y, b), p.y)};
}

}  // namespace

PlanarPoint nearestOnEllipse(const PlanarPoint& point, omReal64 a, omReal64 b) {
  if (a >= b) return nearestOnWideEllipse(point, a, b);
  const PlanarPoint exchanged = nearestOnWideEllipse({point.y, point.x}, b, a);
  return {exchanged.y, exchanged.x};
}

}  // namespace ormix
