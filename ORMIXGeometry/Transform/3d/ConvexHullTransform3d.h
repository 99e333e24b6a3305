#pragma once

#include <ORMIXGeometry/Transform/3d/GeometryTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SpatialDerivationTable.h>
#include <ORMIXGeometry/Transform/DerivedTransform.h>

ORMIX_GEOMETRY_DERIVED_TRANSFORM3D_LEVELS(extern, ConvexHullTransform3d)

namespace ormix::geom {

namespace detail {
template <class Entity>
struct SpatialHullOf {
  using Type = Mesh3d<CoordinateOf<Entity>>;
};
template <class T>
struct SpatialHullOf<Sphere3d<T>> {
  using Type = Sphere3d<T>;
};
template <class T>
struct SpatialHullOf<Cylinder3d<T>> {
  using Type = Cylinder3d<T>;
};
template <class T>
struct SpatialHullOf<Cone3d<T>> {
  using Type = Cone3d<T>;
};
template <class T>
struct SpatialHullOf<Ellipsoid3d<T>> {
  using Type = Ellipsoid3d<T>;
};
}  // namespace detail

/// The convex hull of a spatial entity: a closed exterior `Mesh3d` of its coordinate type, of a shape that of its
/// boundaries, as quickHull() answers it. Spheres, ellipsoids, cylinders and cones are convex, and answer
/// themselves.
///
/// It is that of the stored numbers, exactly; of cubes and cuboids that of their corners, rounded to the coordinate
/// type. A shape without boundaries has the hull of its voxels.
///
/// Vectors, plans, points, segments, triangles, tori, circles and lines have none, nor has what lies in one plane, what
/// has a null hole, a number that is not finite, or voxels whose corners are no numbers of omReal32 (beyond 2^24). In
/// place for meshes, spheres, ellipsoids, cylinders and cones.
class ORMIX_GEOMETRY_API ConvexHullTransform3d : public DerivedTransform<ConvexHullTransform3d, SpatialTransforms> {
 public:
  static constexpr const char* s_className = "ormix::geom::ConvexHullTransform3d";  ///< registered name
  static constexpr eTransform3dType s_transform3dType = eT3DT_ConvexHull;

  template <class Entity>
  struct Supports : std::bool_constant<s_spatialDerivationsOf<Entity>.convexHull> {};
  template <class Entity>
  using Result = typename detail::SpatialHullOf<Entity>::Type;

  ConvexHullTransform3d() = default;

  /// The convex hull of an entity.
  /// \throw ORMIXGeometryException, logged first, where there is none
  /// @{
  template <class Entity, std::enable_if_t<Supports<Entity>::value, int> = 0>
  static Result<Entity> convexHull(const Entity& entity) {
    return derivedOf(entity);
  }
  static GeometryEntity3dPtr convexHull(const BaseGeometryEntity3d& entity) { return derivedOfAny(entity); }
  /// @}

  /// The same without an exception.
  /// \return false, `result` unspecified, where there is none
  template <class Entity>
  bool derive(const Entity& entity, Result<Entity>& result) const;
};

}  // namespace ormix::geom
