#pragma once

#include <ORMIXGeometry/Enumeration.h>

#include <array>
#include <string_view>

namespace ormix::geom {

/// Family of a spatial entity.
enum eEntity3dType {
  eE3DT_Point,
  eE3DT_Vector,
  eE3DT_BoundingBox,
  eE3DT_PointCloud,
  eE3DT_Sphere,
  eE3DT_Ellipsoid,
  eE3DT_Cube,
  eE3DT_Cuboid,
  eE3DT_Mesh,
  eE3DT_MeshWithHoles,
  eE3DT_Shape,
  eE3DT_Plan,
  eE3DT_Segment,
  eE3DT_Triangle
};

/// What the numbers of a spatial entity are: coordinates, or a distance and two angles.
enum eCoordinateSystem3dType { eCS3DT_Cartesian, eCS3DT_Spherical };

}  // namespace ormix::geom

namespace ormix {

template <>
struct EnumerationNames<geom::eEntity3dType> {
  static constexpr std::string_view typeName = "eEntity3dType";
  static constexpr std::array<std::string_view, 14> names{
      "eE3DT_Point",     "eE3DT_Vector", "eE3DT_BoundingBox", "eE3DT_PointCloud", "eE3DT_Sphere",
      "eE3DT_Ellipsoid", "eE3DT_Cube",   "eE3DT_Cuboid",      "eE3DT_Mesh",       "eE3DT_MeshWithHoles",
      "eE3DT_Shape",     "eE3DT_Plan",   "eE3DT_Segment",     "eE3DT_Triangle"};
};

template <>
struct EnumerationNames<geom::eCoordinateSystem3dType> {
  static constexpr std::string_view typeName = "eCoordinateSystem3dType";
  static constexpr std::array<std::string_view, 2> names{"eCS3DT_Cartesian", "eCS3DT_Spherical"};
};

}  // namespace ormix
