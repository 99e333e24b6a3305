#pragma once

#include <ORMIXGeometry/Entity/OfScalar.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXGeometry/Transform/Preserved.h>
#include <ORMIXSerialization/Object/RegisteredObject.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <type_traits>

namespace ormix::geom {

namespace detail {
template <class Math, class Type>
struct NamedMap;
}  // namespace detail

/// The uniform part of a linear transform of the entities of one space: it owns one transform of ORMIXMath and does no
/// arithmetic of its own beyond what an entity's fields need. `Space` names the bases, PlanarTransforms or
/// SpatialTransforms; `Self` states `s_className` and `type()`. The bodies are in LinearTransform.ipp and
/// LinearTransformFrame.ipp, the rule of each entity in LinearTransform2d.ipp and LinearTransform3d.ipp.
template <class Self, class Math, class Space>
class ORMIX_GEOMETRY_API LinearTransform : public RegisteredObject<Self, typename Space::Transform> {
  using Base = typename Space::Transform;

 public:
  using Base::apply;
  using Base::applyInSitu;

  BoolResult applyInSitu(typename Space::Entity& entity) const final;
  typename Space::EntityPtr apply(const typename Space::Entity& entity) const final;

  /// The owned transform.
  const Math& getGeometricTransform() const { return _transform; }

  /// The rule of an entity of exactly this class, reached through the entity's visits. False, the entity untouched,
  /// where the image is not defined; a point without one is logged.
  template <class Entity, std::enable_if_t<keepsClassOf<Math, Entity>(), int> = 0>
  bool processInSitu(Entity& entity) const;
  /// The same with the entity's coordinate type named: `processInSitu<omReal64>(circle)`.
  template <class T, class Entity, std::enable_if_t<isOfScalar<T, Entity> && keepsClassOf<Math, Entity>(), int> = 0>
  bool processInSitu(Entity& entity) const {
    return processInSitu(entity);
  }

 protected:
  LinearTransform() = default;
  explicit LinearTransform(const Math& transform) : _transform(transform) {}
  LinearTransform(const LinearTransform&) = default;
  LinearTransform(LinearTransform&&) = default;
  LinearTransform& operator=(const LinearTransform&) = default;
  LinearTransform& operator=(LinearTransform&&) = default;
  ~LinearTransform() override = default;

  /// The image, as a new entity, of one that processInSitu() takes; empty, logged, where that would fail. Runs of
  /// points are read once and their images written once.
  template <class Entity>
  boost::shared_ptr<Entity> image(const Entity& entity) const;

  /// The transform with the name under which points without an image are reported.
  auto map() const { return detail::NamedMap<Math, typename Space::Type>{_transform, Self::type()}; }

  Math _transform;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item);
};

}  // namespace ormix::geom

// The levels of one transform, declared before its class and instantiated in its source (`keyword` is `extern` there,
// nothing here).
#define ORMIX_GEOMETRY_LINEAR_TRANSFORM_LEVELS(keyword, Frame, Space, Class, Math) \
  namespace ormix {                                                                \
  keyword template class VersionedLevel<geom::Class, geom::Space::Transform>;      \
  keyword template class RegisteredObject<geom::Class, geom::Space::Transform>;    \
  }                                                                                \
  namespace ormix::geom {                                                          \
  keyword template class LinearTransform<Class, Math, Space>;                      \
  keyword template class Frame<Class, Math>;                                       \
  }
