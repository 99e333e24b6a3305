#pragma once

#include <ORMIXGeometry/Enumeration.h>

#include <array>
#include <string_view>

namespace ormix::geom {

/// Family of a spatial entity.
enum eEntity3dType {
  eE3DT_Point,          ///< Point3d
  eE3DT_Vector,         ///< Vector3d
  eE3DT_BoundingBox,    ///< BoundingBox3d
  eE3DT_PointCloud,     ///< PointCloud3d
  eE3DT_Sphere,         ///< Sphere3d
  eE3DT_Ellipsoid,      ///< Ellipsoid3d
  eE3DT_Cube,           ///< Cube3d
  eE3DT_Cuboid,         ///< Cuboid3d
  eE3DT_Mesh,           ///< Mesh3d
  eE3DT_MeshWithHoles,  ///< MeshWithHoles3d
  eE3DT_Shape,          ///< Shape3d
  eE3DT_Plan,           ///< Plan3d
  eE3DT_Segment,        ///< Segment3d
  eE3DT_Triangle,       ///< Triangle3d
  eE3DT_Cylinder,       ///< Cylinder3d
  eE3DT_Cone,           ///< Cone3d
  eE3DT_Torus,          ///< Torus3d
  eE3DT_Circle,         ///< Circle3d
  eE3DT_Line            ///< Line3d
};

/// What the numbers that a spatial entity stores are.
enum eCoordinateSystem3dType {
  eCS3DT_Cartesian,  ///< coordinates x, y, z
  eCS3DT_Spherical   ///< a distance rho, a polar angle theta and an azimuth phi
};

}  // namespace ormix::geom

namespace ormix {

/// The texts of eEntity3dType.
template <>
struct EnumerationNames<geom::eEntity3dType> {
  static constexpr std::string_view typeName = "eEntity3dType";  ///< name of the enumeration
  /// Names of the enumerators, in order.
  static constexpr std::array<std::string_view, 19> names{
      "eE3DT_Point",     "eE3DT_Vector", "eE3DT_BoundingBox", "eE3DT_PointCloud", "eE3DT_Sphere",
      "eE3DT_Ellipsoid", "eE3DT_Cube",   "eE3DT_Cuboid",      "eE3DT_Mesh",       "eE3DT_MeshWithHoles",
      "eE3DT_Shape",     "eE3DT_Plan",   "eE3DT_Segment",     "eE3DT_Triangle",   "eE3DT_Cylinder",
      "eE3DT_Cone",      "eE3DT_Torus",  "eE3DT_Circle",      "eE3DT_Line"};
};

/// The texts of eCoordinateSystem3dType.
template <>
struct EnumerationNames<geom::eCoordinateSystem3dType> {
  static constexpr std::string_view typeName = "eCoordinateSystem3dType";  ///< name of the enumeration
  /// Names of the enumerators, in order.
  static constexpr std::array<std::string_view, 2> names{"eCS3DT_Cartesian", "eCS3DT_Spherical"};
};

}  // namespace ormix
