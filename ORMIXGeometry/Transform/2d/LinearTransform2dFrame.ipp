#pragma once

#include <ORMIXGeometry/Transform/2d/LinearTransform2d.ipp>
#include <ORMIXGeometry/Transform/LinearTransformFrame.ipp>

namespace ormix::geom {

template <class Visit>
bool PlanarTransforms::visitRuns(const Entity& entity, const Visit& visit) {
  switch (entity.getEntity2dType()) {
    case eE2DT_PointCloud:
      return detail::visitOfAnyScalar<PointCloud2d>(entity, visit);
    case eE2DT_Polygon:
      return detail::visitOfAnyScalar<Polygon2d>(entity, visit);
    case eE2DT_PolygonWithHoles:
      return detail::visitOfAnyScalar<PolygonWithHoles2d>(entity, visit);
    default:
      return false;
  }
}

template <class Self, class Math>
eTransform2dType LinearTransform2d<Self, Math>::getTransform2dType() const {
  return type();
}

}  // namespace ormix::geom
