#include "EntityArgument.h"

namespace ormix::python {
namespace {

std::string typeName(const py::handle& object) {
  return py::cast<std::string>(py::type::handle_of(object).attr("__name__"));
}

template <class Entity>
std::vector<boost::shared_ptr<Entity>> shared(const py::tuple& owners) {
  std::vector<boost::shared_ptr<Entity>> entities;
  entities.reserve(owners.size());
  for (const py::handle owner : owners) entities.push_back(py::cast<boost::shared_ptr<Entity>>(owner));
  return entities;
}

}  // namespace

bool isEntity(const py::handle& object) { return py::isinstance<geom::BaseGeometryEntity>(object); }

EntityArgument::EntityArgument(const py::handle& argument, const char* name) : _isOne(isEntity(argument)) {
  if (_isOne) {
    _owners = py::make_tuple(argument);
  } else {
    PyObject* const owners = PySequence_Tuple(argument.ptr());
    if (owners == nullptr) {
      // An error that the iterable itself raised is its own.
      if (PyErr_ExceptionMatches(PyExc_TypeError) == 0 || PyObject_HasAttrString(argument.ptr(), "__iter__") != 0)
        throw py::error_already_set();
      PyErr_Clear();
      throw py::type_error(std::string(name) + ": an entity or a sequence of entities was wanted, not " +
                           typeName(argument));
    }
    _owners = py::reinterpret_steal<py::tuple>(owners);
  }
  _entities.reserve(_owners.size());
  for (const py::handle owner : _owners) {
    py::detail::make_caster<geom::BaseGeometryEntity> caster;
    if (owner.is_none() || !caster.load(owner, false))
      throw py::type_error(std::string(name) + ": element " + std::to_string(_entities.size()) + " is no entity but " +
                           typeName(owner));
    _entities.push_back(&py::detail::cast_op<const geom::BaseGeometryEntity&>(caster));
  }
}

std::string EntityArgument::place(std::size_t i) const {
  return _isOne ? std::string() : "element " + std::to_string(i) + ": ";
}

void EntityArgument::require(geom::eCoordinateDimension dimension) const {
  const char* const wanted = dimension == geom::eCD_2d ? "the plane" : "space";
  for (std::size_t i = 0; i < size(); ++i)
    if (_entities[i]->getCoordinateDimension() != dimension)
      throw py::type_error(place(i) + "an entity of " + wanted + " was wanted, not " + typeName(_owners[i]));
}

geom::GeometryEntity2dPtrColl EntityArgument::planar() const {
  require(geom::eCD_2d);
  return shared<geom::BaseGeometryEntity2d>(_owners);
}

geom::GeometryEntity3dPtrColl EntityArgument::spatial() const {
  require(geom::eCD_3d);
  return shared<geom::BaseGeometryEntity3d>(_owners);
}

}  // namespace ormix::python
