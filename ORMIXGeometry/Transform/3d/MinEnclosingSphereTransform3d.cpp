#include <ORMIXGeometry/Entity/3d/RoundSolidOf.h>
#include <ORMIXGeometry/Transform/3d/MinEnclosingSphereTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SpatialParts.h>
#include <ORMIXGeometry/Transform/EnclosingRadius.h>
#include <ORMIXMath/Enclosing/SmallestBall.h>
#include <ORMIXGeometry/Transform/DerivedTransform.ipp>

#include <algorithm>
#include <cmath>

ORMIX_GEOMETRY_DERIVED_TRANSFORM3D_LEVELS(, MinEnclosingSphereTransform3d)

namespace ormix::geom {

namespace {

template <class Entity>
bool enclose(const Entity& entity, Sphere3d<omReal64>& sphere) {
  if constexpr (detail::s_isRoundSolid<Entity>) {
    SpatialPoint center;
    omReal64 radius = 0;
    enclosingBall(detail::roundSolidOf(entity), center, radius);
    sphere = {{center.x, center.y, center.z}, radius};
    return std::isfinite(center.x + center.y + center.z) && std::isfinite(radius);
  } else {
    return detail::useHullPoints(entity, [&sphere](const auto* xyz, std::size_t nbPoints) {
      EnclosingSphere ball;
      if (!smallestEnclosingSphere(xyz, nbPoints, ball)) return false;
      sphere = {{ball.center[0], ball.center[1], ball.center[2]}, detail::enclosingRadius(ball.radius)};
      return true;
    });
  }
}
template <class T>
bool encloseRound(const Point3dData<T>& center, omReal64 radius, Sphere3d<omReal64>& sphere) {
  const Point3dData<omReal64> at(omReal64(center.getX()), omReal64(center.getY()), omReal64(center.getZ()));
  sphere = {at, radius};
  return std::isfinite(at.getX()) && std::isfinite(at.getY()) && std::isfinite(at.getZ()) && std::isfinite(radius);
}
template <class T>
bool enclose(const Sphere3d<T>& entity, Sphere3d<omReal64>& sphere) {
  return encloseRound(entity.center(), std::abs(omReal64(entity.getRadius())), sphere);
}
template <class T>
bool enclose(const Ellipsoid3d<T>& ellipsoid, Sphere3d<omReal64>& sphere) {
  const omReal64 a = std::abs(omReal64(ellipsoid.getMajorRadius()));
  const omReal64 b = std::abs(omReal64(ellipsoid.getMediumRadius()));
  const omReal64 c = std::abs(omReal64(ellipsoid.getMinorRadius()));
  return std::isfinite(b) && std::isfinite(c) && encloseRound(ellipsoid.center(), std::max({a, b, c}), sphere);
}

}  // namespace

template <class Entity>
bool MinEnclosingSphereTransform3d::derive(const Entity& entity, Result<Entity>& result) const {
  return enclose(entity, result);
}

namespace {
[[gnu::used]] constexpr auto s_instances = detail::derivationsOfAll<MinEnclosingSphereTransform3d>(SpatialEntityList());
}  // namespace

}  // namespace ormix::geom
