#pragma once

#include <ORMIXGeometry/Entity/3d/BaseGeometryEntity3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>
#include <ORMIXGeometry/Tools/Distance/InteriorPolicy.h>
#include <ORMIXGeometry/Tools/Distance/NearestPoints.h>

#include <memory>

/// \file
/// Distances of all spatial entities but vectors, with the nearest points.
///
/// Filled, an entity is all of its points: balls, ellipsoids, boxes, cubes and cuboids with their insides, and what
/// closed meshes bound, so that the distance is 0 where one entity is inside another; holes of meshes with holes are
/// outside, bodies in holes inside again. Meshes that are not closed are surfaces, and do not bound anything. A shape
/// is its surfaces or, if it has none, its voxels. With `eIP_Boundary` all of them are their surfaces. Points,
/// segments, triangles, plans and point clouds are themselves in both cases. Cubes and cuboids are the boxes of their
/// corners.
///
/// Cylinders, cones and tori are solids, circles and lines curves. Distances of these are right to some units in the
/// last place of the largest coordinate where the other one is made of points, segments or triangles, is a plan, a
/// sphere or a line; among each other and to ellipsoids to 1e-12 of the sizes, and in the few cases to 1e-9 that
/// roundsNearestPair() names.
///
/// Between what is made of points, segments and triangles the distance is exactly 0 where the two meet and only there,
/// decided without rounding, and else right to 2^-40 of the largest difference of the coordinates that are involved,
/// see trianglesNearestPair(). Ellipsoids and spheres are right to 1e-13 of the sizes, the surface of one ellipsoid
/// inside another, where both have different radii, to 2e-10; nearestOnEllipsoid(), triangleEllipsoidNearestPair() and
/// ellipsoidsNearestPair() say how. Parallel plans are those whose normals differ by rounding. Both points are on their
/// entities to the same precision and equal where the distance is 0. Exchanged entities have the same distance, to the
/// bit, and the points exchanged. Coordinates may have any size; sizes below 2^-1000 of the largest count as 0.
///
/// The time is that of the trees of all triangles, O(n log n), and then that of a walk down both, nearest boxes first:
/// for surfaces that are apart it depends little on their sizes, in the worst case, of surfaces at one distance
/// everywhere, it is that of all pairs. A round solid looks at the triangles in its box, O(n) in the worst case; pairs
/// of round solids and ellipsoids take some microseconds, up to 0.3 s where surfaces are in each other's tubes and the
/// distance is nearly the same everywhere.

namespace ormix::geom {

/// What is answered in space.
using SpatialNearestPoints = NearestPoints<Point3dData<omReal64>>;

namespace detail {
struct SpatialBody;
}  // namespace detail

/// A spatial entity made ready for many distances, with a tree of its triangles. It does not refer to the entity;
/// copies share what was made. Several threads may ask at once.
class ORMIX_GEOMETRY_API PreparedEntity3d {
 public:
  /// O(n log n) in its vertices and triangles.
  /// \throw ORMIXGeometryException, logged first, for vectors, for what has no points, and where a value is not finite
  explicit PreparedEntity3d(const BaseGeometryEntity3d& entity);

  /// For the functions of the library.
  const detail::SpatialBody& body() const { return *_body; }

 private:
  std::shared_ptr<const detail::SpatialBody> _body;
};

/// A nearest point of each of two entities, and their distance. Where several pairs are nearest, any of them.
/// \throw ORMIXGeometryException, logged first, for vectors, for what has no points, and where a value is not finite
/// @{
ORMIX_GEOMETRY_API SpatialNearestPoints nearestPoints(const BaseGeometryEntity3d& a, const BaseGeometryEntity3d& b,
                                                      eInteriorPolicy policy = eIP_Filled);
ORMIX_GEOMETRY_API SpatialNearestPoints nearestPoints(const PreparedEntity3d& a, const PreparedEntity3d& b,
                                                      eInteriorPolicy policy = eIP_Filled);
/// @}

/// The distance of two entities, as nearestPoints() has it. A call with two `Point3d` of one type is the distance() of
/// points, which wraps around for integers.
/// \throw ORMIXGeometryException, logged first, as nearestPoints()
/// @{
ORMIX_GEOMETRY_API omReal64 distance(const BaseGeometryEntity3d& a, const BaseGeometryEntity3d& b,
                                     eInteriorPolicy policy = eIP_Filled);
ORMIX_GEOMETRY_API omReal64 distance(const PreparedEntity3d& a, const PreparedEntity3d& b,
                                     eInteriorPolicy policy = eIP_Filled);
/// @}

}  // namespace ormix::geom
