#pragma once

#include "../Frame/Family.h"

#include <ORMIXMath/Scalar/Cast.h>

/// \file
/// Conversion between the classes of a template: reals are truncated towards zero for integers, as numpy does.

namespace ormix::python {

/// The conversion of classes that have a `cast` of their own.
struct OwnCast {
  template <class Entity, class TOut>
  auto operator()(const Entity& from, TOut) const {
    using geom::cast;  // and what is found by the argument, when this is instantiated
    return cast<TOut>(from);
  }
};

namespace detail {

// What a conversion answers, as an object of Python.
/// @{
template <class Entity>
boost::shared_ptr<Entity> shared(Entity&& entity) {
  return boost::make_shared<Entity>(std::move(entity));
}
template <class Entity>
boost::shared_ptr<Entity> shared(boost::shared_ptr<Entity>&& entity) {
  return std::move(entity);
}
/// @}

}  // namespace detail

/// Adds `astype(dtype)`.
/// \param convert called as `convert(entity, coordinate)` with a value of the new coordinate type; answers the new
/// entity
template <class PythonClass, class Convert = OwnCast>
void bindAsType(PythonClass& entity, Convert convert = {}) {
  using Entity = typename PythonClass::type;
  entity.def(
      "astype",
      [convert](const Entity& self, const py::object& dtype) {
        const auto converted = [&](auto coordinate) {
          return py::cast([&] {
            const Reading reading;
            return detail::shared(convert(self, coordinate));
          }());
        };
        const py::dtype type = py::dtype::from_args(dtype);
        if (type.equal(py::dtype::of<omReal64>())) return converted(omReal64());
        if (type.equal(py::dtype::of<omReal32>())) return converted(omReal32());
        if (type.equal(py::dtype::of<omInt32>())) return converted(omInt32());
        if (type.equal(py::dtype::of<omUInt32>())) return converted(omUInt32());
        throw py::type_error("dtype: float64, float32, int32 or uint32 was wanted");
      },
      "dtype"_a, "The same with coordinates of another type. Reals are truncated towards zero for integers.");
}

}  // namespace ormix::python
