#include <ORMIXGeometry/Tools/Distance/SpatialBody.h>
#include <ORMIXGeometry/Tools/Distance/SpatialDistance.h>

#include <algorithm>
#include <cmath>

namespace ormix::geom {

namespace {

using detail::SpatialBody;

/// The exponent of the power of two by which a pair is multiplied so that squares of distances, and with ellipsoids
/// fourth powers of sizes, neither overflow nor underflow; 0 for all usual pairs.
int safeExponent(const SpatialBody& a, const SpatialBody& b) {
  const omReal64 largest = std::max(detail::magnitude(a), detail::magnitude(b));
  const bool areFacets = a.kind == detail::eBK_Facets && b.kind == detail::eBK_Facets;
  const int limit = areFacets ? 400 : 150;
  if (largest == 0) return 0;
  const int exponent = std::ilogb(largest);
  return std::abs(exponent) <= limit ? 0 : -exponent;
}

Point3dData<omReal64> toData(const SpatialPoint& p, int exponent) {
  return {std::ldexp(p.x, exponent), std::ldexp(p.y, exponent), std::ldexp(p.z, exponent)};
}

SpatialNearestPoints nearestOf(const SpatialBody& a, const SpatialBody& b, eInteriorPolicy policy) {
  const bool isFilled = policy == eIP_Filled;
  const int exponent = safeExponent(a, b);
  const SpatialNearestPair pair =
      exponent == 0 ? detail::nearestPair(a, b, isFilled)
                    : detail::nearestPair(detail::scaled(a, exponent), detail::scaled(b, exponent), isFilled);
  return {std::ldexp(pair.distance, -exponent), toData(pair.onA, -exponent), toData(pair.onB, -exponent)};
}

}  // namespace

PreparedEntity3d::PreparedEntity3d(const BaseGeometryEntity3d& entity)
    : _body(std::make_shared<const SpatialBody>(detail::toSpatialBody(entity))) {}

SpatialNearestPoints nearestPoints(const PreparedEntity3d& a, const PreparedEntity3d& b, eInteriorPolicy policy) {
  return detail::isBefore(b.body(), a.body()) ? nearestOf(b.body(), a.body(), policy).exchanged()
                                              : nearestOf(a.body(), b.body(), policy);
}

SpatialNearestPoints nearestPoints(const BaseGeometryEntity3d& a, const BaseGeometryEntity3d& b,
                                   eInteriorPolicy policy) {
  return nearestPoints(PreparedEntity3d(a), PreparedEntity3d(b), policy);
}

omReal64 distance(const PreparedEntity3d& a, const PreparedEntity3d& b, eInteriorPolicy policy) {
  return nearestPoints(a, b, policy).distance;
}

omReal64 distance(const BaseGeometryEntity3d& a, const BaseGeometryEntity3d& b, eInteriorPolicy policy) {
  return nearestPoints(a, b, policy).distance;
}

}  // namespace ormix::geom
