#pragma once

#include "Arrays.h"
#include "Calls.h"
#include "Errors.h"

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/3d/BaseGeometryEntity3d.h>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <string>
#include <type_traits>

/// \file
/// How entities become Python classes. What all have in common (copies, equality, pickling, printing, pictures) belongs
/// to their bases in Object.cpp; a class itself adds its constructor and its properties.
///
/// A class template `Circle2d` becomes four classes `Circle2d_float64`, … and one family `Circle2d`, which is made in
/// Python (`_family.py`) from the table `_families` of this module: `Circle2d(center, radius, dtype="float32")`.

namespace ormix::python {

/// The base of an entity that Python knows.
template <class Entity>
using EntityBase = std::conditional_t<std::is_base_of_v<geom::BaseGeometryEntity2d, Entity>, geom::BaseGeometryEntity2d,
                                      geom::BaseGeometryEntity3d>;

/// The Python class of an entity.
template <class Entity>
using EntityClass = py::class_<Entity, EntityBase<Entity>, boost::shared_ptr<Entity>>;

/// Adds the class of an entity that is no template. Its constructor takes no argument yet.
/// \param fields the arguments of its constructor, each also a property: by them it is printed
/// \param doc the class in a sentence, then its arguments
template <class Entity>
EntityClass<Entity> bindEntity(py::module_& module, const char* name, const py::tuple& fields, const char* doc) {
  EntityClass<Entity> entity(module, name, doc);
  entity.attr("__match_args__") = fields;
  entity.def(py::init<>());
  return entity;
}

/// Adds a property that may be assigned.
/// \param set a member function of the class
template <class Class, class Get, class Set>
void bindField(Class& entity, const char* name, Get get, Set set, const char* doc) {
  entity.def_property(name, get, py::cpp_function(set, ChangingCall()), doc);
}

/// Makes the four classes of a class template and lists them in the table `_families`.
/// \param make called as `make(name, coordinate)` with the name of a class and a value of its coordinate type; adds the
/// class to the module and returns it
template <class Make>
void bindTemplate(py::module_& module, const char* name, Make make) {
  py::dict classes;
  const auto bindOne = [&](auto coordinate) {
    const py::dtype dtype = py::dtype::of<decltype(coordinate)>();
    const std::string dtypeName = py::cast<std::string>(dtype.attr("name"));
    py::object entity = make((std::string(name) + "_" + dtypeName).c_str(), coordinate);
    entity.attr("dtype") = dtype;
    entity.attr("family") = name;
    classes[py::str(dtypeName)] = entity;
  };
  bindOne(omReal64());
  bindOne(omReal32());
  bindOne(omInt32());
  bindOne(omUInt32());
  module.attr("_families")[name] = classes;
}

/// The four classes of a template of entities.
/// \param define called as `define(entityClass, coordinate)` with a value of the coordinate type; adds what is
/// particular to the class
template <template <class> class Entity, class Define>
void bindFamily(py::module_& module, const char* name, const py::tuple& fields, const char* doc, Define define) {
  bindTemplate(module, name, [&](const char* className, auto coordinate) {
    auto entity = bindEntity<Entity<decltype(coordinate)>>(module, className, fields, doc);
    define(entity, coordinate);
    return entity;
  });
}

}  // namespace ormix::python
