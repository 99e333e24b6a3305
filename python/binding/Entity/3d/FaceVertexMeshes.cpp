#include "../../Frame/Print.h"
#include "../Entities.h"
#include "../Meshes.h"

#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexAdjTriMesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexTriMesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshConversion.h>

#include <algorithm>
#include <type_traits>

namespace ormix::python {
namespace {

template <class T>
void requireNoViewOf(const geom::FaceVertexTriMesh3d<T>& mesh) {
  requireNoView(mesh.getVertexColl().data(), "vertices");
  requireNoView(mesh.getTriangleColl().data(), "triangles");
}
template <class T>
void requireNoViewOf(const geom::FaceVertexAdjTriMesh3d<T>& mesh) {
  requireNoViewOf(mesh.getMesh());
  requireNoView(mesh.getNeighbourColl().data(), "neighbours");
}

template <class Mesh>
void build(Mesh& mesh, const py::object& vertices, const py::object& triangles) {
  auto points = pointsOf<geom::Point3dData<typename Mesh::CoordinateType>>(vertices, "vertices");
  const auto indices = matrixOf<omUInt32>(triangles, 3, "triangles");
  const auto* const first = reinterpret_cast<const IndexTriangle*>(indices.data());
  const Changing changing;
  requireNoViewOf(mesh);
  check(mesh.build(std::move(points), {first, first + indices.shape(0)}), "FaceVertexTriMesh3d", "triangles");
}

template <class Mesh>
boost::shared_ptr<Mesh> make(const py::object& vertices, const py::object& triangles) {
  auto mesh = boost::make_shared<Mesh>();
  build(*mesh, vertices, triangles);
  return mesh;
}

// The same numbers, NaN beside NaN as in archives.
template <class Mesh>
bool isEqual(const Mesh& a, const Mesh& b) {
  const auto& x = a.getVertexColl();
  const auto& y = b.getVertexColl();
  const auto bytes = [](const auto& vertices) { return reinterpret_cast<const unsigned char*>(vertices.data()); };
  return x.size() == y.size() && std::equal(bytes(x), bytes(x) + x.size() * sizeof(x[0]), bytes(y)) &&
         a.getTriangleColl() == b.getTriangleColl();
}

template <class Mesh>
py::class_<Mesh, boost::shared_ptr<Mesh>> bindFaceVertex(py::module_& module, const char* name, const char* doc) {
  using MeshPtr = boost::shared_ptr<Mesh>;
  py::class_<Mesh, MeshPtr> entity(module, name, doc);
  entity.attr("__match_args__") = py::make_tuple("vertices", "triangles");
  const auto copy = [](const Mesh& self) { return boost::make_shared<Mesh>(self); };
  entity.def(py::init<>())
      .def(py::init(&make<Mesh>), "vertices"_a, "triangles"_a)
      .def_property_readonly(
          "triangles", [](const MeshPtr& self) { return viewOfIndices(self, self->getTriangleColl()); },
          "The vertices of the triangles as a read-only array of shape (m, 3) of uint32, a view.")
      .def("build", &build<Mesh>, "vertices"_a, "triangles"_a, "Replace vertices and triangles.")
      .def(
          "clear",
          [](Mesh& self) {
            const Changing changing;
            requireNoViewOf(self);
            self.clear();
          },
          "Remove vertices and triangles.")
      .def("copy", copy, "A copy that shares nothing with the mesh.")
      .def("__copy__", copy)
      .def(
          "__deepcopy__", [copy](const Mesh& self, const py::dict&) { return copy(self); }, "memo"_a)
      .def("__eq__", &isEqual<Mesh>, py::is_operator(), "Whether vertices and triangles are the same, bit for bit.")
      .def("__repr__", &print)
      .def(py::pickle(
          [](const py::object& self) {
            return py::make_tuple(self.attr("vertices").attr("copy")(), self.attr("triangles").attr("copy")());
          },
          [](const py::tuple& state) { return make<Mesh>(state[0], state[1]); }));
  entity.attr("__hash__") = py::none();
  bindMesh(entity);
  bindAsType(entity);
  return entity;
}

template <class Mesh>
void addTriangles(Mesh& mesh, const py::object& triangles) {
  const auto indices = matrixOf<omUInt32>(triangles, 3, "triangles");
  const auto rows = indices.template unchecked<2>();
  const Changing changing;
  requireNoViewOf(mesh);
  Mesh extended(mesh);
  for (py::ssize_t i = 0; i < rows.shape(0); ++i)
    check(extended.addTriangle(rows(i, 0), rows(i, 1), rows(i, 2)), "FaceVertexTriMesh3d",
          "triangles[" + std::to_string(i) + ']');
  mesh = std::move(extended);
}

}  // namespace

void bindFaceVertexTriMesh3d(py::module_& module) {
  bindTemplate(module, "FaceVertexTriMesh3d", [&](const char* name, auto coordinate) {
    using Mesh = geom::FaceVertexTriMesh3d<decltype(coordinate)>;
    auto entity = bindFaceVertex<Mesh>(
        module, name,
        "Triangles as files and scanners hold them: any number at an edge, in any direction, also degenerate ones.\n\n"
        "vertices: array of shape (n, 3).\n"
        "triangles: array of shape (m, 3) of indices of vertices.\n\n"
        ">>> FaceVertexTriMesh3d(np.eye(3), [[0, 1, 2], [0, 1, 2]]).nb_triangles\n"
        "2");
    entity.def("add_vertex", &addVertex<Mesh>, "point"_a, "Add a vertex and return its index.")
        .def("add_triangles", &addTriangles<Mesh>, "triangles"_a,
             "Add triangles of an array of shape (m, 3): all, or none where an index is wrong.")
        .def(
            "reverse_orientation",
            [](Mesh& self) {
              const Changing changing;
              self.reverseOrientation();
            },
            "Turn every triangle.");
    return entity;
  });
}

void bindFaceVertexAdjTriMesh3d(py::module_& module) {
  bindTemplate(module, "FaceVertexAdjTriMesh3d", [&](const char* name, auto coordinate) {
    using Mesh = geom::FaceVertexAdjTriMesh3d<decltype(coordinate)>;
    auto entity = bindFaceVertex<Mesh>(
        module, name,
        "A FaceVertexTriMesh3d whose triangles know their neighbours.\n\n"
        "vertices: array of shape (n, 3).\n"
        "triangles: array of shape (m, 3) of indices of vertices.\n\n"
        ">>> FaceVertexAdjTriMesh3d(np.zeros((4, 3)), [[0, 1, 2], [2, 1, 3]]).neighbours.tolist()\n"
        "[[4294967295, 1, 4294967295], [0, 4294967295, 4294967295]]");
    entity
        .def_property_readonly(
            "neighbours",
            [](const boost::shared_ptr<Mesh>& self) { return viewOfIndices(self, self->getNeighbourColl()); },
            "The triangles beyond the edges of each triangle, as a read-only array of shape (m, 3) of uint32, a view:\n"
            "4294967295 for none, 4294967294 for several.")
        .def_property_readonly("is_closed", &Mesh::isClosed,
                               "Whether every triangle has exactly one neighbour along each edge. Linear.");
    return entity;
  });
}

}  // namespace ormix::python
