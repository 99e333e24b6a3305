#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <type_traits>

namespace ormix::geom {

/// A list of classes that the compiler knows. The lists of PlanarClasses.h and SpatialClasses.h say which classes the
/// library has: registration, the measures, the pictures and the tests are made from them.
template <class... Class>
struct ClassList {};

/// One class of a list, as the argument of a function object.
template <class Class>
struct ClassTag {
  using Type = Class;
};

/// Calls the function object with the ClassTag of each class, in the order of the list.
template <class Function, class... Class>
constexpr void forEachClass(ClassList<Class...>, Function&& function) {
  (function(ClassTag<Class>()), ...);
}

/// Whether a list contains the class.
template <class Class, class... Listed>
constexpr bool isListed(ClassList<Listed...>) {
  return (... || std::is_same_v<Class, Listed>);
}

namespace detail {

template <class... List>
struct JoinedLists;
template <class... A>
struct JoinedLists<ClassList<A...>> {
  using Type = ClassList<A...>;
};
template <class... A, class... B, class... Rest>
struct JoinedLists<ClassList<A...>, ClassList<B...>, Rest...> : JoinedLists<ClassList<A..., B...>, Rest...> {};

}  // namespace detail

/// One list after the other.
template <class... List>
using JoinedLists = typename detail::JoinedLists<List...>::Type;

/// The classes of class templates for the four coordinate types, template by template.
template <template <class> class... Template>
using ScalarClassList =
    JoinedLists<ClassList<Template<omInt32>, Template<omUInt32>, Template<omReal32>, Template<omReal64>>...>;

}  // namespace ormix::geom
