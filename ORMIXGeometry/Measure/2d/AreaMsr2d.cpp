#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Measure/2d/AreaMsr2d.h>
#include <ORMIXGeometry/Measure/MeasureParts.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/Ring.h>
#include <ORMIXGeometry/Measure/GeometryMeasure.ipp>

#include <functional>

ORMIX_GEOMETRY_MEASURE_LEVELS(, AreaMsr2d, BaseTypedGeometryMeasure2d<omReal64>)

namespace ormix::geom {

namespace {
omReal64 areaOf(const Vector2d&) { return 0; }

template <class T>
omReal64 areaOf(const Point2d<T>&) {
  return 0;
}

template <class T>
omReal64 areaOf(const BoundingBox2d<T>& box) {
  return (omReal64(box.getXMax()) - omReal64(box.getXMin())) * (omReal64(box.getYMax()) - omReal64(box.getYMin()));
}

template <class T>
omReal64 areaOf(const Circle2d<T>& circle) {
  return circle.area();
}

template <class T>
omReal64 areaOf(const Ellipse2d<T>& ellipse) {
  return ellipse.area();
}

template <class T>
omReal64 areaOf(const Square2d<T>& square) {
  const omReal64 side = 2 * omReal64(square.getHalfLength());
  return side * side;
}

template <class T>
omReal64 areaOf(const Rectangle2d<T>& rectangle) {
  return rectangle.getArea();
}

template <class T>
omReal64 areaOf(const Polygon2d<T>& polygon) {
  const auto& points = polygon.getPointColl();
  return polygon.getPolygon2dType() == eP2DT_Exterior ? ringSignedArea(coordinates(points), points.size())
                                                      : ringSignedAreaReversed(coordinates(points), points.size());
}

}  // namespace

omReal64 AreaMsr2d::measure(const BaseGeometryEntity2d& entity) {
  return measureOrThrow<AreaMsr2d>(entity, __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

template <class Measured,
          std::enable_if_t<std::conjunction_v<std::is_class<Measured>, AreaMsr2d::Supports<Measured>>, int>>
bool AreaMsr2d::process(const Measured& entity, omReal64& value) const {
  const auto simple = [](const auto& part) { return areaOf(part); };
  return detail::measureParts(entity, getHoleMsrPolicy(), value, simple, std::minus<>());
}

namespace {
[[gnu::used]] constexpr auto s_instances = detail::processOfAll<AreaMsr2d>(PlanarEntityList());
}  // namespace

}  // namespace ormix::geom
