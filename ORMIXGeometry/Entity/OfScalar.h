#pragma once

namespace ormix::geom {

/// Whether an entity is one of a class template, for this coordinate type: where the type is named in a call, as in
/// `process<omReal64>(circle)`, it must be the entity's own.
template <class T, class Entity>
inline constexpr bool isOfScalar = false;
template <class T, template <class> class Entity>
inline constexpr bool isOfScalar<T, Entity<T>> = true;

}  // namespace ormix::geom
