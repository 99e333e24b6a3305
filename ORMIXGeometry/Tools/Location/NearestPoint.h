#pragma once

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/2d/PlanarClasses.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>

namespace ormix::geom {

/// The point of a bounded planar entity that is nearest to a point. An entity with an area is its closed region: a
/// point in it is its own nearest point. Points, segments and point clouds are themselves. Where several are nearest,
/// any of them.
///
/// Polygons, polygons with holes and shapes have the region that locate() describes, rings counting as closed; null
/// holes and boundaries are ignored. The sign of a radius or a half size does not matter. Right to a few units in the
/// last place of the largest coordinate, for ellipses to 1e-14 of it. Linear in the number of vertices.
/// \throw ORMIXGeometryException, logged first, for lines, parabolas and vectors, for what has no points, and where a
/// coordinate is not finite
ORMIX_GEOMETRY_API Point2d<omReal64> nearestPoint(const BaseGeometryEntity2d& entity,
                                                  const Point2dData<omReal64>& point);

/// The same on the boundary of the region, also for points inside.
/// \throw ORMIXGeometryException as nearestPoint()
ORMIX_GEOMETRY_API Point2d<omReal64> nearestBoundaryPoint(const BaseGeometryEntity2d& entity,
                                                          const Point2dData<omReal64>& point);

/// For points of other types.
/// @{
template <class T>
Point2d<omReal64> nearestPoint(const BaseGeometryEntity2d& entity, const Point2d<T>& point) {
  return nearestPoint(entity, Point2dData<omReal64>(point.getX(), point.getY()));
}
template <class T>
Point2d<omReal64> nearestPoint(const BaseGeometryEntity2d& entity, const Point2dData<T>& point) {
  return nearestPoint(entity, Point2dData<omReal64>(point.getX(), point.getY()));
}
template <class T>
Point2d<omReal64> nearestBoundaryPoint(const BaseGeometryEntity2d& entity, const Point2d<T>& point) {
  return nearestBoundaryPoint(entity, Point2dData<omReal64>(point.getX(), point.getY()));
}
/// @}

}  // namespace ormix::geom
