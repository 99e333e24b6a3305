#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXSerialization/Object/RegisteredObject.h>

namespace ormix::geom {

/// The uniform part of every transform of the entities of one space: it is registered, and reaches an entity through
/// the visits of its class, which call back what `Self` has for it. `Space` names the bases, PlanarTransforms or
/// SpatialTransforms. `Self` states `s_className`, its fields, and for the entities that it takes
/// \code
/// bool processInSitu(Entity& entity) const;               // false, the entity untouched, where there is no image
/// EntityPtr process(const Entity& entity) const;          // a new entity, null where there is no image
/// \endcode
/// The bodies are in GeometryTransform.ipp.
template <class Self, class Space>
class ORMIX_GEOMETRY_API GeometryTransform : public RegisteredObject<Self, typename Space::Transform> {
  using Base = typename Space::Transform;

 public:
  using Base::apply;
  using Base::applyInSitu;

  BoolResult applyInSitu(typename Space::Entity& entity) const final;
  typename Space::EntityPtr apply(const typename Space::Entity& entity) const override;

 protected:
  GeometryTransform() = default;
  GeometryTransform(const GeometryTransform&) = default;
  GeometryTransform(GeometryTransform&&) = default;
  GeometryTransform& operator=(const GeometryTransform&) = default;
  GeometryTransform& operator=(GeometryTransform&&) = default;
  ~GeometryTransform() override = default;
};

}  // namespace ormix::geom

// The levels of one transform, declared before its class and instantiated in a source (`keyword` is `extern` there,
// nothing here); `Frame` is GeometryTransform2d or GeometryTransform3d.
#define ORMIX_GEOMETRY_TRANSFORM_LEVELS(keyword, Frame, Space, Class)           \
  namespace ormix {                                                             \
  keyword template class VersionedLevel<geom::Class, geom::Space::Transform>;   \
  keyword template class RegisteredObject<geom::Class, geom::Space::Transform>; \
  }                                                                             \
  namespace ormix::geom {                                                       \
  keyword template class GeometryTransform<Class, Space>;                       \
  keyword template class Frame<Class>;                                          \
  }
