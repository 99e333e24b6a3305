#include <ORMIXMath/Distance/SpatialSegment.h>
#include <ORMIXMath/Hull/ConvexHull3d.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <type_traits>

#include "HullCandidates.h"
#include "HullConstruction.h"
#include "HullFaces.h"

namespace ormix {

namespace {

// Coordinates are scaled to 2^s_largestExponent when their largest magnitude is outside these powers of two, since
// squares of areas must neither overflow nor underflow.
constexpr int s_largestExponent = 200;
constexpr int s_smallestExponent = -200;

std::string describe(std::size_t nbPoints) { return std::to_string(nbPoints) + (nbPoints == 1 ? " point" : " points"); }

BoolResult notFinite(std::size_t point) {
  return failure("Convex hull of points in space: point " + std::to_string(point) +
                 " has a coordinate that is not a finite number");
}

BoolResult notSpatial(std::size_t nbPoints, int dimension) {
  std::string text = "Convex hull of points in space: four points that do not lie in one plane are needed, " +
                     describe(nbPoints) + " given";
  if (nbPoints >= 4)
    text += dimension == 0 ? ", all equal" : dimension == 1 ? ", all on one line" : ", all in one plane";
  return failure(text);
}

/// Whether the three coordinates of a point are finite.
template <class T>
bool isFinite(const T* p) {
  if constexpr (std::is_floating_point_v<T>) return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
  return true;
}

/// The bounding box of at least one point, ignoring NaN; written so that the loop vectorises.
template <class T>
detail::SpatialBox boxOf(const T* xyz, std::size_t nbPoints) {
  T low[3] = {xyz[0], xyz[1], xyz[2]};
  T high[3] = {xyz[0], xyz[1], xyz[2]};
  for (std::size_t i = 1; i < nbPoints; ++i)
    for (std::size_t k = 0; k < 3; ++k) {
      const T value = xyz[3 * i + k];
      low[k] = value < low[k] ? value : low[k];
      high[k] = value > high[k] ? value : high[k];
    }
  return {toSpatialPoint(low[0], low[1], low[2]), toSpatialPoint(high[0], high[1], high[2])};
}

/// The power of two by which coordinates are scaled; 1 unless the largest magnitude is outside the range above.
omReal64 scaleFor(const detail::SpatialBox& box) {
  const omReal64 largest = std::max({std::abs(box.low.x), std::abs(box.low.y), std::abs(box.low.z),
                                     std::abs(box.high.x), std::abs(box.high.y), std::abs(box.high.z)});
  const int exponent = largest > 0 ? std::ilogb(largest) : 0;
  if (exponent >= s_smallestExponent && exponent <= s_largestExponent) return 1;
  return std::ldexp(1.0, std::min(s_largestExponent - exponent, 1023));
}

/// The points of the given indices, scaled.
template <class T>
std::vector<SpatialPoint> scaledPoints(const T* xyz, const std::vector<omUInt32>& indices, omReal64 scale) {
  std::vector<SpatialPoint> points;
  points.reserve(indices.size());
  for (const omUInt32 index : indices) {
    const T* p = xyz + 3 * static_cast<std::size_t>(index);
    points.push_back({static_cast<omReal64>(p[0]) * scale, static_cast<omReal64>(p[1]) * scale,
                      static_cast<omReal64>(p[2]) * scale});
  }
  return points;
}

}  // namespace

template <class T>
BoolResult convexHull3d(const T* xyz, std::size_t nbPoints, std::vector<IndexTriangle>& triangles) {
  if (nbPoints > detail::s_mostPoints)
    return failure("Convex hull of points in space: at most " + describe(detail::s_mostPoints) + " can be used, " +
                   std::to_string(nbPoints) + " given");
  for (std::size_t i = 0; i < nbPoints; ++i)
    if (!isFinite(xyz + 3 * i)) return notFinite(i);
  if (nbPoints < 4) return notSpatial(nbPoints, 0);
  const detail::SpatialBox box = boxOf(xyz, nbPoints);
  const std::vector<omUInt32> indices = detail::hullCandidates(xyz, nbPoints, box);
  const std::vector<SpatialPoint> points = scaledPoints(xyz, indices, scaleFor(box));
  detail::HullConstruction construction(points);
  const int dimension = construction.run();
  if (dimension < 3) return notSpatial(nbPoints, dimension);
  triangles = detail::trianglesOfFaces(construction.facets(), points);
  for (IndexTriangle& triangle : triangles)
    for (omUInt32& vertex : triangle) vertex = indices[vertex];
  return {};
}

// clang-format off
template BoolResult convexHull3d(const omInt32*, std::size_t, std::vector<IndexTriangle>&);
template BoolResult convexHull3d(const omUInt32*, std::size_t, std::vector<IndexTriangle>&);
template BoolResult convexHull3d(const omReal32*, std::size_t, std::vector<IndexTriangle>&);
template BoolResult convexHull3d(const omReal64*, std::size_t, std::vector<IndexTriangle>&);
// clang-format on

}  // namespace ormix
