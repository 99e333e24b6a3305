#include <ORMIXGeometry/Entity/3d/Mesh/QuickHull.h>
#include <ORMIXGeometry/Transform/3d/ConvexHullTransform3d.h>
#include <ORMIXGeometry/Transform/3d/EnvelopeTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SpatialParts.h>
#include <ORMIXMath/Scalar/Round.h>
#include <ORMIXGeometry/Transform/DerivedTransform.ipp>

#include <algorithm>
#include <cmath>

ORMIX_GEOMETRY_DERIVED_TRANSFORM3D_LEVELS(, ConvexHullTransform3d)

namespace ormix::geom {

namespace {

template <class T, class Entity>
bool deriveHull(const Entity& entity, Mesh3d<T>& result) {
  if constexpr (isListed<Entity>(ScalarClassList<PointCloud3d>())) {
    return static_cast<bool>(quickHull(entity, result));
  } else if constexpr (isListed<Entity>(ScalarClassList<Mesh3d>())) {
    return static_cast<bool>(quickHull(entity.getVertexColl(), result));
  } else {
    return detail::useHullPoints(entity, [&result](const auto* xyz, std::size_t nbPoints) {
      std::vector<Point3dData<T>> points(nbPoints);
      T* to = coordinates(points);
      for (std::size_t i = 0; i < 3 * nbPoints; ++i) {
        to[i] = round<T>(xyz[i]);
        if (!std::isfinite(omReal64(xyz[i]))) return false;
        if (std::is_same_v<Entity, Shape3d> && omReal64(to[i]) != omReal64(xyz[i])) return false;
      }
      return static_cast<bool>(quickHull(points, result));
    });
  }
}
template <class T>
bool deriveHull(const Sphere3d<T>& sphere, Sphere3d<T>& result) {
  result = sphere;
  const Point3dData<omReal64> center = cast<omReal64>(sphere.center());
  return std::isfinite(center.getX()) && std::isfinite(center.getY()) && std::isfinite(center.getZ()) &&
         std::isfinite(omReal64(sphere.getRadius()));
}
template <class T>
bool deriveHull(const Ellipsoid3d<T>& ellipsoid, Ellipsoid3d<T>& result) {
  result = ellipsoid;
  const Point3dData<omReal64> center = cast<omReal64>(ellipsoid.center());
  const std::array<omReal64, 9> all{center.getX(),
                                    center.getY(),
                                    center.getZ(),
                                    omReal64(ellipsoid.getMajorRadius()),
                                    omReal64(ellipsoid.getMediumRadius()),
                                    omReal64(ellipsoid.getMinorRadius()),
                                    ellipsoid.getAlpha(),
                                    ellipsoid.getBeta(),
                                    ellipsoid.getChi()};
  return std::all_of(all.begin(), all.end(), [](omReal64 value) { return std::isfinite(value); });
}
/// Cylinders and cones, of which the envelope says whether all numbers are finite.
template <class Solid>
bool deriveConvex(const Solid& solid, Solid& result) {
  result = solid;
  EnvelopeTransform3d::Result<Solid> box;
  return EnvelopeTransform3d().derive(solid, box);
}
template <class T>
bool deriveHull(const Cylinder3d<T>& cylinder, Cylinder3d<T>& result) {
  return deriveConvex(cylinder, result);
}
template <class T>
bool deriveHull(const Cone3d<T>& cone, Cone3d<T>& result) {
  return deriveConvex(cone, result);
}

}  // namespace

template <class Entity>
bool ConvexHullTransform3d::derive(const Entity& entity, Result<Entity>& result) const {
  return deriveHull(entity, result);
}

namespace {
[[gnu::used]] constexpr auto s_instances = detail::derivationsOfAll<ConvexHullTransform3d>(SpatialEntityList());
}  // namespace

}  // namespace ormix::geom
