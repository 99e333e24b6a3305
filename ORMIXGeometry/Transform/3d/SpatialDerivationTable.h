#pragma once

#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>

namespace ormix::geom {

/// Which derived geometries a spatial entity has.
struct SpatialDerivations {
  bool centroid;            ///< CentroidTransform3d
  bool convexHull;          ///< ConvexHullTransform3d
  bool envelope;            ///< EnvelopeTransform3d
  bool minEnclosingSphere;  ///< MinEnclosingSphereTransform3d
};

namespace detail {
template <class Entity>
constexpr SpatialDerivations noSpatialDerivations() {
  static_assert(!isListed<Entity>(SpatialEntityList()),
                "an entity of space has no row in Transform/3d/SpatialDerivationTable.h: say there what can be derived "
                "from it");
  return {};
}
}  // namespace detail

/// What can be derived from an entity: a table with a row for each entity of space. A missing row does not compile;
/// what is no entity of the library has nothing. Everything that is bounded and has a place has everything, except that
/// points, segments, triangles and circles have no convex hull, as they are flat, nor have tori, as no class holds it;
/// a vector has no place.
template <class Entity>
inline constexpr SpatialDerivations s_spatialDerivationsOf = detail::noSpatialDerivations<Entity>();
// clang-format off
/// The row of this entity.
/// @{
//                                                                                      centroid  convexHull  envelope  minEnclosingSphere
template <class T> inline constexpr SpatialDerivations s_spatialDerivationsOf<Point3d<T>>         {true,     false,      true,     true};
template <>        inline constexpr SpatialDerivations s_spatialDerivationsOf<Vector3d>           {false,    false,      false,    false};
template <class T> inline constexpr SpatialDerivations s_spatialDerivationsOf<BoundingBox3d<T>>   {true,     true,       true,     true};
template <class T> inline constexpr SpatialDerivations s_spatialDerivationsOf<Segment3d<T>>       {true,     false,      true,     true};
template <>        inline constexpr SpatialDerivations s_spatialDerivationsOf<Plan3d>             {false,    false,      false,    false};
template <class T> inline constexpr SpatialDerivations s_spatialDerivationsOf<Triangle3d<T>>      {true,     false,      true,     true};
template <class T> inline constexpr SpatialDerivations s_spatialDerivationsOf<Sphere3d<T>>        {true,     true,       true,     true};
template <class T> inline constexpr SpatialDerivations s_spatialDerivationsOf<Ellipsoid3d<T>>     {true,     true,       true,     true};
template <class T> inline constexpr SpatialDerivations s_spatialDerivationsOf<Cube3d<T>>          {true,     true,       true,     true};
template <class T> inline constexpr SpatialDerivations s_spatialDerivationsOf<Cuboid3d<T>>        {true,     true,       true,     true};
template <class T> inline constexpr SpatialDerivations s_spatialDerivationsOf<PointCloud3d<T>>    {true,     true,       true,     true};
template <class T> inline constexpr SpatialDerivations s_spatialDerivationsOf<Mesh3d<T>>          {true,     true,       true,     true};
template <class T> inline constexpr SpatialDerivations s_spatialDerivationsOf<MeshWithHoles3d<T>> {true,     true,       true,     true};
template <>        inline constexpr SpatialDerivations s_spatialDerivationsOf<Shape3d>            {true,     true,       true,     true};
template <class T> inline constexpr SpatialDerivations s_spatialDerivationsOf<Cylinder3d<T>>      {true,     true,       true,     true};
template <class T> inline constexpr SpatialDerivations s_spatialDerivationsOf<Cone3d<T>>          {true,     true,       true,     true};
template <class T> inline constexpr SpatialDerivations s_spatialDerivationsOf<Torus3d<T>>         {true,     false,      true,     true};
template <class T> inline constexpr SpatialDerivations s_spatialDerivationsOf<Circle3d<T>>        {true,     false,      true,     true};
template <>        inline constexpr SpatialDerivations s_spatialDerivationsOf<Line3d>             {false,    false,      false,    false};
/// @}
// clang-format on

}  // namespace ormix::geom
