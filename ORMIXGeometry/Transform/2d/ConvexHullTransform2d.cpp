#include <ORMIXGeometry/Transform/2d/ConvexHullTransform2d.h>
#include <ORMIXGeometry/Transform/2d/PlanarParts.h>
#include <ORMIXMath/Hull/ConvexHull2d.h>
#include <ORMIXMath/Scalar/Round.h>
#include <ORMIXGeometry/Transform/DerivedTransform.ipp>

#include <algorithm>
#include <cmath>

ORMIX_GEOMETRY_DERIVED_TRANSFORM2D_LEVELS(, ConvexHullTransform2d)

namespace ormix::geom {

namespace {

template <class T>
bool setHull(const T* xy, std::size_t nbPoints, Polygon2d<T>& result) {
  std::vector<T> hull;
  if (!convexHull2d(xy, nbPoints, hull)) return false;
  auto& vertices = result.getPointColl();
  vertices.resize(hull.size() / 2);
  std::copy(hull.begin(), hull.end(), coordinates(vertices));
  if (vertices.size() > 1) vertices.push_back(vertices.front());
  result.setPolygon2dType(eP2DT_Exterior);
  return true;
}

template <class Entity>
bool deriveHull(const Entity& entity, Polygon2d<CoordinateOf<Entity>>& result) {
  using T = CoordinateOf<Entity>;
  return detail::useHullPoints(entity, [&result](const auto* xy, std::size_t nbPoints) {
    if constexpr (std::is_same_v<decltype(xy), const T*>) {
      return setHull(xy, nbPoints, result);
    } else {
      std::vector<T> rounded(2 * nbPoints);
      for (std::size_t i = 0; i < rounded.size(); ++i) {
        rounded[i] = round<T>(xy[i]);
        if (!std::isfinite(xy[i]) || (std::is_same_v<Entity, Shape2d> && omReal64(rounded[i]) != xy[i])) return false;
      }
      return setHull(static_cast<const T*>(rounded.data()), nbPoints, result);
    }
  });
}
template <class T>
bool deriveHull(const Circle2d<T>& circle, Circle2d<T>& result) {
  result = circle;
  return std::isfinite(omReal64(circle.centerX())) && std::isfinite(omReal64(circle.centerY())) &&
         std::isfinite(omReal64(circle.getRadius()));
}
template <class T>
bool deriveHull(const Ellipse2d<T>& ellipse, Ellipse2d<T>& result) {
  result = ellipse;
  return std::isfinite(omReal64(ellipse.centerX())) && std::isfinite(omReal64(ellipse.centerY())) &&
         std::isfinite(omReal64(ellipse.getMajorRadius())) && std::isfinite(omReal64(ellipse.getMinorRadius())) &&
         std::isfinite(ellipse.getTheta());
}

}  // namespace

template <class Entity>
bool ConvexHullTransform2d::derive(const Entity& entity, Result<Entity>& result) const {
  return deriveHull(entity, result);
}

namespace {
[[gnu::used]] constexpr auto s_instances = detail::derivationsOfAll<ConvexHullTransform2d>(PlanarEntityList());
}  // namespace

}  // namespace ormix::geom
