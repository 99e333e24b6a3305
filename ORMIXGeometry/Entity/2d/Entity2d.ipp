#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2dDataArchive.h>
#include <ORMIXGeometry/Measure/2d/AreaMsr2d.h>
#include <ORMIXGeometry/Measure/2d/HuMomentsMsr2d.h>
#include <ORMIXGeometry/Measure/2d/MomentsMsr2d.h>
#include <ORMIXGeometry/Measure/2d/PerimeterMsr2d.h>
#include <ORMIXGeometry/Transform/2d/AnisotropicScaleTransform2d.h>
#include <ORMIXGeometry/Transform/2d/CentroidTransform2d.h>
#include <ORMIXGeometry/Transform/2d/ConvexHullTransform2d.h>
#include <ORMIXGeometry/Transform/2d/EnvelopeTransform2d.h>
#include <ORMIXGeometry/Transform/2d/HomographyTransform2d.h>
#include <ORMIXGeometry/Transform/2d/MinEnclosingCircleTransform2d.h>
#include <ORMIXGeometry/Transform/2d/RigidTransform2d.h>
#include <ORMIXGeometry/Transform/2d/RotationTransform2d.h>
#include <ORMIXGeometry/Transform/2d/ScaleTransform2d.h>
#include <ORMIXGeometry/Transform/2d/SimilarityTransform2d.h>
#include <ORMIXGeometry/Transform/2d/SimplifyTransform2d.h>
#include <ORMIXGeometry/Transform/2d/TranslationTransform2d.h>
#include <ORMIXGeometry/Entity/EntityVisits.ipp>
#include <ORMIXGeometry/Transform/2d/LinearTransform2d.ipp>

namespace ormix::geom {

// Transforms and measures that support an entity must be defined here; EntityVisits.ipp says why.
static_assert(sizeof(AnisotropicScaleTransform2d) > 0 && sizeof(HomographyTransform2d) > 0 &&
              sizeof(RigidTransform2d) > 0 && sizeof(RotationTransform2d) > 0 && sizeof(ScaleTransform2d) > 0 &&
              sizeof(SimilarityTransform2d) > 0 && sizeof(TranslationTransform2d) > 0);
static_assert(sizeof(CentroidTransform2d) > 0 && sizeof(ConvexHullTransform2d) > 0 && sizeof(EnvelopeTransform2d) > 0 &&
              sizeof(MinEnclosingCircleTransform2d) > 0 && sizeof(SimplifyTransform2d) > 0);
static_assert(sizeof(AreaMsr2d) > 0 && sizeof(PerimeterMsr2d) > 0 && sizeof(MomentsMsr2d) > 0 &&
              sizeof(HuMomentsMsr2d) > 0);

template <class Self, class Base>
bool Entity2d<Self, Base>::visitInSitu(const SimplifyTransform2d& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base>
GeometryEntity2dPtr Entity2d<Self, Base>::visitNonInSitu(const SimplifyTransform2d& transform) const {
  return detail::processNonInSitu<GeometryEntity2dPtr>(transform, static_cast<const Self&>(*this));
}
template <class Self, class Base>
bool Entity2d<Self, Base>::visitInSitu(const MinEnclosingCircleTransform2d& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base>
GeometryEntity2dPtr Entity2d<Self, Base>::visitNonInSitu(const MinEnclosingCircleTransform2d& transform) const {
  return detail::processNonInSitu<GeometryEntity2dPtr>(transform, static_cast<const Self&>(*this));
}

template <class Self, class Base>
bool Entity2d<Self, Base>::visit(const PerimeterMsr2d& measure, omReal64& value) const {
  return detail::processMeasure(measure, static_cast<const Self&>(*this), value);
}
template <class Self, class Base>
bool Entity2d<Self, Base>::visit(const AreaMsr2d& measure, omReal64& value) const {
  return detail::processMeasure(measure, static_cast<const Self&>(*this), value);
}
template <class Self, class Base>
bool Entity2d<Self, Base>::visit(const MomentsMsr2d& measure, Moments2dO3& value) const {
  return detail::processMeasure(measure, static_cast<const Self&>(*this), value);
}
template <class Self, class Base>
bool Entity2d<Self, Base>::visit(const HuMomentsMsr2d& measure, HuMoments2dO3& value) const {
  return detail::processMeasure(measure, static_cast<const Self&>(*this), value);
}

template <class Self, class Base>
eCoordinateSystem2dType Entity2d<Self, Base>::getCoordinateSystem2dType() const {
  return Self::s_coordinateSystem2dType;
}
template <class Self, class Base>
eEntity2dType Entity2d<Self, Base>::getEntity2dType() const {
  static_assert(isListed<Self>(PlanarEntityList()),
                "an entity of the plane is missing in PlanarEntityList: add it in Entity/2d/PlanarClasses.h");
  return Self::s_entity2dType;
}

}  // namespace ormix::geom
