#pragma once

#include <ORMIXGeometry/Transform/3d/GeometryTransform3d.h>
#include <ORMIXGeometry/Transform/LinearTransform.h>
#include <ORMIXMath/Transform/3d/BaseGeometricTransform3d.h>

namespace ormix::geom {

// clang-format off
template <class T> inline constexpr eMapRequirement s_mapRequirement<Point3d<T>>         = eMR_StraightLines;
template <>        inline constexpr eMapRequirement s_mapRequirement<Vector3d>           = eMR_StraightLines;
template <class T> inline constexpr eMapRequirement s_mapRequirement<BoundingBox3d<T>>   = eMR_Axes;
template <class T> inline constexpr eMapRequirement s_mapRequirement<Segment3d<T>>       = eMR_StraightLines;
template <class T> inline constexpr eMapRequirement s_mapRequirement<Triangle3d<T>>      = eMR_Parallels;
template <>        inline constexpr eMapRequirement s_mapRequirement<Plan3d>             = eMR_NotSupported;
template <class T> inline constexpr eMapRequirement s_mapRequirement<Sphere3d<T>>        = eMR_Angles;
template <class T> inline constexpr eMapRequirement s_mapRequirement<Ellipsoid3d<T>>     = eMR_Angles;
template <class T> inline constexpr eMapRequirement s_mapRequirement<Cube3d<T>>          = eMR_Angles;
template <class T> inline constexpr eMapRequirement s_mapRequirement<Cuboid3d<T>>        = eMR_Angles;
template <class T> inline constexpr eMapRequirement s_mapRequirement<PointCloud3d<T>>    = eMR_StraightLines;
template <class T> inline constexpr eMapRequirement s_mapRequirement<Mesh3d<T>>          = eMR_StraightLines;
template <class T> inline constexpr eMapRequirement s_mapRequirement<MeshWithHoles3d<T>> = eMR_StraightLines;
template <>        inline constexpr eMapRequirement s_mapRequirement<Shape3d>            = eMR_StraightLines;
template <class T> inline constexpr eMapRequirement s_mapRequirement<Cylinder3d<T>>      = eMR_Angles;
template <class T> inline constexpr eMapRequirement s_mapRequirement<Cone3d<T>>          = eMR_Angles;
template <class T> inline constexpr eMapRequirement s_mapRequirement<Torus3d<T>>         = eMR_Angles;
template <class T> inline constexpr eMapRequirement s_mapRequirement<Circle3d<T>>        = eMR_Angles;
template <>        inline constexpr eMapRequirement s_mapRequirement<Line3d>             = eMR_Parallels;

template <class T> inline constexpr bool s_isRunOfPoints<PointCloud3d<T>> = true;
// clang-format on

/// A linear transform of spatial entities; `Self` states `s_transform3dType`. Which entities it takes follows from the
/// table above and from what its map preserves; the others answer failure.
///
/// Points, ends, corners and vertices are mapped one by one; a vector as the position it leads to from the origin, so
/// that offsets shift it (intended). Of the solids the stored centre is mapped, lengths are multiplied by the scale
/// with its sign, and the orientation is composed with the rotation; where the map keeps directions the angles stay to
/// the bit. That makes of a sphere and of an ellipsoid their image. A cube or a cuboid has its centre turned along with
/// its corners about the origin of coordinates, so the corners are the images of those before under a scale; under a
/// translation in general only when no angle turns them, under a rotation only when the centre is the origin
/// (intended).
///
/// The image of a cylinder, a cone, a torus, a circle or a line is that set of points: radii stay positive, and an axis
/// or a normal is turned by the rotation, not by the sign of a scale. A scale of 0 leaves no line.
///
/// Of a shape the surfaces are mapped and the voxels left as they are: no other grid is their image.
template <class Self, class Math>
using LinearTransform3d = LinearTransform<Self, Math, SpatialTransforms>;

}  // namespace ormix::geom

#define ORMIX_GEOMETRY_LINEAR_TRANSFORM3D_LEVELS(keyword, Class, Math) \
  ORMIX_GEOMETRY_LINEAR_TRANSFORM_LEVELS(keyword, GeometryTransform3d, SpatialTransforms, Class, Math)
