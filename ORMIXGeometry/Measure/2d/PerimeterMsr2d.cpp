#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Measure/2d/PerimeterMsr2d.h>
#include <ORMIXGeometry/Measure/MeasureParts.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/Ring.h>
#include <ORMIXGeometry/Measure/GeometryMeasure.ipp>

#include <cmath>
#include <functional>

ORMIX_GEOMETRY_MEASURE_LEVELS(, PerimeterMsr2d, BaseTypedGeometryMeasure2d<omReal64>)

namespace ormix::geom {

namespace {
omReal64 perimeterOf(const Vector2d&) { return 0; }

template <class T>
omReal64 perimeterOf(const Point2d<T>&) {
  return 0;
}

template <class T>
omReal64 perimeterOf(const BoundingBox2d<T>& box) {
  return 2 *
         ((omReal64(box.getXMax()) - omReal64(box.getXMin())) + (omReal64(box.getYMax()) - omReal64(box.getYMin())));
}

template <class T>
omReal64 perimeterOf(const Circle2d<T>& circle) {
  return circle.perimeter();
}

// Ramanujan's second approximation [Ramanujan1914]: exact for circles; its relative error grows with the flatness, to
// at most 4.1e-4.
template <class T>
omReal64 perimeterOf(const Ellipse2d<T>& ellipse) {
  const omReal64 a = omReal64(ellipse.getMajorRadius());
  const omReal64 b = omReal64(ellipse.getMinorRadius());
  const omReal64 sum = a + b;
  const omReal64 difference = a - b;
  // h would be 0 / 0 for two radii of 0.
  const omReal64 h = a == 0 && b == 0 ? 0 : (difference * difference) / (sum * sum);
  return s_pi * sum * (1 + 3 * h / (10 + std::sqrt(4 - 3 * h)));
}

template <class T>
omReal64 perimeterOf(const Square2d<T>& square) {
  return 8 * omReal64(square.getHalfLength());
}

template <class T>
omReal64 perimeterOf(const Rectangle2d<T>& rectangle) {
  return 4 * omReal64(rectangle.getHalfLength()) + 4 * omReal64(rectangle.getHalfWidth());
}

template <class T>
omReal64 perimeterOf(const Polygon2d<T>& polygon) {
  const auto& points = polygon.getPointColl();
  return pathLength(coordinates(points), points.size());
}

template <class T>
omReal64 perimeterOf(const Arc2d<T>& arc) {
  return arc.length();
}

}  // namespace

omReal64 PerimeterMsr2d::measure(const BaseGeometryEntity2d& entity) {
  return measureOrThrow<PerimeterMsr2d>(entity, __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

template <class Measured,
          std::enable_if_t<std::conjunction_v<std::is_class<Measured>, PerimeterMsr2d::Supports<Measured>>, int>>
bool PerimeterMsr2d::process(const Measured& entity, omReal64& value) const {
  const auto simple = [](const auto& part) { return perimeterOf(part); };
  return detail::measureParts(entity, getHoleMsrPolicy(), value, simple, std::plus<>());
}

namespace {
[[gnu::used]] constexpr auto s_instances = detail::processOfAll<PerimeterMsr2d>(PlanarEntityList());
}  // namespace

}  // namespace ormix::geom
