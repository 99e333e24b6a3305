#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3dDataArchive.h>
#include <ORMIXGeometry/Measure/3d/AreaMsr3d.h>
#include <ORMIXGeometry/Measure/3d/VolumeMsr3d.h>
#include <ORMIXGeometry/Transform/3d/AnisotropicScaleTransform3d.h>
#include <ORMIXGeometry/Transform/3d/CentroidTransform3d.h>
#include <ORMIXGeometry/Transform/3d/ConvexHullTransform3d.h>
#include <ORMIXGeometry/Transform/3d/EnvelopeTransform3d.h>
#include <ORMIXGeometry/Transform/3d/HomographyTransform3d.h>
#include <ORMIXGeometry/Transform/3d/MinEnclosingSphereTransform3d.h>
#include <ORMIXGeometry/Transform/3d/RigidTransform3d.h>
#include <ORMIXGeometry/Transform/3d/RotationTransform3d.h>
#include <ORMIXGeometry/Transform/3d/ScaleTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SimilarityTransform3d.h>
#include <ORMIXGeometry/Transform/3d/TranslationTransform3d.h>
#include <ORMIXGeometry/Entity/EntityVisits.ipp>
#include <ORMIXGeometry/Transform/3d/LinearTransform3d.ipp>

namespace ormix::geom {

// The transforms and measures that support an entity must be complete types here: see EntityVisits.ipp.
static_assert(sizeof(AnisotropicScaleTransform3d) > 0 && sizeof(HomographyTransform3d) > 0 &&
              sizeof(RigidTransform3d) > 0 && sizeof(RotationTransform3d) > 0 && sizeof(ScaleTransform3d) > 0 &&
              sizeof(SimilarityTransform3d) > 0 && sizeof(TranslationTransform3d) > 0);
static_assert(sizeof(CentroidTransform3d) > 0 && sizeof(ConvexHullTransform3d) > 0 && sizeof(EnvelopeTransform3d) > 0 &&
              sizeof(MinEnclosingSphereTransform3d) > 0);
static_assert(sizeof(AreaMsr3d) > 0 && sizeof(VolumeMsr3d) > 0);

template <class Self, class Base>
bool Entity3d<Self, Base>::visitInSitu(const MinEnclosingSphereTransform3d& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base>
GeometryEntity3dPtr Entity3d<Self, Base>::visitNonInSitu(const MinEnclosingSphereTransform3d& transform) const {
  return detail::processNonInSitu<GeometryEntity3dPtr>(transform, static_cast<const Self&>(*this));
}

template <class Self, class Base>
bool Entity3d<Self, Base>::visit(const AreaMsr3d& measure, omReal64& value) const {
  return detail::processMeasure(measure, static_cast<const Self&>(*this), value);
}
template <class Self, class Base>
bool Entity3d<Self, Base>::visit(const VolumeMsr3d& measure, omReal64& value) const {
  return detail::processMeasure(measure, static_cast<const Self&>(*this), value);
}

template <class Self, class Base>
eCoordinateSystem3dType Entity3d<Self, Base>::getCoordinateSystem3dType() const {
  return Self::s_coordinateSystem3dType;
}
template <class Self, class Base>
eEntity3dType Entity3d<Self, Base>::getEntity3dType() const {
  static_assert(isListed<Self>(SpatialEntityList()),
                "an entity of space is missing in SpatialEntityList: add it in Entity/3d/SpatialClasses.h");
  return Self::s_entity3dType;
}

}  // namespace ormix::geom
