#pragma once

#include <ORMIXGeometry/Transform/2d/BaseGeometryTransform2d.h>
#include <ORMIXGeometry/Transform/GeometryTransform.h>
#include <ORMIXMath/Transform/2d/GeometricTransform2dType.h>

namespace ormix::geom {

template <class Self>
class ORMIX_GEOMETRY_API GeometryTransform2d;

/// The bases of the transforms of planar entities.
struct ORMIX_GEOMETRY_API PlanarTransforms {
  using Transform = BaseGeometryTransform2d;
  using Type = eTransform2dType;
  using Entity = BaseGeometryEntity2d;
  using EntityPtr = GeometryEntity2dPtr;
  using EntityPtrColl = GeometryEntity2dPtrColl;
  static constexpr eGeometricTransform2dType s_anisotropicScale = eGT2DT_AnisotropicScale;
  template <class Self>
  using Frame = GeometryTransform2d<Self>;

  static eEntity2dType typeOf(const Entity& entity) { return entity.getEntity2dType(); }
};

/// The uniform part of every transform of planar entities; `Self` states `s_transform2dType` too.
template <class Self>
class ORMIX_GEOMETRY_API GeometryTransform2d : public GeometryTransform<Self, PlanarTransforms> {
 public:
  eTransform2dType getTransform2dType() const final { return type(); }
  static constexpr eTransform2dType type() { return Self::s_transform2dType; }
};

}  // namespace ormix::geom

#define ORMIX_GEOMETRY_TRANSFORM2D_LEVELS(keyword, Class) \
  ORMIX_GEOMETRY_TRANSFORM_LEVELS(keyword, GeometryTransform2d, PlanarTransforms, Class)
