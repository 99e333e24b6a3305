#include "../../Frame/Enumerations.h"
#include "../Entities.h"
#include "../Meshes.h"

#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshConversion.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshWalks.h>

#include <pybind11/stl.h>

namespace ormix::python {
namespace {

// Replaces the mesh and returns the triangles that got vertices of their own.
template <class T>
py::array_t<omUInt32> build(geom::Mesh3d<T>& mesh, const py::object& vertices, const py::object& triangles,
                            geom::eNonManifoldPolicy policy) {
  auto points = pointsOf<geom::Point3dData<T>>(vertices, "vertices");
  const auto indices = matrixOf<omUInt32>(triangles, 3, "triangles");
  const omUInt32* const first = indices.data();
  typename geom::Mesh3d<T>::IndexColl owners;
  const Changing changing;
  requireNoViewsOf(mesh);
  check(mesh.build(std::move(points), {first, first + indices.size()}, policy, &owners), mesh.getClassName(),
        "triangles");
  return copyOf(owners);
}

template <class T>
void addTriangles(geom::Mesh3d<T>& mesh, const py::object& triangles) {
  const auto indices = matrixOf<omUInt32>(triangles, 3, "triangles");
  const auto rows = indices.template unchecked<2>();
  const Changing changing;
  requireNoViewsOf(mesh);
  geom::Mesh3d<T> extended(mesh);
  extended.reserve(mesh.getNbVertices(), mesh.getNbTriangles() + static_cast<std::size_t>(rows.shape(0)));
  for (py::ssize_t i = 0; i < rows.shape(0); ++i)
    check(extended.addTriangle(rows(i, 0), rows(i, 1), rows(i, 2)), mesh.getClassName(),
          "triangles[" + std::to_string(i) + ']');
  mesh = std::move(extended);
}

template <class T>
std::size_t addTriangle(geom::Mesh3d<T>& mesh, omUInt32 i0, omUInt32 i1, omUInt32 i2) {
  const Changing changing;
  requireNoViewsOf(mesh);
  check(mesh.addTriangle(i0, i1, i2), mesh.getClassName());
  return mesh.getNbTriangles() - 1;
}

template <class T>
py::list boundaryLoops(const geom::Mesh3d<T>& mesh) {
  const auto loops = [&] {
    const Reading reading;
    return geom::collectBoundaryLoops(mesh.getTopology());
  }();
  py::list arrays;
  for (const std::vector<std::size_t>& loop : loops) {
    py::array_t<omUInt32> vertices(static_cast<py::ssize_t>(loop.size()));
    omUInt32* to = vertices.mutable_data();
    for (const std::size_t halfEdge : loop) *to++ = mesh.getHalfEdge(halfEdge).startVertexIdx;
    arrays.append(vertices);
  }
  return arrays;
}

template <class T>
py::array_t<omUInt32> labelComponents(const geom::Mesh3d<T>& mesh) {
  std::vector<omUInt32> labels;
  {
    const Reading reading;
    geom::labelComponents(mesh.getTopology(), labels);
  }
  return copyOf(labels);
}

template <class T, class Class>
void bindTopology(Class& entity) {
  using Mesh = geom::Mesh3d<T>;
  using MeshPtr = boost::shared_ptr<Mesh>;
  entity
      .def_property_readonly(
          "triangles", [](const MeshPtr& self) { return viewOfTriples(self, self->getVertexIndexColl()); },
          "The vertices of the triangles as a read-only array of shape (m, 3) of uint32, a view.")
      .def_property_readonly(
          "half_edges", [](const MeshPtr& self) { return viewOfIndices(self, self->getHalfEdgeColl()); },
          "The half-edges as a read-only array of shape (3 m, 4) of uint32, a view: the vertex where it starts, the "
          "next\n"
          "half-edge of the triangle, the opposite one (4294967295 on a boundary), the triangle.")
      .def_property_readonly("nb_half_edges", &Mesh::getNbHalfEdges, "Three for each triangle.")
      .def_property_readonly("nb_edges", &Mesh::getNbEdges, "The number of edges. Linear.")
      .def_property_readonly("is_closed", &Mesh::isClosed, "Whether every edge has two triangles. Linear.")
      .def("boundary_loops", &boundaryLoops<T>, "The vertices along each boundary, as a list of arrays of indices.")
      .def_property_readonly(
          "nb_components", [](const Mesh& self) { return geom::getNbComponents(self.getTopology()); },
          "The number of components: triangles with a common edge are in the same. Linear.")
      .def("label_components", &labelComponents<T>,
           "The number of the component of each triangle, from 0, as an array.")
      .def(
          "check_integrity", [](const Mesh& self) { check(self.checkIntegrity(), self.getClassName()); },
          "Raise Error where a rule of half-edges is broken, which should not be possible. Linear.")
      .def(
          "reverse_orientation",
          [](Mesh& self) {
            const Changing changing;
            requireNoViewsOf(self);
            self.reverseOrientation();
          },
          "Turn every triangle, which exchanges inside and outside.");
}

}  // namespace

void bindMesh3d(py::module_& module) {
  bindEnumeration<geom::eMesh3dType>(module, "The role of a surface.");
  bindEnumeration<geom::eNonManifoldPolicy>(
      module, "What happens to a triangle with an edge that has been used in the same direction.");
  bindFamily<geom::Mesh3d>(
      module, "Mesh3d", py::make_tuple("vertices", "triangles", "type"),
      "A surface of triangles, each of which knows its neighbours. The outside is where the vertices of a triangle "
      "are\n"
      "in counter-clockwise order.\n\n"
      "vertices: array of shape (n, 3).\n"
      "triangles: array of shape (m, 3) of indices of vertices.\n"
      "type: the surface of a body or of a cavity.\n"
      "policy: by default, triangles that would give an edge more than two, or that are turned against a neighbour, "
      "are\n"
      "    an Error; with eNMP_OwnVertices they get vertices of their own, appended to the others.\n\n"
      ">>> mesh = Mesh3d(np.eye(3), [[0, 1, 2]])\n"
      ">>> mesh.is_closed, mesh.boundary_loops()[0].tolist()\n"
      "(False, [0, 1, 2])",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        using Mesh = geom::Mesh3d<T>;
        entity.attr("_defaults") = py::dict("type"_a = geom::eM3DT_Exterior);
        entity
            .def(py::init([](const py::object& vertices, const py::object& triangles, geom::eMesh3dType type,
                             geom::eNonManifoldPolicy policy) {
                   auto mesh = boost::make_shared<Mesh>();
                   mesh->setMesh3dType(type);
                   build(*mesh, vertices, triangles, policy);
                   return mesh;
                 }),
                 "vertices"_a, "triangles"_a, "type"_a = geom::eM3DT_Exterior, "policy"_a = geom::eNMP_Refuse)
            .def_property("type", &Mesh::getMesh3dType, py::cpp_function(&Mesh::setMesh3dType, ChangingCall()),
                          "The role: of a body or of a cavity.")
            .def("build", &build<T>, "vertices"_a, "triangles"_a, "policy"_a = geom::eNMP_Refuse,
                 "Replace vertices and triangles; answers the triangles that got vertices of their own.")
            .def("add_vertex", &addVertex<Mesh>, "point"_a, "Add a vertex and return its index.")
            .def("add_triangle", &addTriangle<T>, "i0"_a, "i1"_a, "i2"_a,
                 "Add a triangle of three vertices and return its index. Error, with nothing changed, where it does "
                 "not\n"
                 "fit to its neighbours.")
            .def("add_triangles", &addTriangles<T>, "triangles"_a,
                 "Add triangles of an array of shape (m, 3): all, or none where one does not fit.")
            .def(
                "clear",
                [](Mesh& self) {
                  const Changing changing;
                  requireNoViewsOf(self);
                  self.clear();
                },
                "Remove vertices and triangles.")
            .def(
                "compare",
                [](const Mesh& self, const Mesh& other, T tolerance) { return geom::compare(self, other, tolerance); },
                "other"_a, "tolerance"_a = T(), LongCall(),
                "Whether the triangles are the same and no vertex is farther off than the tolerance.");
        bindMesh(entity);
        bindTopology<T>(entity);
        bindAsType(entity);
      });
}

}  // namespace ormix::python
