#pragma once

#include <ORMIXSerialization/Object/RegisteredObject.h>

namespace ormix::geom {

/// The visits of the transforms that exist in the plane and in space, answered by asking whether the transform has an
/// overload for `Self`. `Space` names them: PlanarSpace or SpatialSpace. The bodies are in EntityVisits.ipp, which only
/// entity sources include.
template <class Self, class Base, class Space>
class ORMIX_GEOMETRY_API EntityVisits : public RegisteredObject<Self, Base> {
 public:
  using EntityPtr = typename Space::EntityPtr;
  using Base::visitInSitu;
  using Base::visitNonInSitu;

  bool visitInSitu(const typename Space::AnisotropicScale& transform) final;
  EntityPtr visitNonInSitu(const typename Space::AnisotropicScale& transform) const final;
  bool visitInSitu(const typename Space::Homography& transform) final;
  EntityPtr visitNonInSitu(const typename Space::Homography& transform) const final;
  bool visitInSitu(const typename Space::Rigid& transform) final;
  EntityPtr visitNonInSitu(const typename Space::Rigid& transform) const final;
  bool visitInSitu(const typename Space::Rotation& transform) final;
  EntityPtr visitNonInSitu(const typename Space::Rotation& transform) const final;
  bool visitInSitu(const typename Space::Scale& transform) final;
  EntityPtr visitNonInSitu(const typename Space::Scale& transform) const final;
  bool visitInSitu(const typename Space::Similarity& transform) final;
  EntityPtr visitNonInSitu(const typename Space::Similarity& transform) const final;
  bool visitInSitu(const typename Space::Translation& transform) final;
  EntityPtr visitNonInSitu(const typename Space::Translation& transform) const final;
  bool visitInSitu(const typename Space::Centroid& transform) final;
  EntityPtr visitNonInSitu(const typename Space::Centroid& transform) const final;
  bool visitInSitu(const typename Space::ConvexHull& transform) final;
  EntityPtr visitNonInSitu(const typename Space::ConvexHull& transform) const final;
  bool visitInSitu(const typename Space::Envelope& transform) final;
  EntityPtr visitNonInSitu(const typename Space::Envelope& transform) const final;

 protected:
  EntityVisits() = default;
  EntityVisits(const EntityVisits&) = default;
  EntityVisits(EntityVisits&&) = default;
  EntityVisits& operator=(const EntityVisits&) = default;
  EntityVisits& operator=(EntityVisits&&) = default;
  ~EntityVisits() override = default;
};

}  // namespace ormix::geom

// The frame's levels of one class, declared in its header and instantiated in its source (`keyword` is `extern` there,
// nothing here); `Frame` is Entity2d or Entity3d.
#define ORMIX_GEOMETRY_ENTITY_LEVELS(keyword, Frame, Space, Class, Base) \
  namespace ormix {                                                      \
  keyword template class VersionedLevel<geom::Class, geom::Base>;        \
  keyword template class RegisteredObject<geom::Class, geom::Base>;      \
  }                                                                      \
  namespace ormix::geom {                                                \
  keyword template class EntityVisits<Class, Base, Space>;               \
  keyword template class Frame<Class, Base>;                             \
  }

// The same for a class template and its four scalar types.
#define ORMIX_GEOMETRY_ENTITY_TEMPLATE_LEVELS(keyword, Frame, Space, Class, Base)    \
  ORMIX_GEOMETRY_ENTITY_TEMPLATE_LEVEL(keyword, Frame, Space, Class, Base, omInt32)  \
  ORMIX_GEOMETRY_ENTITY_TEMPLATE_LEVEL(keyword, Frame, Space, Class, Base, omUInt32) \
  ORMIX_GEOMETRY_ENTITY_TEMPLATE_LEVEL(keyword, Frame, Space, Class, Base, omReal32) \
  ORMIX_GEOMETRY_ENTITY_TEMPLATE_LEVEL(keyword, Frame, Space, Class, Base, omReal64)
#define ORMIX_GEOMETRY_ENTITY_TEMPLATE_LEVEL(keyword, Frame, Space, Class, Base, T) \
  ORMIX_GEOMETRY_ENTITY_LEVELS(keyword, Frame, Space, Class<T>, Base<T>)            \
  namespace ormix::geom {                                                           \
  keyword template class Class<T>;                                                  \
  }
