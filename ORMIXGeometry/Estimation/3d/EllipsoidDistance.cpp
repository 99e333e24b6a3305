#include <ORMIXGeometry/Estimation/3d/EllipsoidDistance.h>

#include <algorithm>
#include <cmath>

namespace ormix::geom::detail {
namespace {

std::array<omReal64, 3> lengths(const EllipsoidParameters& ellipsoid) {
  return {std::abs(ellipsoid.a), std::abs(ellipsoid.b), std::abs(ellipsoid.c)};
}

/// The indices of the radii from the largest to the smallest.
std::array<std::size_t, 3> descending(const std::array<omReal64, 3>& radii) {
  std::array<std::size_t, 3> order{0, 1, 2};
  std::sort(order.begin(), order.end(), [&](std::size_t i, std::size_t j) { return radii[i] > radii[j]; });
  return order;
}

}  // namespace

EllipsoidDistance::EllipsoidDistance(const EllipsoidParameters& ellipsoid)
    : EllipsoidDistance(ellipsoid, descending(lengths(ellipsoid))) {}

EllipsoidDistance::EllipsoidDistance(const EllipsoidParameters& ellipsoid, const std::array<std::size_t, 3>& order)
    : _center{ellipsoid.cx, ellipsoid.cy, ellipsoid.cz},
      _alongAxes({lengths(ellipsoid)[order[0]], lengths(ellipsoid)[order[1]], lengths(ellipsoid)[order[2]]}) {
  const RotationMatrix columns = eulerToMatrix(ellipsoid.alpha, ellipsoid.beta, ellipsoid.chi);
  for (std::size_t axis = 0; axis < 3; ++axis)
    for (std::size_t k = 0; k < 3; ++k) _axes[axis][k] = columns[k][order[axis]];
}

omReal64 EllipsoidDistance::operator()(omReal64 x, omReal64 y, omReal64 z) const {
  const omReal64 dx = x - _center[0];
  const omReal64 dy = y - _center[1];
  const omReal64 dz = z - _center[2];
  const auto along = [&](const std::array<omReal64, 3>& axis) { return axis[0] * dx + axis[1] * dy + axis[2] * dz; };
  return _alongAxes({along(_axes[0]), along(_axes[1]), along(_axes[2])});
}

}  // namespace ormix::geom::detail
