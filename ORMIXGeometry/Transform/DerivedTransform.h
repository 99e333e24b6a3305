#pragma once

#include <ORMIXGeometry/Entity/ClassList.h>
#include <ORMIXGeometry/Transform/GeometryTransform.h>

#include <type_traits>

namespace ormix::geom {

namespace detail {
template <class Entity>
struct CoordinateTypeOf {
  using Type = omReal32;  // of the boundaries of a shape
};
template <template <class> class Class, class T>
struct CoordinateTypeOf<Class<T>> {
  using Type = T;
};
}  // namespace detail

/// The coordinate type of an entity: of a shape, that of its boundaries.
template <class Entity>
using CoordinateOf = typename detail::CoordinateTypeOf<Entity>::Type;

/// The uniform part of a transform that answers another geometry than it is given: it owns no map. `Space` and `Self`
/// are as GeometryTransform says. `Self` states besides
/// \code
/// template <class Entity> struct Supports;     // whether there is a row, and what it says
/// template <class Entity> using Result;        // the class of the answer
/// template <class Entity>
/// bool derive(const Entity& entity, Result<Entity>& result) const;  // false where there is no answer
/// \endcode
/// In place works where the class of the entity is that of the answer; the others fail as a circle's anisotropic scale
/// does. The bodies are in DerivedTransform.ipp.
template <class Self, class Space>
class ORMIX_GEOMETRY_API DerivedTransform : public Space::template Frame<Self> {
  using EntityPtr = typename Space::EntityPtr;

 public:
  /// What the visits of applyInSitu() call: false, the entity untouched, where there is no answer.
  template <class Entity, class Derived = Self,
            std::enable_if_t<std::conjunction_v<typename Derived::template Supports<Entity>,
                                                std::is_same<typename Derived::template Result<Entity>, Entity>>,
                             int> = 0>
  bool processInSitu(Entity& entity) const;
  /// What the visits of apply() call: a new entity, null where there is no answer.
  template <class Entity, class Derived = Self, std::enable_if_t<Derived::template Supports<Entity>::value, int> = 0>
  EntityPtr process(const Entity& entity) const;

  /// The answer of a default-constructed `Self`, whose class is known with that of the entity, or is not.
  /// \throw ORMIXGeometryException, logged first, where there is none
  /// @{
  template <class Entity, class Derived = Self>
  static typename Derived::template Result<Entity> derivedOf(const Entity& entity);
  static EntityPtr derivedOfAny(const typename Space::Entity& entity);
  /// @}

 protected:
  DerivedTransform() = default;
  DerivedTransform(const DerivedTransform&) = default;
  DerivedTransform(DerivedTransform&&) = default;
  DerivedTransform& operator=(const DerivedTransform&) = default;
  DerivedTransform& operator=(DerivedTransform&&) = default;
  ~DerivedTransform() override = default;

 private:
  friend FieldAccess;
  // No data, unless `Self` has some.
  template <class S, class F>
  static bool fields(S&, F&&) {
    return true;
  }
};

}  // namespace ormix::geom

// The levels of one transform, declared before its class and instantiated in a source (`keyword` is `extern` there,
// nothing here).
#define ORMIX_GEOMETRY_DERIVED_TRANSFORM_LEVELS(keyword, Frame, Space, Class) \
  ORMIX_GEOMETRY_TRANSFORM_LEVELS(keyword, Frame, Space, Class)               \
  namespace ormix::geom {                                                     \
  keyword template class DerivedTransform<Class, Space>;                      \
  }
#define ORMIX_GEOMETRY_DERIVED_TRANSFORM2D_LEVELS(keyword, Class) \
  ORMIX_GEOMETRY_DERIVED_TRANSFORM_LEVELS(keyword, GeometryTransform2d, PlanarTransforms, Class)
#define ORMIX_GEOMETRY_DERIVED_TRANSFORM3D_LEVELS(keyword, Class) \
  ORMIX_GEOMETRY_DERIVED_TRANSFORM_LEVELS(keyword, GeometryTransform3d, SpatialTransforms, Class)
