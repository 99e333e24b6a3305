#pragma once

#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Transform/DerivedTransform.h>
#include <ORMIXGeometry/Transform/GeometryTransform.ipp>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <tuple>
#include <utility>

namespace ormix::geom {

template <class Self, class Space>
template <class Entity, class Derived,
          std::enable_if_t<std::conjunction_v<typename Derived::template Supports<Entity>,
                                              std::is_same<typename Derived::template Result<Entity>, Entity>>,
                           int>>
bool DerivedTransform<Self, Space>::processInSitu(Entity& entity) const {
  Entity result;
  if (!static_cast<const Self&>(*this).derive(entity, result)) return false;
  entity = std::move(result);
  return true;
}

template <class Self, class Space>
template <class Entity, class Derived, std::enable_if_t<Derived::template Supports<Entity>::value, int>>
typename Space::EntityPtr DerivedTransform<Self, Space>::process(const Entity& entity) const {
  const auto result = boost::make_shared<typename Derived::template Result<Entity>>();
  if (!static_cast<const Self&>(*this).derive(entity, *result)) return {};
  return result;
}

namespace detail {

/// Logs and throws that `Transform` has no answer for the entity.
template <class Space, class Transform>
[[noreturn]] void throwNotDerived(const typename Space::Entity& entity, const char* function, const char* file,
                                  int line) {
  logAndThrow(formatMessage<eTransformMessage>(eTransformMessage::eTM_TransformFailed, Transform::getTypeName(),
                                               toString(Space::typeOf(entity))),
              function, file, line);
}

}  // namespace detail

template <class Self, class Space>
template <class Entity, class Derived>
typename Derived::template Result<Entity> DerivedTransform<Self, Space>::derivedOf(const Entity& entity) {
  typename Derived::template Result<Entity> result;
  if (Derived().derive(entity, result)) return result;
  detail::throwNotDerived<Space, Self>(entity, __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

template <class Self, class Space>
typename Space::EntityPtr DerivedTransform<Self, Space>::derivedOfAny(const typename Space::Entity& entity) {
  if (typename Space::EntityPtr result = Self().apply(entity)) return result;
  detail::throwNotDerived<Space, Self>(entity, __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

namespace detail {

/// Pointers to what a transform has for one entity; empty where it does not support it.
template <class Transform, class Entity>
constexpr auto derivationOf() {
  if constexpr (!Transform::template Supports<Entity>::value)
    return std::make_tuple();
  else if constexpr (!std::is_same_v<typename Transform::template Result<Entity>, Entity>)
    return std::make_tuple(&Transform::template derive<Entity>, &Transform::template process<Entity>,
                           &Transform::template derivedOf<Entity>);
  else
    return std::make_tuple(&Transform::template derive<Entity>, &Transform::template process<Entity>,
                           &Transform::template derivedOf<Entity>, &Transform::template processInSitu<Entity>);
}

/// The same for every entity of a list. A constant with this value that is marked as used makes the compiler
/// instantiate these functions in the source of the transform; the visits in the sources of the entities call them.
template <class Transform, class... Entity>
constexpr auto derivationsOfAll(ClassList<Entity...>) {
  return std::make_tuple(derivationOf<Transform, Entity>()...);
}

}  // namespace detail

}  // namespace ormix::geom
