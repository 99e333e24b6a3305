#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Location/PointLocation.h>
#include <ORMIXGeometry/Tools/Location/RingsOf.h>

namespace ormix::geom {

namespace {

ePointLocation locationOf(const RingCrossings& crossings) {
  if (crossings.isOnBoundary) return ePL_Boundary;
  return crossings.isOdd ? ePL_Inside : ePL_Outside;
}

template <class Entity>
ePointLocation located(const Entity& entity, const Point2dData<omReal64>& point) {
  RingCrossings crossings;
  detail::visitRings(entity, [&](const auto* xy, std::size_t nbPoints) {
    crossings += ringCrossings(xy, nbPoints, point.getX(), point.getY());
  });
  return locationOf(crossings);
}

}  // namespace

template <class T>
ePointLocation locate(const Polygon2d<T>& polygon, const Point2dData<omReal64>& point) {
  return located(polygon, point);
}
template <class T>
ePointLocation locate(const PolygonWithHoles2d<T>& polygon, const Point2dData<omReal64>& point) {
  return located(polygon, point);
}
ePointLocation locate(const Shape2d& shape, const Point2dData<omReal64>& point) { return located(shape, point); }

template <class Entity>
void PreparedPolygon2d::prepare(const Entity& entity) {
  detail::visitRings(entity, [this](const auto* xy, std::size_t nbPoints) { _rings.add(xy, nbPoints); });
  if (!_rings.build())
    logAndThrow("A polygon cannot be prepared: a coordinate is not finite, or it has 2^28 edges or more",
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

template <class T>
PreparedPolygon2d::PreparedPolygon2d(const Polygon2d<T>& polygon) {
  prepare(polygon);
}
template <class T>
PreparedPolygon2d::PreparedPolygon2d(const PolygonWithHoles2d<T>& polygon) {
  prepare(polygon);
}
PreparedPolygon2d::PreparedPolygon2d(const Shape2d& shape) { prepare(shape); }

ePointLocation PreparedPolygon2d::locate(const Point2dData<omReal64>& point) const {
  return locationOf(_rings.crossings(point.getX(), point.getY()));
}

#define ORMIX_GEOMETRY_INSTANTIATE_LOCATION_OF(Class, T)                                            \
  template ORMIX_GEOMETRY_API ePointLocation locate(const Class<T>&, const Point2dData<omReal64>&); \
  template ORMIX_GEOMETRY_API PreparedPolygon2d::PreparedPolygon2d(const Class<T>&);
#define ORMIX_GEOMETRY_INSTANTIATE_LOCATION(T)         \
  ORMIX_GEOMETRY_INSTANTIATE_LOCATION_OF(Polygon2d, T) \
  ORMIX_GEOMETRY_INSTANTIATE_LOCATION_OF(PolygonWithHoles2d, T)
ORMIX_GEOMETRY_INSTANTIATE_LOCATION(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_LOCATION(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_LOCATION(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_LOCATION(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_LOCATION
#undef ORMIX_GEOMETRY_INSTANTIATE_LOCATION_OF

}  // namespace ormix::geom
