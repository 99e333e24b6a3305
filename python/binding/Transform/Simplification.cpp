#include "../Frame/Enumerations.h"
#include "ApplyTransform.h"
#include "Transforms.h"

#include <ORMIXGeometry/Transform/2d/SimplifyTransform2d.h>
#include <ORMIXUtil/Exception/BaseException.h>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <optional>

namespace ormix::python {
namespace {

using geom::PlanarTransforms;
using geom::SimplifyTransform2d;

// What a call without the interpreter lock answers; the message of its failure, if there is one, is raised after it.
template <class Call>
auto called(const Call& call, const std::string& place = {}) {
  std::optional<std::string> failure;
  try {
    const Reading reading;
    return call();
  } catch (const BaseException& error) {
    failure = error.getMessage();
  }
  raiseError(place + *failure, SimplifyTransform2d::s_className);
}

py::object simplify(const py::object& argument, omReal64 tolerance, ePathSimplification method) {
  const EntityArgument entities(argument);
  entities.require(geom::eCD_2d);
  std::size_t nbDone = 0;
  const auto one = [&](std::size_t i) {
    return SimplifyTransform2d::simplify(static_cast<const geom::BaseGeometryEntity2d&>(entities[i]), tolerance,
                                         method);
  };
  if (entities.isOne()) return py::cast(called([&] { return one(0); }));
  py::list results(entities.size());
  for (; nbDone < entities.size(); ++nbDone)
    results[nbDone] = called([&] { return one(nbDone); }, entities.place(nbDone));
  return std::move(results);
}

py::list simplifyAll(const py::object& argument, omReal64 tolerance, ePathSimplification method) {
  const geom::GeometryEntity2dPtrColl entities = EntityArgument(argument).planar();
  const auto simplified = called([&] { return SimplifyTransform2d::simplifyAll(entities, tolerance, method); });
  py::list results(simplified.size());
  for (std::size_t i = 0; i < simplified.size(); ++i) results[i] = simplified[i];
  return results;
}

}  // namespace

void bindSimplification(py::module_& module) {
  bindEnumeration<ePathSimplification>(module, "How paths are simplified.");
  ClassOf<SimplifyTransform2d, geom::BaseGeometryTransform2d> transform(
      module, "SimplifyTransform2d",
      "Leaves out vertices of polygons, polygons with holes and the boundaries of shapes; see `simplify()`.");
  transform.attr("__match_args__") = py::make_tuple("tolerance");
  transform.def(py::init<omReal64>(), "tolerance"_a = 0.0)
      .def_property("tolerance", &SimplifyTransform2d::getTolerance,
                    py::cpp_function(&SimplifyTransform2d::setTolerance, ChangingCall()),
                    "In the unit of the coordinates.")
      .def(
          "__matmul__",
          [](const SimplifyTransform2d& self, const py::object& operand) -> py::object {
            if (py::isinstance<geom::BaseGeometryTransform>(operand))
              return py::reinterpret_borrow<py::object>(Py_NotImplemented);
            return simplify(operand, self.getTolerance(), ePS_KeepTopology);
          },
          "operand"_a, py::is_operator());

  module.def(
      "simplify", &simplify, "entities"_a, "tolerance"_a, enumerator("method", ePS_KeepTopology),
      "One polygon, polygon with holes or shape with fewer vertices, or a list of each of a sequence by itself.\n\n"
      "What is left out lies within `tolerance`, in the unit of the coordinates, of the edge that replaces it.\n"
      "Edges do not cross or touch where they did not before, unless `method=\"ePS_EachAlone\"`.\n"
      "Error for a tolerance that is negative or not finite, for edges that cross and for other entities.\n\n"
      ">>> og.simplify(og.Polygon2d([[0, 0], [2, 0.1], [4, 0], [4, 4], [0, 0]]), 0.5).points.tolist()\n"
      "[[0.0, 0.0], [4.0, 0.0], [4.0, 4.0], [0.0, 0.0]]");
  module.def("simplify_all", &simplifyAll, "entities"_a, "tolerance"_a, enumerator("method", ePS_KeepTopology),
             "A list of entities simplified together: the borders that neighbours share remain shared.\n\n"
             "Otherwise as `simplify()`. Of several entities that fail the first decides the message.\n\n"
             ">>> left = og.Polygon2d([[0, 0], [2, 0], [2.1, 1], [2, 2], [0, 2], [0, 0]])\n"
             ">>> right = og.Polygon2d([[2, 0], [4, 0], [4, 2], [2, 2], [2.1, 1], [2, 0]])\n"
             ">>> [len(polygon) for polygon in og.simplify_all([left, right], 0.5)]\n"
             "[5, 5]");
}

}  // namespace ormix::python
