#pragma once

#include <ORMIXGeometry/Transform/3d/BaseGeometryTransform3d.h>
#include <ORMIXGeometry/Transform/GeometryTransform.h>
#include <ORMIXMath/Transform/3d/GeometricTransform3dType.h>

namespace ormix::geom {

template <class Self>
class ORMIX_GEOMETRY_API GeometryTransform3d;

/// The bases of the transforms of spatial entities.
struct ORMIX_GEOMETRY_API SpatialTransforms {
  using Transform = BaseGeometryTransform3d;
  using Type = eTransform3dType;
  using Entity = BaseGeometryEntity3d;
  using EntityPtr = GeometryEntity3dPtr;
  using EntityPtrColl = GeometryEntity3dPtrColl;
  static constexpr eGeometricTransform3dType s_anisotropicScale = eGT3DT_AnisotropicScale;
  template <class Self>
  using Frame = GeometryTransform3d<Self>;

  static eEntity3dType typeOf(const Entity& entity) { return entity.getEntity3dType(); }
};

/// The uniform part of every transform of spatial entities; `Self` states `s_transform3dType` too.
template <class Self>
class ORMIX_GEOMETRY_API GeometryTransform3d : public GeometryTransform<Self, SpatialTransforms> {
 public:
  eTransform3dType getTransform3dType() const final { return type(); }
  static constexpr eTransform3dType type() { return Self::s_transform3dType; }
};

}  // namespace ormix::geom

#define ORMIX_GEOMETRY_TRANSFORM3D_LEVELS(keyword, Class) \
  ORMIX_GEOMETRY_TRANSFORM_LEVELS(keyword, GeometryTransform3d, SpatialTransforms, Class)
