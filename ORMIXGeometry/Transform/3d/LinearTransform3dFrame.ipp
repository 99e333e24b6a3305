#pragma once

#include <ORMIXGeometry/Transform/3d/LinearTransform3d.ipp>
#include <ORMIXGeometry/Transform/LinearTransformFrame.ipp>

namespace ormix::geom {

template <class Visit>
bool SpatialTransforms::visitRuns(const Entity& entity, const Visit& visit) {
  switch (entity.getEntity3dType()) {
    case eE3DT_PointCloud:
      return detail::visitOfAnyScalar<PointCloud3d>(entity, visit);
    case eE3DT_Mesh:
      return detail::visitOfAnyScalar<Mesh3d>(entity, visit);
    case eE3DT_MeshWithHoles:
      return detail::visitOfAnyScalar<MeshWithHoles3d>(entity, visit);
    case eE3DT_Shape:
      return detail::visitExactly<Shape3d>(entity, visit);
    default:
      return false;
  }
}

template <class Self, class Math>
eTransform3dType LinearTransform3d<Self, Math>::getTransform3dType() const {
  return type();
}

}  // namespace ormix::geom
