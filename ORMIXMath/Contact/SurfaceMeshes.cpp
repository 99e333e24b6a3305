#include <ORMIXMath/Contact/SurfaceMeshes.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace ormix::detail {

namespace {

// Coordinates have been rounded once, and twice more where a program has moved them.
constexpr omReal64 s_roundings = 4 * std::numeric_limits<omReal64>::epsilon();

omReal64 squareOf(const SpatialPoint& vector) { return dot(vector, vector); }

omReal64 largestOf(const SpatialPoint& p) { return std::max({std::abs(p.x), std::abs(p.y), std::abs(p.z)}); }

/// A triangle; its normal is not finite where it has no area.
SurfaceTriangle makeTriangle(const Corners& corners) {
  SurfaceTriangle triangle{corners, {}, {}, {}, 0};
  omReal64 longest = 0;
  for (std::size_t k = 0; k < 3; ++k) {
    triangle.along[k] = corners[(k + 1) % 3] - corners[k];
    const omReal64 square = squareOf(triangle.along[k]);
    triangle.inverses[k] = square > 0 ? 1 / square : 0;
    longest = std::max(longest, largestOf(triangle.along[k]));
  }
  // In multiples of the longest edge, so that squares of areas do not vanish.
  const SpatialPoint twice = cross(triangle.along[0] / longest, triangle.along[1] / longest);
  const omReal64 length = std::sqrt(squareOf(twice));
  triangle.normal = twice / length;
  triangle.area = 0.5 * length * longest * longest;
  return triangle;
}

}  // namespace

omReal64 SurfaceTriangle::squareTo(const SpatialPoint& point) const {
  bool isInside = true;
  omReal64 nearest = std::numeric_limits<omReal64>::infinity();
  for (std::size_t k = 0; k < 3; ++k) {
    const SpatialPoint toPoint = point - corners[k];
    if (dot(cross(along[k], toPoint), normal) >= 0) continue;
    isInside = false;
    const omReal64 part = std::clamp(dot(toPoint, along[k]) * inverses[k], 0.0, 1.0);
    nearest = std::min(nearest, squareOf(toPoint - along[k] * part));
  }
  if (!isInside) return nearest;
  const omReal64 above = height(point);
  return above * above;
}

bool SurfaceMeshes::prepare() {
  omReal64 largest = 0;
  for (const Corners& corners : _corners)
    for (const SpatialPoint& corner : corners) {
      // Differences from themselves are NaN where coordinates are not finite.
      if (!(corner.x - corner.x == 0 && corner.y - corner.y == 0 && corner.z - corner.z == 0)) return false;
      largest = std::max(largest, largestOf(corner));
    }
  // Volumes are cubes of coordinates, and of 2^100 and 2^-100 these are far from the limits.
  if (largest > 0x1p100 || (largest > 0 && largest < 0x1p-100)) _scale = std::ldexp(1.0, -std::ilogb(largest));
  // The power of two that the least numbers need is itself infinite.
  _scale = std::min(_scale, 0x1p1000);
  _largest = largest * _scale;
  if (_scale != 1)
    for (Corners& corners : _corners)
      for (SpatialPoint& corner : corners) corner = corner * _scale;
  for (std::size_t m = 0; m < _meshes.size(); ++m) {
    const Mesh& mesh = _meshes[m];
    if (!mesh.isClosed || mesh.begin == endOf(m)) continue;
    const SpatialPoint origin = _corners[mesh.begin][0];
    omReal64 volume = 0;
    for (std::size_t i = mesh.begin; i < endOf(m); ++i)
      volume += dot(_corners[i][0] - origin, cross(_corners[i][1] - origin, _corners[i][2] - origin));
    if (mesh.isCavity ? volume <= 0 : volume >= 0) continue;
    for (std::size_t i = mesh.begin; i < endOf(m); ++i) std::swap(_corners[i][1], _corners[i][2]);
  }
  return true;
}

omReal64 SurfaceMeshes::scaledGap(omReal64 gap) const {
  return std::min(gap * _scale, 4 * _largest) + s_roundings * _largest;
}

std::vector<SurfaceTriangle> SurfaceMeshes::triangles(omUInt32 body) const {
  std::vector<SurfaceTriangle> result;
  for (std::size_t m = 0; m < _meshes.size(); ++m) {
    if (_meshes[m].body != body) continue;
    result.reserve(result.size() + endOf(m) - _meshes[m].begin);
    for (std::size_t i = _meshes[m].begin; i < endOf(m); ++i) {
      const SurfaceTriangle triangle = makeTriangle(_corners[i]);
      if (triangle.area > 0) result.push_back(triangle);
    }
  }
  return result;
}

}  // namespace ormix::detail
