#include "../../Frame/Meshes.h"
#include "../../Frame/Print.h"
#include "../Entities.h"

namespace ormix::python {

void bindTriMesh3d(py::module_& module) {
  py::class_<TriMeshArrays> mesh(
      module, "TriMesh3d",
      "A mesh of triangles in arrays of the caller. Functions take it, or just the pair, as any other mesh; they "
      "check\n"
      "its indices each time, so the arrays may change between calls, but not during one.\n\n"
      "vertices: array of shape (n, 3). Not copied if C-contiguous, of float64, float32, int32 or uint32; other\n"
      "    types become float64.\n"
      "triangles: array of shape (m, 3) of indices of vertices, counter-clockwise as seen from outside. Not copied if\n"
      "    C-contiguous, of uint32.\n\n"
      ">>> vertices = np.zeros((3, 3), dtype='float32')\n"
      ">>> mesh = TriMesh3d(vertices, [[0, 1, 2]])\n"
      ">>> mesh.vertices is vertices, mesh.triangles.tolist()\n"
      "(True, [[0, 1, 2]])");
  mesh.attr("__match_args__") = py::make_tuple("vertices", "triangles");
  mesh.def(py::init(&triMeshArrays), "vertices"_a, "triangles"_a)
      .def_readonly("vertices", &TriMeshArrays::vertices, "The array of the vertices.")
      .def_readonly("triangles", &TriMeshArrays::triangles, "The array of the indices.")
      .def_property_readonly(
          "dtype", [](const TriMeshArrays& self) { return self.vertices.dtype(); }, "The type of the coordinates.")
      .def_property_readonly(
          "nb_vertices", [](const TriMeshArrays& self) { return self.vertices.shape(0); }, "The number of vertices.")
      .def_property_readonly(
          "nb_triangles", [](const TriMeshArrays& self) { return self.triangles.shape(0); }, "The number of triangles.")
      .def("__repr__", &print)
      .def(
          py::pickle([](const TriMeshArrays& self) { return py::make_tuple(self.vertices, self.triangles); },
                     [](const py::tuple& state) { return triMeshArrays(py::object(state[0]), py::object(state[1])); }));
}

}  // namespace ormix::python
