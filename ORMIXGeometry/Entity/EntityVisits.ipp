#pragma once

#include <ORMIXGeometry/Entity/EntityVisits.h>
#include <ORMIXSerialization/Object/RegisteredObject.ipp>

#include <type_traits>
#include <utility>

namespace ormix::geom {

namespace detail {

// Whether a transform or a measure has an overload for an entity. A class that is declared but not defined has no
// overloads, and this gives no error; hence transforms and measures must be defined where these templates are
// instantiated. Entity2d.ipp and Entity3d.ipp assert this, and the tests check every pair of transform and entity.
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

template <class EntityPtr, class Transform, class Entity>
EntityPtr processNonInSitu(const Transform& transform, const Entity& entity) {
  if constexpr (TransformsNonInSitu<Transform, Entity>::value) return transform.process(entity);
  return {};
}

template <class Measure, class Entity, class Value>
bool processMeasure(const Measure& measure, const Entity& entity, Value& value) {
  if constexpr (Measures<Measure, Entity, Value>::value) return measure.process(entity, value);
  return false;
}

}  // namespace detail

template <class Self, class Base, class Space>
bool EntityVisits<Self, Base, Space>::visitInSitu(const typename Space::AnisotropicScale& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base, class Space>
typename Space::EntityPtr EntityVisits<Self, Base, Space>::visitNonInSitu(
    const typename Space::AnisotropicScale& transform) const {
  return detail::processNonInSitu<EntityPtr>(transform, static_cast<const Self&>(*this));
}
template <class Self, class Base, class Space>
bool EntityVisits<Self, Base, Space>::visitInSitu(const typename Space::Homography& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base, class Space>
typename Space::EntityPtr EntityVisits<Self, Base, Space>::visitNonInSitu(
    const typename Space::Homography& transform) const {
  return detail::processNonInSitu<EntityPtr>(transform, static_cast<const Self&>(*this));
}
template <class Self, class Base, class Space>
bool EntityVisits<Self, Base, Space>::visitInSitu(const typename Space::Rigid& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base, class Space>
typename Space::EntityPtr EntityVisits<Self, Base, Space>::visitNonInSitu(
    const typename Space::Rigid& transform) const {
  return detail::processNonInSitu<EntityPtr>(transform, static_cast<const Self&>(*this));
}
template <class Self, class Base, class Space>
bool EntityVisits<Self, Base, Space>::visitInSitu(const typename Space::Rotation& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base, class Space>
typename Space::EntityPtr EntityVisits<Self, Base, Space>::visitNonInSitu(
    const typename Space::Rotation& transform) const {
  return detail::processNonInSitu<EntityPtr>(transform, static_cast<const Self&>(*this));
}
template <class Self, class Base, class Space>
bool EntityVisits<Self, Base, Space>::visitInSitu(const typename Space::Scale& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base, class Space>
typename Space::EntityPtr EntityVisits<Self, Base, Space>::visitNonInSitu(
    const typename Space::Scale& transform) const {
  return detail::processNonInSitu<EntityPtr>(transform, static_cast<const Self&>(*this));
}
template <class Self, class Base, class Space>
bool EntityVisits<Self, Base, Space>::visitInSitu(const typename Space::Similarity& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base, class Space>
typename Space::EntityPtr EntityVisits<Self, Base, Space>::visitNonInSitu(
    const typename Space::Similarity& transform) const {
  return detail::processNonInSitu<EntityPtr>(transform, static_cast<const Self&>(*this));
}
template <class Self, class Base, class Space>
bool EntityVisits<Self, Base, Space>::visitInSitu(const typename Space::Translation& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base, class Space>
typename Space::EntityPtr EntityVisits<Self, Base, Space>::visitNonInSitu(
    const typename Space::Translation& transform) const {
  return detail::processNonInSitu<EntityPtr>(transform, static_cast<const Self&>(*this));
}
template <class Self, class Base, class Space>
bool EntityVisits<Self, Base, Space>::visitInSitu(const typename Space::Centroid& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base, class Space>
typename Space::EntityPtr EntityVisits<Self, Base, Space>::visitNonInSitu(
    const typename Space::Centroid& transform) const {
  return detail::processNonInSitu<EntityPtr>(transform, static_cast<const Self&>(*this));
}
template <class Self, class Base, class Space>
bool EntityVisits<Self, Base, Space>::visitInSitu(const typename Space::ConvexHull& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base, class Space>
typename Space::EntityPtr EntityVisits<Self, Base, Space>::visitNonInSitu(
    const typename Space::ConvexHull& transform) const {
  return detail::processNonInSitu<EntityPtr>(transform, static_cast<const Self&>(*this));
}
template <class Self, class Base, class Space>
bool EntityVisits<Self, Base, Space>::visitInSitu(const typename Space::Envelope& transform) {
  return detail::processInSitu(transform, static_cast<Self&>(*this));
}
template <class Self, class Base, class Space>
typename Space::EntityPtr EntityVisits<Self, Base, Space>::visitNonInSitu(
    const typename Space::Envelope& transform) const {
  return detail::processNonInSitu<EntityPtr>(transform, static_cast<const Self&>(*this));
}

}  // namespace ormix::geom
