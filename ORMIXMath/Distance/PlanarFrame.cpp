#include <ORMIXMath/Distance/PlanarFrame.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>

namespace ormix::detail {

namespace {

// Products of two coordinates in this range, and their rounding errors, are normal numbers; the scales bring all other
// coordinates into it.
constexpr omReal64 s_smallestSafe = 0x1p-400;
constexpr omReal64 s_largestSafe = 0x1p+500;
constexpr omReal64 s_scaleUp = 0x1p+700;
constexpr omReal64 s_scaleDown = 0x1p-600;

}  // namespace

omReal64 safeScale(std::initializer_list<omReal64> coordinates) {
  omReal64 largest = 0;
  for (const omReal64 coordinate : coordinates) {
    if (!std::isfinite(coordinate)) return std::numeric_limits<omReal64>::quiet_NaN();
    largest = std::max(largest, std::abs(coordinate));
  }
  if (largest > s_largestSafe) return s_scaleDown;
  return largest < s_smallestSafe && largest > 0 ? s_scaleUp : 1.0;
}

omReal64 safeScale(const PlanarPoint& point, const PlanarSegment& segment) {
  return safeScale({point.x, point.y, segment.p0.x, segment.p0.y, segment.p1.x, segment.p1.y});
}

omReal64 safeScale(const PlanarSegment& first, const PlanarSegment& second) {
  return safeScale(
      {first.p0.x, first.p0.y, first.p1.x, first.p1.y, second.p0.x, second.p0.y, second.p1.x, second.p1.y});
}

}  // namespace ormix::detail
