#pragma once

#include "../Frame/Calls.h"
#include "../Frame/EntityArgument.h"
#include "../Frame/Errors.h"
#include "../Frame/Object.h"

#include <ORMIXGeometry/Message/TransformMessage.h>
#include <ORMIXGeometry/Transform/2d/GeometryTransform2d.h>
#include <ORMIXGeometry/Transform/3d/GeometryTransform3d.h>

#include <string>
#include <type_traits>
#include <vector>

/// \file
/// Images of entities under any transform. `Space` is PlanarTransforms or SpatialTransforms.

namespace ormix::python {

template <class Space>
constexpr bool s_isPlanar = std::is_same_v<Space, geom::PlanarTransforms>;

/// The dimension of the space of transforms.
template <class Space>
constexpr geom::eCoordinateDimension s_dimensionOf = s_isPlanar<Space> ? geom::eCD_2d : geom::eCD_3d;

/// The images of entities that were checked to be of the space, in one loop without the interpreter lock.
/// \throw Error for the first that has none, with its class and, of many, its index
template <class Space>
std::vector<typename Space::EntityPtr> imagesOf(const typename Space::Transform& transform,
                                                const EntityArgument& entities) {
  const auto entity = [&](std::size_t i) -> const typename Space::Entity& {
    return static_cast<const typename Space::Entity&>(entities[i]);
  };
  std::vector<typename Space::EntityPtr> images(entities.size());
  std::size_t nbMapped = 0;
  {
    const Reading reading;
    while (nbMapped < images.size() && (images[nbMapped] = transform.apply(entity(nbMapped))) != nullptr) ++nbMapped;
  }
  if (nbMapped == images.size()) return images;
  const typename Space::Entity& failed = entity(nbMapped);
  raiseError(entities.place(nbMapped) +
                 formatMessage<geom::eTransformMessage>(geom::eTransformMessage::eTM_TransformFailed,
                                                        transform.getClassName(), toString(Space::typeOf(failed))) +
                 " (" + failed.getClassName() + ')',
             failed.getClassName());
}

/// The image of one entity, or a list of those of many.
template <class Space>
py::object apply(const typename Space::Transform& transform, const EntityArgument& entities) {
  entities.require(s_dimensionOf<Space>);
  const auto images = imagesOf<Space>(transform, entities);
  if (entities.isOne()) return py::cast(images[0]);
  py::list list(images.size());
  for (std::size_t i = 0; i < images.size(); ++i) list[i] = images[i];
  return std::move(list);
}

template <class Space>
py::object apply(const typename Space::Transform& transform, const py::object& argument) {
  return apply<Space>(transform, EntityArgument(argument));
}

/// Raises BufferError when an array shows memory of the entity that a transform which leaves out vertices would move.
/// @{
void requireNoViews(geom::BaseGeometryEntity2d& entity);
void requireNoViews(geom::BaseGeometryEntity3d& entity);
/// @}

}  // namespace ormix::python
