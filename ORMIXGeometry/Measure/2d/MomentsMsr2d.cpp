#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Measure/2d/MomentsMsr2d.h>
#include <ORMIXGeometry/Measure/MeasureParts.h>
#include <ORMIXMath/Moments/PointMoments.h>
#include <ORMIXGeometry/Measure/GeometryMeasure.ipp>

#include <cmath>
#include <functional>

ORMIX_GEOMETRY_MEASURE_LEVELS(, MomentsMsr2d, BaseTypedGeometryMeasure2d<geom::Moments2dO3>)

namespace ormix::geom {

namespace {

PlanarMoments momentsOf(const Vector2d&) { return {}; }

template <class T>
PlanarMoments momentsOf(const Point2d<T>&) {
  return {};
}

template <class T>
PlanarMoments momentsOf(const BoundingBox2d<T>& box) {
  return boxMoments(omReal64(box.getXMin()), omReal64(box.getYMin()), omReal64(box.getXMax()), omReal64(box.getYMax()));
}

template <class T>
PlanarMoments momentsOf(const Circle2d<T>& circle) {
  const auto radius = omReal64(circle.getRadius());
  return ellipseMoments(omReal64(circle.centerX()), omReal64(circle.centerY()), radius, radius, 1, 0);
}

template <class T>
PlanarMoments momentsOf(const Ellipse2d<T>& ellipse) {
  return ellipseMoments(omReal64(ellipse.centerX()), omReal64(ellipse.centerY()), omReal64(ellipse.getMajorRadius()),
                        omReal64(ellipse.getMinorRadius()), ellipse.getCosTheta(), ellipse.getSinTheta());
}

template <class T>
PlanarMoments momentsOf(const Square2d<T>& square) {
  const auto half = omReal64(square.getHalfLength());
  return rectangleMoments(omReal64(square.centerX()), omReal64(square.centerY()), half, half, 1, 0);
}

template <class T>
PlanarMoments momentsOf(const Rectangle2d<T>& rectangle) {
  return rectangleMoments(omReal64(rectangle.centerX()), omReal64(rectangle.centerY()),
                          omReal64(rectangle.getHalfLength()), omReal64(rectangle.getHalfWidth()),
                          std::cos(rectangle.getOrientation()), std::sin(rectangle.getOrientation()));
}

template <class T>
PlanarMoments momentsOf(const Polygon2d<T>& polygon) {
  const auto& points = polygon.getPointColl();
  const PlanarMoments moments = ringMoments(coordinates(points), points.size());
  return polygon.getPolygon2dType() == eP2DT_Exterior ? moments : -moments;
}

template <class T>
PlanarMoments momentsOf(const PointCloud2d<T>& cloud) {
  return pointMoments(coordinates(cloud.getCollection()), cloud.size());
}

}  // namespace

Moments2dO3 MomentsMsr2d::measure(const BaseGeometryEntity2d& entity) {
  return measureOrThrow<MomentsMsr2d>(entity, __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

template <class Measured,
          std::enable_if_t<std::conjunction_v<std::is_class<Measured>, MomentsMsr2d::Supports<Measured>>, int>>
bool MomentsMsr2d::process(const Measured& entity, Moments2dO3& value) const {
  const auto simple = [](const auto& part) { return momentsOf(part); };
  PlanarMoments moments;
  if (!detail::measureParts(entity, getHoleMsrPolicy(), moments, simple, std::minus<>()) || !isFinite(moments))
    return false;
  value = Moments2dO3(moments);
  return true;
}

namespace {
[[gnu::used]] constexpr auto s_instances = detail::processOfAll<MomentsMsr2d>(PlanarEntityList());
}  // namespace

}  // namespace ormix::geom
