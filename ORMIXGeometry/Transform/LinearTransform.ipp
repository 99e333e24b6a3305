#pragma once

#include <ORMIXGeometry/Transform/LinearTransform.h>
#include <ORMIXGeometry/Transform/LinearMapRules.ipp>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <typeinfo>

namespace ormix::geom {

template <class Self, class Math, class Space>
template <class Entity, std::enable_if_t<keepsClassOf<Math, Entity>(), int>>
bool LinearTransform<Self, Math, Space>::processInSitu(Entity& entity) const {
  return mapInSitu(map(), entity);
}

// A run of a class derived from `Entity` is none here: to be copied as it says.
template <class Self, class Math, class Space>
template <class Entity, std::enable_if_t<s_isRunOfPoints<Entity>, int>>
typename Space::EntityPtr LinearTransform<Self, Math, Space>::process(const Entity& run) const {
  if (_runImage && typeid(run) == typeid(Entity)) *_runImage = {true, image(run)};
  return {};
}

template <class Self, class Math, class Space>
template <class Entity>
boost::shared_ptr<Entity> LinearTransform<Self, Math, Space>::image(const Entity& entity) const {
  bool isDefined = false;
  boost::shared_ptr<Entity> image;
  if constexpr (s_isRunOfPoints<Entity>) {
    image = boost::make_shared<Entity>();
    isDefined = mapToImage(map(), entity, *image);
  } else {
    image = boost::make_shared<Entity>(entity);
    isDefined = processInSitu(*image);
  }
  return isDefined ? image : nullptr;
}

}  // namespace ormix::geom
