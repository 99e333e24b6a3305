#pragma once

#include <ORMIXGeometry/Message/TransformMessage.h>

#include <string>
#include <utility>

// A transform applied to a collection of entities; `Space` is PlanarTransforms or SpatialTransforms.

namespace ormix::geom::detail {

template <class Space>
std::string failureText(const typename Space::Transform& transform, const typename Space::EntityPtr& entity) {
  return formatMessage<eTransformMessage>(eTransformMessage::eTM_TransformFailed, transform.getClassName(),
                                          entity ? toString(Space::typeOf(*entity)) : "null");
}

template <class Space>
BoolResult applyToAll(const typename Space::Transform& transform, typename Space::EntityPtrColl& entities) {
  for (const typename Space::EntityPtr& entity : entities) {
    BoolResult result = transform.applyInSitu(entity);
    if (!result) return result;
  }
  return {};
}

template <class Space>
BoolResult imagesOfAll(const typename Space::Transform& transform, const typename Space::EntityPtrColl& in,
                       typename Space::EntityPtrColl& out) {
  // Held here: `out` may be `in`.
  const typename Space::EntityPtrColl entities = in;
  out.clear();
  out.reserve(entities.size());
  for (const typename Space::EntityPtr& entity : entities) {
    typename Space::EntityPtr image = transform.apply(entity);
    if (!image) return failure(failureText<Space>(transform, entity));
    out.push_back(std::move(image));
  }
  return {};
}

}  // namespace ormix::geom::detail
