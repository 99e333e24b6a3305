#pragma once

#include <ORMIXSerialization/Object/RegisteredObject.h>

namespace ormix::geom {

/// Implements the visit functions of the entity `Self` for those transforms that exist both in the plane and in space.
/// A visit calls the overload of the transform's `processInSitu` or `process` for `Self` if there is one.
///
/// \tparam Base the class above in the chain, which declares the visits
/// \tparam Space PlanarSpace or SpatialSpace, which name the transforms
///
/// The definitions are in EntityVisits.ipp, which only the sources of entities include.
template <class Self, class Base, class Space>
class ORMIX_GEOMETRY_API EntityVisits : public RegisteredObject<Self, Base> {
 public:
  using EntityPtr = typename Space::EntityPtr;  ///< shared pointer to any entity of the plane, or of space
  using Base::visitInSitu;
  using Base::visitNonInSitu;

  /// In situ: transforms this entity; returns false, with the entity unchanged, where the transform does not support
  /// `Self` or fails. Not in situ: returns a new entity, null in the same cases.
  /// @{
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
  /// @}

 protected:
  EntityVisits() = default;
  EntityVisits(const EntityVisits&) = default;
  EntityVisits(EntityVisits&&) = default;
  EntityVisits& operator=(const EntityVisits&) = default;
  EntityVisits& operator=(EntityVisits&&) = default;
  ~EntityVisits() override = default;
};

}  // namespace ormix::geom

// The explicit instantiations of all base class templates of one entity. Its header declares them, with `extern` as
// `keyword`; its source defines them, with an empty `keyword`. `Frame` is Entity2d or Entity3d.
#define ORMIX_GEOMETRY_ENTITY_LEVELS(keyword, Frame, Space, Class, Base) \
  namespace ormix {                                                      \
  keyword template class VersionedLevel<geom::Class, geom::Base>;        \
  keyword template class RegisteredObject<geom::Class, geom::Base>;      \
  }                                                                      \
  namespace ormix::geom {                                                \
  keyword template class EntityVisits<Class, Base, Space>;               \
  keyword template class Frame<Class, Base>;                             \
  }

// The same for a class template, for each of the four coordinate types.
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
