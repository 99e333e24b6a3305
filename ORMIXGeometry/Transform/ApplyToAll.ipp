#pragma once

#include <ORMIXGeometry/Message/TransformMessage.h>

#include <cstddef>
#include <string>
#include <utility>

// A transform applied to a collection of entities; `Space` is PlanarTransforms or SpatialTransforms.

namespace ormix::geom::detail {

template <class Space>
std::string failureText(const typename Space::Transform& transform, const typename Space::EntityPtr& entity) {
  return formatMessage<eTransformMessage>(eTransformMessage::eTM_TransformFailed, transform.getClassName(),
                                          entity ? toString(Space::typeOf(*entity)) : "null");
}

/// Calls `visit` with each entity of a collection, in order, until it fails, and answers that failure. Entities that
/// lie apart in memory are asked for two steps before their turn, their pointers being there already.
template <class EntityPtrColl, class Visit>
BoolResult visitAll(const EntityPtrColl& entities, const Visit& visit) {
  constexpr std::size_t nbAhead = 2;
  for (std::size_t at = 0; at < entities.size(); ++at) {
    if (at + nbAhead < entities.size()) __builtin_prefetch(entities[at + nbAhead].get());
    BoolResult result = visit(entities[at]);
    if (!result) return result;
  }
  return {};
}

template <class Space>
BoolResult applyToAll(const typename Space::Transform& transform, typename Space::EntityPtrColl& entities) {
  return visitAll(entities, [&](const typename Space::EntityPtr& entity) { return transform.applyInSitu(entity); });
}

template <class Space>
BoolResult imagesOfAll(const typename Space::Transform& transform, const typename Space::EntityPtrColl& in,
                       typename Space::EntityPtrColl& out) {
  if (&in == &out) {
    typename Space::EntityPtrColl entities;
    entities.reserve(in.size());
    entities.swap(out);
    return imagesOfAll<Space>(transform, entities, out);
  }
  out.clear();
  out.reserve(in.size());
  return visitAll(in, [&](const typename Space::EntityPtr& entity) -> BoolResult {
    typename Space::EntityPtr image = entity ? transform.apply(*entity) : nullptr;
    if (!image) return failure(failureText<Space>(transform, entity));
    out.push_back(std::move(image));
    return {};
  });
}

}  // namespace ormix::geom::detail
