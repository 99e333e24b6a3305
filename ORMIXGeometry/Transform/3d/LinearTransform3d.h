#pragma once

#include <ORMIXGeometry/Transform/3d/BaseGeometryTransform3d.h>
#include <ORMIXGeometry/Transform/LinearTransform.h>
#include <ORMIXMath/Transform/3d/BaseGeometricTransform3d.h>

namespace ormix::geom {

// clang-format off
template <class T> inline constexpr bool Preserved::*s_neededBy<Point3d<T>>         = &Preserved::lines;
template <>        inline constexpr bool Preserved::*s_neededBy<Vector3d>           = &Preserved::lines;
template <class T> inline constexpr bool Preserved::*s_neededBy<BoundingBox3d<T>>   = &Preserved::axes;
template <class T> inline constexpr bool Preserved::*s_neededBy<Segment3d<T>>       = &Preserved::lines;
template <class T> inline constexpr bool Preserved::*s_neededBy<Triangle3d<T>>      = &Preserved::ratios;
template <class T> inline constexpr bool Preserved::*s_neededBy<Sphere3d<T>>        = &Preserved::angles;
template <class T> inline constexpr bool Preserved::*s_neededBy<Ellipsoid3d<T>>     = &Preserved::angles;
template <class T> inline constexpr bool Preserved::*s_neededBy<Cube3d<T>>          = &Preserved::angles;
template <class T> inline constexpr bool Preserved::*s_neededBy<Cuboid3d<T>>        = &Preserved::angles;
template <class T> inline constexpr bool Preserved::*s_neededBy<PointCloud3d<T>>    = &Preserved::lines;
template <class T> inline constexpr bool Preserved::*s_neededBy<Mesh3d<T>>          = &Preserved::lines;
template <class T> inline constexpr bool Preserved::*s_neededBy<MeshWithHoles3d<T>> = &Preserved::lines;
template <>        inline constexpr bool Preserved::*s_neededBy<Shape3d>            = &Preserved::lines;
// clang-format on

/// The bases of the transforms of spatial entities.
struct ORMIX_GEOMETRY_API SpatialTransforms {
  using Transform = BaseGeometryTransform3d;
  using Type = eTransform3dType;
  using AnisotropicScale = AnisotropicScale3d;
  using Entity = BaseGeometryEntity3d;
  using EntityPtr = GeometryEntity3dPtr;
  using EntityPtrColl = GeometryEntity3dPtrColl;

  static eEntity3dType typeOf(const Entity& entity) { return entity.getEntity3dType(); }

  /// Calls `visit` with an entity that is made of runs of points as what it is; false for any other, also one of a
  /// class derived from these.
  template <class Visit>
  static bool visitRuns(const Entity& entity, const Visit& visit);
};

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
/// Of a shape the surfaces are mapped and the voxels left as they are: no other grid is their image.
template <class Self, class Math>
class ORMIX_GEOMETRY_API LinearTransform3d : public LinearTransform<Self, Math, SpatialTransforms> {
 public:
  eTransform3dType getTransform3dType() const final;
  static constexpr eTransform3dType type() { return Self::s_transform3dType; }

 protected:
  using LinearTransform<Self, Math, SpatialTransforms>::LinearTransform;
};

}  // namespace ormix::geom

#define ORMIX_GEOMETRY_LINEAR_TRANSFORM3D_LEVELS(keyword, Class, Math) \
  ORMIX_GEOMETRY_LINEAR_TRANSFORM_LEVELS(keyword, LinearTransform3d, SpatialTransforms, Class, Math)
