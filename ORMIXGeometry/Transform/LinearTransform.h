#pragma once

#include <ORMIXGeometry/Transform/GeometryTransform.h>
#include <ORMIXGeometry/Transform/MapRequirement.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <type_traits>

namespace ormix::geom {

namespace detail {
template <class Math, class Type>
struct NamedMap;
}  // namespace detail

/// The uniform part of a linear transform of the entities of one space: it owns one transform of ORMIXMath and does no
/// arithmetic of its own beyond what an entity's fields need. `Space` and `Self` are as GeometryTransform says. The
/// bodies are in LinearTransform.ipp and LinearTransformFrame.ipp, the rule of each entity in LinearTransform2d.ipp and
/// LinearTransform3d.ipp.
template <class Self, class Math, class Space>
class ORMIX_GEOMETRY_API LinearTransform : public Space::template Frame<Self> {
  using Frame = typename Space::template Frame<Self>;
  using EntityPtr = typename Space::EntityPtr;

 public:
  using Frame::apply;

  /// A copy that is mapped in place; of an anisotropic scale what the entity's visit answers.
  EntityPtr apply(const typename Space::Entity& entity) const final;

  /// The owned transform.
  const Math& getGeometricTransform() const { return _transform; }

  /// The rule of an entity of exactly this class, reached through the entity's visits. False, the entity untouched,
  /// where the image is not defined; a point without one is logged.
  template <class Entity, std::enable_if_t<keepsClassOf<Math, Entity>(), int> = 0>
  bool processInSitu(Entity& entity) const;

  /// What the visits of apply() alone call, to make the image of a run in one pass: null to any other (intended).
  template <class Entity, std::enable_if_t<s_isRunOfPoints<Entity>, int> = 0>
  EntityPtr process(const Entity& run) const;

 protected:
  LinearTransform() = default;
  explicit LinearTransform(const Math& transform) : _transform(transform) {}
  LinearTransform(const LinearTransform&) = default;
  LinearTransform(LinearTransform&&) = default;
  LinearTransform& operator=(const LinearTransform&) = default;
  LinearTransform& operator=(LinearTransform&&) = default;
  ~LinearTransform() override = default;

  /// The image, as a new entity, of one that processInSitu() takes; empty, logged, where that would fail.
  template <class Entity>
  boost::shared_ptr<Entity> image(const Entity& entity) const;

  /// The transform with the name under which points without an image are reported.
  auto map() const { return detail::NamedMap<Math, typename Space::Type>{_transform, Self::type()}; }

  Math _transform;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item);

  /// Where process() leaves the image of a run, which may be none.
  struct RunImage {
    bool isRun = false;
    EntityPtr entity;
  };
  /// Of the copy that apply() sends on its visit, null of any other transform.
  RunImage* _runImage = nullptr;
};

}  // namespace ormix::geom

// The levels of one transform, declared before its class and instantiated in a source (`keyword` is `extern` there,
// nothing here).
#define ORMIX_GEOMETRY_LINEAR_TRANSFORM_LEVELS(keyword, Frame, Space, Class, Math) \
  ORMIX_GEOMETRY_TRANSFORM_LEVELS(keyword, Frame, Space, Class)                    \
  namespace ormix::geom {                                                          \
  keyword template class LinearTransform<Class, Math, Space>;                      \
  }
