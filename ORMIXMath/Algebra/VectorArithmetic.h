#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>

/// \file
/// Arithmetic of PlanarPoint and SpatialPoint as vectors, one rounding an operation and in the order written; not
/// installed.

namespace ormix::detail {

constexpr PlanarPoint operator-(const PlanarPoint& p, const PlanarPoint& q) { return {p.x - q.x, p.y - q.y}; }
constexpr PlanarPoint operator*(const PlanarPoint& p, omReal64 factor) { return {p.x * factor, p.y * factor}; }
constexpr PlanarPoint operator/(const PlanarPoint& p, omReal64 divisor) { return {p.x / divisor, p.y / divisor}; }

constexpr SpatialPoint operator+(const SpatialPoint& p, const SpatialPoint& q) {
  return {p.x + q.x, p.y + q.y, p.z + q.z};
}
constexpr SpatialPoint operator-(const SpatialPoint& p, const SpatialPoint& q) {
  return {p.x - q.x, p.y - q.y, p.z - q.z};
}
constexpr SpatialPoint operator*(const SpatialPoint& p, omReal64 factor) {
  return {p.x * factor, p.y * factor, p.z * factor};
}
constexpr SpatialPoint operator/(const SpatialPoint& p, omReal64 divisor) {
  return {p.x / divisor, p.y / divisor, p.z / divisor};
}

constexpr omReal64 dot(const SpatialPoint& p, const SpatialPoint& q) { return p.x * q.x + p.y * q.y + p.z * q.z; }

constexpr SpatialPoint cross(const SpatialPoint& p, const SpatialPoint& q) {
  return {p.y * q.z - p.z * q.y, p.z * q.x - p.x * q.z, p.x * q.y - p.y * q.x};
}

}  // namespace ormix::detail
