#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <type_traits>

namespace ormix::geom {

/// A list of classes, used at compile time only. The lists in PlanarClasses.h and SpatialClasses.h name all entities,
/// transforms and measures of the library; registration, pictures and tests are generated from them.
template <class... Class>
struct ClassList {};

/// An empty value that stands for one class, so that a class can be passed to a function object.
template <class Class>
struct ClassTag {
  using Type = Class;  ///< the class
};

/// Calls `function(ClassTag<Class>())` for each class, in the order of the list.
template <class Function, class... Class>
constexpr void forEachClass(ClassList<Class...>, Function&& function) {
  (function(ClassTag<Class>()), ...);
}

/// Whether the list contains `Class`.
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

/// The classes of several lists as one list, in the same order.
template <class... List>
using JoinedLists = typename detail::JoinedLists<List...>::Type;

/// Each class template with each of the four coordinate types omInt32, omUInt32, omReal32 and omReal64.
template <template <class> class... Template>
using ScalarClassList =
    JoinedLists<ClassList<Template<omInt32>, Template<omUInt32>, Template<omReal32>, Template<omReal64>>...>;

}  // namespace ormix::geom
