#pragma once

#include <ORMIXGeometry/Entity/ClassList.h>

// Not installed.
namespace ormix::geom::detail {

/// Calls `function(typed)` with the entity as the class of the list that it is of; derived classes are of their base.
/// \return the function's answer, converted to bool; false where it is of no class of the list
template <class... Class, class Entity, class Function>
bool callTyped(ClassList<Class...>, const Entity& entity, Function&& function) {
  bool answer = false;
  const auto isOf = [&](auto tag) {
    const auto* const typed = dynamic_cast<const typename decltype(tag)::Type*>(&entity);
    if (typed) answer = function(*typed);
    return typed != nullptr;
  };
  (void)(... || isOf(ClassTag<Class>()));
  return answer;
}

}  // namespace ormix::geom::detail
