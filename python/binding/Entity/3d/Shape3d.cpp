#include "../../Frame/Family.h"
#include "../Entities.h"

#include <ORMIXGeometry/Entity/3d/Shape/Shape3d.h>

#include <pybind11/stl.h>
#include <optional>
#include <utility>

namespace ormix::python {
namespace {

using geom::RowIntersections3d;
using geom::Shape3d;
using Meshes = Shape3d::MeshWithHolesColl;

void setMeshes(Shape3d& shape, const Meshes& meshes) {
  Meshes copies;
  copies.reserve(meshes.size());
  for (const auto& mesh : meshes) {
    if (!mesh) throw py::type_error("meshes: None is no mesh");
    copies.push_back(boost::make_shared<geom::MeshWithHoles3d<omReal32>>(*mesh));
  }
  const Changing changing;
  shape.getMeshWithHolesColl() = std::move(copies);
}

}  // namespace

void bindShape3d(py::module_& module) {
  bindEntity<Shape3d>(
      module, "Shape3d", py::make_tuple("row_intersections", "meshes"),
      "A region of a volume: its voxels, and the surfaces of its connected parts. Nothing checks that both agree;\n"
      "measures and transforms use the surfaces.\n\n"
      "row_intersections: the voxels, RowIntersections3d.\n"
      "meshes: sequence of MeshWithHoles3d of float32, which are copied.\n\n"
      ">>> Shape3d(RowIntersections3d([[0, 0, 2, 5]])).nb_voxels\n"
      "3")
      .def(py::init([](const std::optional<RowIntersections3d>& voxels, const Meshes& meshes) {
             auto shape = boost::make_shared<Shape3d>();
             if (voxels) shape->getRowIntersections() = *voxels;
             setMeshes(*shape, meshes);
             return shape;
           }),
           "row_intersections"_a = py::none(), "meshes"_a = py::tuple())
      .def_property(
          "row_intersections", [](const Shape3d& self) { return self.getRowIntersections(); },
          [](Shape3d& self, const RowIntersections3d& voxels) {
            const Changing changing;
            self.getRowIntersections() = voxels;
          },
          "A copy of the voxels. Assigning replaces them; the meshes stay.")
      .def_property(
          "meshes", [](const Shape3d& self) { return self.getMeshWithHolesColl(); }, &setMeshes,
          "The meshes themselves, in a new list. Assigning replaces them by copies; the voxels stay.")
      .def_property_readonly("nb_voxels", &Shape3d::getNbVoxels, "The number of voxels. Linear in the runs.")
      .def_property_readonly("nb_tot_vertices", &Shape3d::getNbTotVertices,
                             "The number of vertices of all meshes, holes included.")
      .def_property_readonly("nb_tot_edges", &Shape3d::getNbTotEdges, "The number of their edges. Linear.")
      .def_property_readonly("nb_tot_triangles", &Shape3d::getNbTotTriangles, "The number of their triangles.")
      .def("clear", &Shape3d::clear, ChangingCall(), "Remove voxels and meshes.");
}

}  // namespace ormix::python
