#pragma once

#include <ORMIXGeometry/Message/TransformMessage.h>
#include <ORMIXGeometry/Transform/GeometricTransformArchive.h>
#include <ORMIXUtil/Object/DynamicRegistrator.h>
#include <ORMIXGeometry/Transform/LinearTransform.ipp>
#include <ORMIXSerialization/Object/RegisteredObject.ipp>

#include <typeinfo>

namespace ormix::geom {

namespace detail {

/// Calls `visit` with the entity as what it is; false for an entity of another class, also of one derived from it.
template <class Entity, class Base, class Visit>
bool visitExactly(const Base& entity, const Visit& visit) {
  if (typeid(entity) != typeid(Entity)) return false;
  visit(static_cast<const Entity&>(entity));
  return true;
}

template <template <class> class Entity, class Base, class Visit>
bool visitOfAnyScalar(const Base& entity, const Visit& visit) {
  return visitExactly<Entity<omReal64>>(entity, visit) || visitExactly<Entity<omReal32>>(entity, visit) ||
         visitExactly<Entity<omInt32>>(entity, visit) || visitExactly<Entity<omUInt32>>(entity, visit);
}

}  // namespace detail

template <class Self, class Math, class Space>
template <class S, class F>
bool LinearTransform<Self, Math, Space>::fields(S& self, F&& item) {
  return item("params", self._transform);
}

template <class Self, class Math, class Space>
BoolResult LinearTransform<Self, Math, Space>::applyInSitu(typename Space::Entity& entity) const {
  if (entity.visitInSitu(static_cast<const Self&>(*this))) return {};
  return failure(formatMessage<eTransformMessage>(eTransformMessage::eTM_TransformFailed, this->getClassName(),
                                                  toString(Space::typeOf(entity))));
}

// An anisotropic scale can turn an entity into one of another class and builds its images itself, in the entities'
// visits. Those answer null to any other linear transform (intended), under which an image is a copy transformed in
// place. That is three passes over the points, so where there may be many the image is made from them at once.
template <class Self, class Math, class Space>
typename Space::EntityPtr LinearTransform<Self, Math, Space>::apply(const typename Space::Entity& entity) const {
  if constexpr (std::is_same_v<Math, typename Space::AnisotropicScale>) {
    return entity.visitNonInSitu(static_cast<const Self&>(*this));
  } else {
    typename Space::EntityPtr image;
    if (Space::visitRuns(entity, [&](const auto& runs) { image = this->image(runs); })) return image;
    image = boost::static_pointer_cast<typename Space::Entity>(entity.duplicateShared());
    return image->visitInSitu(static_cast<const Self&>(*this)) ? image : nullptr;
  }
}

}  // namespace ormix::geom
