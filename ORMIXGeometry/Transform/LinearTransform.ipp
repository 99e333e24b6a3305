#pragma once

#include <ORMIXGeometry/Transform/LinearTransform.h>
#include <ORMIXGeometry/Transform/RunMapping.ipp>

#include <boost/smart_ptr/make_shared_object.hpp>

namespace ormix::geom {

template <class Self, class Math, class Space>
template <class Entity, std::enable_if_t<keepsClassOf<Math, Entity>(), int>>
bool LinearTransform<Self, Math, Space>::processInSitu(Entity& entity) const {
  return mapInSitu(map(), entity);
}

template <class Self, class Math, class Space>
template <class Entity>
boost::shared_ptr<Entity> LinearTransform<Self, Math, Space>::image(const Entity& entity) const {
  bool isDefined = false;
  boost::shared_ptr<Entity> image;
  if constexpr (detail::isMadeOfRuns<Entity>()) {
    image = boost::make_shared<Entity>();
    isDefined = mapRuns(map(), entity, *image);
  } else {
    image = boost::make_shared<Entity>(entity);
    isDefined = processInSitu(*image);
  }
  return isDefined ? image : nullptr;
}

}  // namespace ormix::geom
