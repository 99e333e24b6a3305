#include <ORMIXMath/Algebra/EigenDecomposition.h>
#include <ORMIXMath/Fitting/SurfaceStartParts.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <cmath>

namespace ormix::detail {

std::vector<SpatialPoint> hemisphere() {
  // On a spiral by the golden angle.
  constexpr std::size_t nbDirections = 256;
  std::vector<SpatialPoint> directions;
  for (std::size_t i = 0; i < nbDirections; ++i) {
    const omReal64 height = (static_cast<omReal64>(i) + 0.5) / static_cast<omReal64>(nbDirections);
    const omReal64 radius = std::sqrt(1 - height * height);
    const omReal64 turn = 2.399963229728653 * static_cast<omReal64>(i);
    directions.push_back({radius * std::cos(turn), radius * std::sin(turn), height});
  }
  return directions;
}

std::array<SpatialPoint, 3> principalDirections(const std::vector<SpatialPoint>& points) {
  SpatialPoint mean{0, 0, 0};
  for (const SpatialPoint& p : points) mean = mean + p / static_cast<omReal64>(points.size());
  std::array<omReal64, 6> sums{};
  for (const SpatialPoint& point : points) {
    const SpatialPoint p = point - mean;
    sums[0] += p.x * p.x;
    sums[1] += p.x * p.y;
    sums[2] += p.x * p.z;
    sums[3] += p.y * p.y;
    sums[4] += p.y * p.z;
    sums[5] += p.z * p.z;
  }
  omReal64 values[3] = {};
  omReal64 v[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
  eigenDecomposition(sums[0], sums[1], sums[2], sums[3], sums[4], sums[5], values, v);
  return {SpatialPoint{v[0], v[1], v[2]}, SpatialPoint{v[3], v[4], v[5]}, SpatialPoint{v[6], v[7], v[8]}};
}

Patch patchOf(const std::vector<SpatialPoint>& points, const std::array<SpatialPoint, 3>& principal) {
  const SurfaceFrame frame = SurfaceFrame::of({0, 0, 0}, principal[2], principal[0]);
  const std::array<omReal64, 15> c = leastSquares(points.size(), 6, [&](std::size_t i, omReal64* row) {
    const FramePlace p = placeIn(frame, points[i]);
    row[0] = 1;
    row[1] = p.height;
    row[2] = p.y;
    row[3] = p.height * p.height / 2;
    row[4] = p.height * p.y;
    row[5] = p.y * p.y / 2;
    row[6] = p.x;
  });
  const omReal64 half = std::atan2(2 * c[4], c[3] - c[5]) / 2;
  const auto curvatureAlong = [&](omReal64 angle) {
    const omReal64 u = std::cos(angle);
    const omReal64 v = std::sin(angle);
    return c[3] * u * u + 2 * c[4] * u * v + c[5] * v * v;
  };
  const bool isFirst = std::abs(curvatureAlong(half)) <= std::abs(curvatureAlong(half + s_pi / 2));
  const omReal64 angle = isFirst ? half : half + s_pi / 2;
  const SpatialPoint along = frame.axis * std::cos(angle) + frame.across * std::sin(angle);
  const SpatialPoint axis = along + frame.normal * (c[1] * std::cos(angle) + c[2] * std::sin(angle));
  return {SurfaceFrame::of(frame.normal * c[0], axis, frame.normal), curvatureAlong(angle + s_pi / 2),
          curvatureAlong(angle)};
}

}  // namespace ormix::detail
