#pragma once

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/2d/PlanarClasses.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXMath/Location/NearestEdges.h>

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

/// The boundary of a polygon, of a polygon with its holes, or of a shape, sorted so that it can be asked for its
/// nearest point to many points; answers are those of nearestBoundaryPoint(). Made in linear time; NearestEdges says
/// what a question costs. Several threads may ask at once.
class ORMIX_GEOMETRY_API PreparedBoundary2d {
 public:
  /// \throw ORMIXGeometryException, logged first, when there are no vertices or a coordinate is not finite
  /// @{
  template <class T>
  explicit PreparedBoundary2d(const Polygon2d<T>& polygon);
  template <class T>
  explicit PreparedBoundary2d(const PolygonWithHoles2d<T>& polygon);
  explicit PreparedBoundary2d(const Shape2d& shape);
  /// @}

  /// The nearest point of the boundary.
  /// \throw ORMIXGeometryException, logged first, when the point is not finite
  Point2d<omReal64> nearestPoint(const Point2dData<omReal64>& point) const;

 private:
  template <class Entity>
  void prepare(const Entity& entity);

  NearestEdges _edges;
};

}  // namespace ormix::geom
