#include "../Frame/Arrays.h"
#include "../Frame/Calls.h"
#include "../Frame/Enumerations.h"
#include "../Frame/Meshes.h"
#include "../Frame/Result.h"
#include "MeshTools.h"

#include <ORMIXGeometry/Tools/Mesh/SelfIntersections.h>
#include <ORMIXGeometry/Tools/Mesh/Validation.h>

#include <pybind11/stl.h>

#include <sstream>

namespace ormix::python {
namespace {

using geom::MeshDefect;
using geom::MeshValidation;
using geom::SelfIntersections;

template <class Value>
std::string textOf(const Value& value) {
  std::ostringstream stream;
  stream.imbue(std::locale::classic());
  stream << value;
  return stream.str();
}

// The indices that a defect has.
py::tuple indices(const std::array<omUInt32, 2>& pair) {
  py::list present;
  for (const omUInt32 index : pair)
    if (index != geom::s_noIndex) present.append(index);
  return py::tuple(present);
}

MeshValidation validate(const py::object& mesh, bool findsInsideOut, bool findsSelfIntersections,
                        std::size_t maxNbListed, std::size_t maxNbTestedATriangle) {
  const geom::MeshValidationOptions options{findsInsideOut, findsSelfIntersections, maxNbListed, maxNbTestedATriangle};
  return meshOf(mesh, "mesh", Indices::Unchecked).visit([&](const auto& typed) {
    const Reading reading;
    return geom::validate(typed.view(), options);
  });
}

SelfIntersections findSelfIntersections(const MeshArgument& mesh, std::size_t maxNbListed,
                                        std::size_t maxNbTestedATriangle) {
  return mesh.visit([&](const auto& typed) {
    const Reading reading;
    return geom::findSelfIntersections(typed.view(), {maxNbListed, maxNbTestedATriangle});
  });
}

py::dict counts(const MeshValidation& self) {
  py::dict result;
  for (std::size_t kind = 0; kind < geom::s_nbMeshDefects; ++kind)
    result[py::str(std::string(EnumerationNames<geom::eMeshDefect>::names[kind]))] = self.counts[kind];
  return result;
}

void bindValidation(py::module_& module) {
  bindEnumeration<geom::eMeshDefect>(module, "What keeps triangles from being the surface of bodies.");
  Result<MeshDefect>(module, "MeshDefect", "One defect of a mesh and where it is, see `validate`.")
      .value("kind", &MeshDefect::kind, "What is wrong, an eMeshDefect.")
      .value(
          "triangles", [](const MeshDefect& self) { return indices(self.triangles); },
          "Indices of the triangles concerned, up to two.")
      .value(
          "vertices", [](const MeshDefect& self) { return indices(self.vertices); },
          "Indices of the vertices concerned, or the invalid index; of an edge its two ends.")
      .value("place", &MeshDefect::place, "Where it is, (x, y, z).");
  auto validation = py::class_<MeshValidation>(module, "MeshValidation",
                                               "All defects of a mesh, see `validate`. Prints as a report.");
  validation.def("__repr__", &textOf<MeshValidation>)
      .def_readonly("nb_vertices", &MeshValidation::nbVertices, "The number of vertices of the mesh.")
      .def_readonly("nb_triangles", &MeshValidation::nbTriangles, "The number of triangles of the mesh.")
      .def_property_readonly("counts", &counts, "How many defects there are, by the name of their kind.")
      .def_readonly("defects", &MeshValidation::defectColl, "The first defects of each kind, a list of MeshDefect.")
      .def_readonly("nb_boundary_loops", &MeshValidation::nbBoundaryLoops, "The number of chains of boundary edges.")
      .def_readonly("all_pairs_tested", &MeshValidation::allPairsTested,
                    "False where the search for self-intersections was cut short.")
      .def_property_readonly("is_clean", &MeshValidation::isClean,
                             "Whether nothing was found: the triangles are the oriented closed surfaces of bodies.");
  module.def(
      "validate", &validate, "mesh"_a, py::kw_only(), "finds_inside_out"_a = true, "finds_self_intersections"_a = true,
      "max_nb_listed"_a = geom::MeshValidationOptions().maxNbListed,
      "max_nb_tested_a_triangle"_a = geom::MeshValidationOptions().maxNbTestedATriangle,
      "Find every defect of a mesh; nothing is taken for granted, indices may be invalid and coordinates NaN.\n\n"
      "`finds_inside_out`: whether shells are found and nested.\n"
      "`finds_self_intersections`: whether triangles are tested, which takes most of the time.\n"
      "`max_nb_listed`: most defects of each kind that are listed; all are counted.\n"
      "`max_nb_tested_a_triangle`: see `find_self_intersections`.\n\n"
      ">>> validate((np.eye(3), [[0, 1, 2]])).counts['eMD_BoundaryEdge']\n"
      "3");
}

}  // namespace

void bindMeshDefects(py::module_& module) {
  bindValidation(module);
  Result<SelfIntersections>(module, "SelfIntersections", "Pairs of triangles of one mesh that intersect.")
      .value("nb_pairs", &SelfIntersections::nbPairs, "How many were found.")
      .value("is_complete", &SelfIntersections::isComplete, "Whether all pairs whose boxes meet were tested.")
      .hidden(
          "pairs",
          [](const SelfIntersections& self) {
            py::array_t<omUInt32> pairs({static_cast<py::ssize_t>(self.pairColl.size()), py::ssize_t{2}});
            std::copy_n(reinterpret_cast<const omUInt32*>(self.pairColl.data()), 2 * self.pairColl.size(),
                        pairs.mutable_data());
            return pairs;
          },
          "The first of them, array of shape (n, 2) of indices of triangles, each pair and all pairs ascending.");
  const geom::SelfIntersectionOptions defaults;
  module.def(
      "find_self_intersections", &findSelfIntersections, "mesh"_a, py::kw_only(),
      "max_nb_listed"_a = defaults.maxNbListed, "max_nb_tested_a_triangle"_a = defaults.maxNbTestedATriangle,
      "The pairs of triangles that meet in more than the vertices and edges that they have in common, exactly.\n\n"
      "`max_nb_listed`: most pairs that are listed; all are counted.\n"
      "`max_nb_tested_a_triangle`: so many pairs for each triangle, beside 10^6, are tested at most; a crafted\n"
      "edge of 10^6 triangles would take for ever.\n\n"
      ">>> find_self_intersections((np.eye(3), [[0, 1, 2]]))\n"
      "SelfIntersections(nb_pairs=0, is_complete=True)");
}

}  // namespace ormix::python
