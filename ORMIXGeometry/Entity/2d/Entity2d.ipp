#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2dDataArchive.h>
#include <ORMIXGeometry/Measure/2d/AreaMsr2d.h>
#include <ORMIXGeometry/Measure/2d/PerimeterMsr2d.h>
#include <ORMIXGeometry/Transform/2d/AnisotropicScaleTransform2d.h>
#include <ORMIXGeometry/Transform/2d/HomographyTransform2d.h>
#include <ORMIXGeometry/Transform/2d/RigidTransform2d.h>
#include <ORMIXGeometry/Transform/2d/RotationTransform2d.h>
#include <ORMIXGeometry/Transform/2d/ScaleTransform2d.h>
#include <ORMIXGeometry/Transform/2d/SimilarityTransform2d.h>
#include <ORMIXGeometry/Transform/2d/TranslationTransform2d.h>
#include <ORMIXUtil/Object/DynamicRegistrator.h>
#include <ORMIXGeometry/Transform/2d/LinearTransform2d.ipp>
#include <ORMIXSerialization/Object/RegisteredObject.ipp>

#include <type_traits>
#include <utility>

namespace ormix::geom {

namespace detail {

// Whether a transform or a measure has an overload for an entity. Detection is silent: a class that is only declared
// supports nothing, so those that support something must be complete here, and the tests hold the whole matrix of
// supported pairs.
static_assert(sizeof(AnisotropicScaleTransform2d) > 0 && sizeof(HomographyTransform2d) > 0 &&
              sizeof(RigidTransform2d) > 0 && sizeof(RotationTransform2d) > 0 && sizeof(ScaleTransform2d) > 0 &&
              sizeof(SimilarityTransform2d) > 0 && sizeof(TranslationTransform2d) > 0);
static_assert(sizeof(AreaMsr2d) > 0 && sizeof(PerimeterMsr2d) > 0);

template <class Transform, class Entity, class = void>
struct TransformsInSitu : std::false_type {};
template <class Transform, class Entity>
struct TransformsInSitu<Transform, Entity,
                        std::void_t<decltype(std::declval<const Transform&>().processInSitu(std::declval<Entity&>()))>>
    : std::true_type {};

template <class Transform, class Entity, class = void>
struct TransformsNonInSitu : std::false_type {};
template <class Transform, class Entity>
struct TransformsNonInSitu<
    Transform, Entity, std::void_t<decltype(std::declval<const Transform&>().process(std::declval<const Entity&>()))>>
    : std::true_type {};

template <class Measure, class Entity, class Value, class = void>
struct Measures : std::false_type {};
template <class Measure, class Entity, class Value>
struct Measures<Measure, Entity, Value,
                std::void_t<decltype(std::declval<const Measure&>().process(
                    std::declval<const Entity&>(), std::declval<Value&>()))>> : std::true_type {};

template <class Transform, class Entity>
bool processInSitu(const Transform& transform, Entity& entity) {
  if constexpr (TransformsInSitu<Transform, Entity>::value) return static_cast<bool>(transform.processInSitu(entity));
  return false;
}

template <class Transform, class Entity>
GeometryEntity2dPtr processNonInSitu(const Transform& transform, const Entity& entity) {
  if constexpr (TransformsNonInSitu<Transform, Entity>::value) return transform.process(entity);
  return {};
}

template <class Measure, class Entity, class Value>
bool processMeasure(const Measure& measure, const Entity& entity, Value& value) {
  if constexpr (Measures<Measure, Entity, Value>::value) return measure.process(entity, value);
  return false;
}

}  // namespace detail

template <class Self, class Base>
bool Entity2d<Self, Base>::visitInSitu(const AnisotropicScaleTransform2d& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base>
GeometryEntity2dPtr Entity2d<Self, Base>::visitNonInSitu(const AnisotropicScaleTransform2d& transform) const {
  return detail::processNonInSitu(transform, static_cast<const Self&>(*this));
}
template <class Self, class Base>
bool Entity2d<Self, Base>::visitInSitu(const HomographyTransform2d& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base>
GeometryEntity2dPtr Entity2d<Self, Base>::visitNonInSitu(const HomographyTransform2d& transform) const {
  return detail::processNonInSitu(transform, static_cast<const Self&>(*this));
}
template <class Self, class Base>
bool Entity2d<Self, Base>::visitInSitu(const RigidTransform2d& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base>
GeometryEntity2dPtr Entity2d<Self, Base>::visitNonInSitu(const RigidTransform2d& transform) const {
  return detail::processNonInSitu(transform, static_cast<const Self&>(*this));
}
template <class Self, class Base>
bool Entity2d<Self, Base>::visitInSitu(const RotationTransform2d& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base>
GeometryEntity2dPtr Entity2d<Self, Base>::visitNonInSitu(const RotationTransform2d& transform) const {
  return detail::processNonInSitu(transform, static_cast<const Self&>(*this));
}
template <class Self, class Base>
bool Entity2d<Self, Base>::visitInSitu(const ScaleTransform2d& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base>
GeometryEntity2dPtr Entity2d<Self, Base>::visitNonInSitu(const ScaleTransform2d& transform) const {
  return detail::processNonInSitu(transform, static_cast<const Self&>(*this));
}
template <class Self, class Base>
bool Entity2d<Self, Base>::visitInSitu(const SimilarityTransform2d& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base>
GeometryEntity2dPtr Entity2d<Self, Base>::visitNonInSitu(const SimilarityTransform2d& transform) const {
  return detail::processNonInSitu(transform, static_cast<const Self&>(*this));
}
template <class Self, class Base>
bool Entity2d<Self, Base>::visitInSitu(const TranslationTransform2d& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base>
GeometryEntity2dPtr Entity2d<Self, Base>::visitNonInSitu(const TranslationTransform2d& transform) const {
  return detail::processNonInSitu(transform, static_cast<const Self&>(*this));
}
template <class Self, class Base>
bool Entity2d<Self, Base>::visitInSitu(const CentroidTransform2d& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base>
GeometryEntity2dPtr Entity2d<Self, Base>::visitNonInSitu(const CentroidTransform2d& transform) const {
  return detail::processNonInSitu(transform, static_cast<const Self&>(*this));
}
template <class Self, class Base>
bool Entity2d<Self, Base>::visitInSitu(const ConvexHullTransform2d& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base>
GeometryEntity2dPtr Entity2d<Self, Base>::visitNonInSitu(const ConvexHullTransform2d& transform) const {
  return detail::processNonInSitu(transform, static_cast<const Self&>(*this));
}
template <class Self, class Base>
bool Entity2d<Self, Base>::visitInSitu(const EnvelopeTransform2d& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base>
GeometryEntity2dPtr Entity2d<Self, Base>::visitNonInSitu(const EnvelopeTransform2d& transform) const {
  return detail::processNonInSitu(transform, static_cast<const Self&>(*this));
}
template <class Self, class Base>
bool Entity2d<Self, Base>::visitInSitu(const SimplifyTransform2d& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base>
GeometryEntity2dPtr Entity2d<Self, Base>::visitNonInSitu(const SimplifyTransform2d& transform) const {
  return detail::processNonInSitu(transform, static_cast<const Self&>(*this));
}
template <class Self, class Base>
bool Entity2d<Self, Base>::visitInSitu(const MinEnclosingCircleTransform2d& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base>
GeometryEntity2dPtr Entity2d<Self, Base>::visitNonInSitu(const MinEnclosingCircleTransform2d& transform) const {
  return detail::processNonInSitu(transform, static_cast<const Self&>(*this));
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
  return Self::s_entity2dType;
}

/// Registers a class template for the four scalar types while the library is loaded.
template <template <class> class Class>
struct ScalarRegistrators {
  DynamicRegistrator<Class<omInt32>> int32;
  DynamicRegistrator<Class<omUInt32>> uint32;
  DynamicRegistrator<Class<omReal32>> real32;
  DynamicRegistrator<Class<omReal64>> real64;
};

}  // namespace ormix::geom
