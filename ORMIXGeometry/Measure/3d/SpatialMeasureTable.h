#pragma once

#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>
#include <ORMIXGeometry/Entity/MissingRow.h>

namespace ormix::geom {

/// Which measures a spatial entity has.
struct SpatialMeasures {
  bool area;
  bool volume;
};

/// The table of the spatial measures, a row for each entity of space. Entities without an area and a volume are refused
/// by the measures.
template <class Entity>
inline constexpr SpatialMeasures s_spatialMeasuresOf = detail::missingRow<Entity, SpatialMeasures>();
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
// clang-format on

}  // namespace ormix::geom
