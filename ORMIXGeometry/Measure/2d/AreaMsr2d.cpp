#include <ORMIXGeometry/Entity/2d/BoundingBox/BoundingBox2d.h>
#include <ORMIXGeometry/Entity/2d/Circle/Circle2d.h>
#include <ORMIXGeometry/Entity/2d/Ellipse/Ellipse2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXGeometry/Entity/2d/Rectangle/Rectangle2d.h>
#include <ORMIXGeometry/Entity/2d/Square/Square2d.h>
#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>
#include <ORMIXGeometry/Measure/2d/AreaMsr2d.h>
#include <ORMIXGeometry/Measure/HoleTreeMeasure.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/Ring.h>
#include <ORMIXGeometry/Measure/GeometryMeasure.ipp>

#include <functional>

namespace ormix {
template class VersionedLevel<geom::AreaMsr2d, geom::BaseTypedGeometryMeasure2d<omReal64>>;
template class RegisteredObject<geom::AreaMsr2d, geom::BaseTypedGeometryMeasure2d<omReal64>>;
}  // namespace ormix

namespace ormix::geom {

template class GeometryMeasure<AreaMsr2d, BaseTypedGeometryMeasure2d<omReal64>>;

namespace {
const DynamicRegistrator<AreaMsr2d> g_classRegistrator;
}  // namespace

omReal64 AreaMsr2d::measure(const BaseGeometryEntity2d& entity) {
  return measureOrThrow<AreaMsr2d>(entity, toString(eM2DT_Area), toString(entity.getEntity2dType()),
                                   __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

bool AreaMsr2d::process(const Vector2d&, omReal64& value) const {
  value = 0;
  return true;
}

template <class T>
bool AreaMsr2d::process(const Point2d<T>&, omReal64& value) const {
  value = 0;
  return true;
}

template <class T>
bool AreaMsr2d::process(const BoundingBox2d<T>& box, omReal64& value) const {
  value = (omReal64(box.getXMax()) - omReal64(box.getXMin())) * (omReal64(box.getYMax()) - omReal64(box.getYMin()));
  return true;
}

template <class T>
bool AreaMsr2d::process(const Circle2d<T>& circle, omReal64& value) const {
  const omReal64 radius = omReal64(circle.getRadius());
  value = s_pi * radius * radius;
  return true;
}

template <class T>
bool AreaMsr2d::process(const Ellipse2d<T>& ellipse, omReal64& value) const {
  value = s_pi * omReal64(ellipse.getMajorRadius()) * omReal64(ellipse.getMinorRadius());
  return true;
}

template <class T>
bool AreaMsr2d::process(const Square2d<T>& square, omReal64& value) const {
  const omReal64 side = 2 * omReal64(square.getHalfLength());
  value = side * side;
  return true;
}

template <class T>
bool AreaMsr2d::process(const Rectangle2d<T>& rectangle, omReal64& value) const {
  value = (2 * omReal64(rectangle.getHalfLength())) * (2 * omReal64(rectangle.getHalfWidth()));
  return true;
}

template <class T>
bool AreaMsr2d::process(const Polygon2d<T>& polygon, omReal64& value) const {
  const auto& points = polygon.getPointColl();
  value = polygon.getPolygon2dType() == eP2DT_Exterior ? ringSignedArea(coordinates(points), points.size())
                                                       : ringSignedAreaReversed(coordinates(points), points.size());
  return true;
}

template <class T>
bool AreaMsr2d::process(const PolygonWithHoles2d<T>& polygon, omReal64& value) const {
  const auto measureExterior = [this](const PolygonWithHoles2d<T>& node, omReal64& result) {
    return process(node.getExteriorPolygon(), result);
  };
  return measureHoleTree(polygon, getHoleMsrPolicy(), value, measureExterior, std::minus<>());
}

#define ORMIX_GEOMETRY_INSTANTIATE_PROCESS(T)                                 \
  template bool AreaMsr2d::process(const Point2d<T>&, omReal64&) const;       \
  template bool AreaMsr2d::process(const BoundingBox2d<T>&, omReal64&) const; \
  template bool AreaMsr2d::process(const Circle2d<T>&, omReal64&) const;      \
  template bool AreaMsr2d::process(const Ellipse2d<T>&, omReal64&) const;     \
  template bool AreaMsr2d::process(const Square2d<T>&, omReal64&) const;      \
  template bool AreaMsr2d::process(const Rectangle2d<T>&, omReal64&) const;   \
  template bool AreaMsr2d::process(const Polygon2d<T>&, omReal64&) const;     \
  template bool AreaMsr2d::process(const PolygonWithHoles2d<T>&, omReal64&) const;
ORMIX_GEOMETRY_INSTANTIATE_PROCESS(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_PROCESS(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_PROCESS(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_PROCESS(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_PROCESS

}  // namespace ormix::geom
