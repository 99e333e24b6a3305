#pragma once

#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>

namespace ormix::geom {

/// Which measures are defined for the entities of a class.
struct SpatialMeasures {
  bool area;    ///< whether AreaMsr3d supports them
  bool volume;  ///< whether VolumeMsr3d supports them
};

namespace detail {
template <class Entity>
constexpr SpatialMeasures noSpatialMeasures() {
  static_assert(sizeof(Entity*) == 0,
                "an entity of space has no row in Measure/3d/SpatialMeasureTable.h: say there which measures it has");
  return {};
}
}  // namespace detail

/// The table of the spatial measures, with one row for each entity of space; an entity without a row does not compile.
/// @{
template <class Entity>
inline constexpr SpatialMeasures s_spatialMeasuresOf = detail::noSpatialMeasures<Entity>();
// clang-format off
//                                                                                      area   volume
template <class T> inline constexpr SpatialMeasures s_spatialMeasuresOf<Point3d<T>>         {true,  true};
template <>        inline constexpr SpatialMeasures s_spatialMeasuresOf<Vector3d>           {true,  true};
template <class T> inline constexpr SpatialMeasures s_spatialMeasuresOf<BoundingBox3d<T>>   {true,  true};
template <class T> inline constexpr SpatialMeasures s_spatialMeasuresOf<Segment3d<T>>       {false, false};
template <>        inline constexpr SpatialMeasures s_spatialMeasuresOf<Plan3d>             {false, false};
template <class T> inline constexpr SpatialMeasures s_spatialMeasuresOf<Triangle3d<T>>      {true,  true};
template <class T> inline constexpr SpatialMeasures s_spatialMeasuresOf<Sphere3d<T>>        {true,  true};
template <class T> inline constexpr SpatialMeasures s_spatialMeasuresOf<Ellipsoid3d<T>>     {true,  true};
template <class T> inline constexpr SpatialMeasures s_spatialMeasuresOf<Cube3d<T>>          {true,  true};
template <class T> inline constexpr SpatialMeasures s_spatialMeasuresOf<Cuboid3d<T>>        {true,  true};
template <class T> inline constexpr SpatialMeasures s_spatialMeasuresOf<PointCloud3d<T>>    {false, false};
template <class T> inline constexpr SpatialMeasures s_spatialMeasuresOf<Mesh3d<T>>          {true,  true};
template <class T> inline constexpr SpatialMeasures s_spatialMeasuresOf<MeshWithHoles3d<T>> {true,  true};
template <>        inline constexpr SpatialMeasures s_spatialMeasuresOf<Shape3d>            {true,  true};
template <class T> inline constexpr SpatialMeasures s_spatialMeasuresOf<Cylinder3d<T>>      {true,  true};
template <class T> inline constexpr SpatialMeasures s_spatialMeasuresOf<Cone3d<T>>          {true,  true};
template <class T> inline constexpr SpatialMeasures s_spatialMeasuresOf<Torus3d<T>>         {true,  true};
template <class T> inline constexpr SpatialMeasures s_spatialMeasuresOf<Circle3d<T>>        {false, false};
template <>        inline constexpr SpatialMeasures s_spatialMeasuresOf<Line3d>             {false, false};
// clang-format on
/// @}

}  // namespace ormix::geom
