#include "../Entities.h"
#include "../HoleTrees.h"
#include "../Meshes.h"

#include <ORMIXGeometry/Entity/3d/MeshWithHoles/MeshWithHoles3d.h>

namespace ormix::python {
namespace {

template <class T>
using Node = geom::MeshWithHoles3d<T>;
template <class T>
using NodePtrOf = boost::shared_ptr<Node<T>>;

template <class T>
geom::Mesh3d<T> meshCopy(const py::handle& mesh, const char* name) {
  if (py::isinstance<geom::Mesh3d<T>>(mesh)) return *py::cast<boost::shared_ptr<geom::Mesh3d<T>>>(mesh);
  throw py::type_error(std::string(name) + ": a Mesh3d of the same dtype was wanted");
}

// A node as it is, or a new one with a copy of a mesh.
template <class T>
NodePtrOf<T> holeOf(const py::handle& mesh) {
  if (py::isinstance<Node<T>>(mesh)) return py::cast<NodePtrOf<T>>(mesh);
  auto hole = boost::make_shared<Node<T>>();
  hole->getExteriorMesh() = meshCopy<T>(mesh, "holes");
  return hole;
}

// The exterior mesh itself: it is where its node is, and keeps that alive.
template <class T>
boost::shared_ptr<geom::Mesh3d<T>> exteriorOf(const NodePtrOf<T>& self) {
  return {self, &self->getExteriorMesh()};
}

template <class T>
void setExterior(Node<T>& self, const py::object& mesh) {
  auto copy = meshCopy<T>(mesh, "exterior");
  const Changing changing;
  const geom::Mesh3d<T>& former = self.getExteriorMesh();
  requireNoView(former.getVertexColl().data(), "vertices");
  requireNoView(former.getVertexIndexColl().data(), "triangles");
  requireNoView(former.getHalfEdgeColl().data(), "half-edges");
  self.getExteriorMesh() = std::move(copy);
}

}  // namespace

void bindMeshWithHoles3d(py::module_& module) {
  bindFamily<geom::MeshWithHoles3d>(
      module, "MeshWithHoles3d", py::make_tuple("exterior", "holes"),
      "A body: the inside of a mesh without its cavities. A hole is a mesh with holes itself: its holes are bodies in\n"
      "the cavity. It is not checked that holes lie inside.\n\n"
      "exterior: Mesh3d of the same dtype, which is copied.\n"
      "holes: nodes of the same class, which are shared, or meshes, which are copied.\n\n"
      ">>> MeshWithHoles3d(Mesh3d(np.eye(3), [[0, 1, 2]])).nb_tot_triangles\n"
      "1",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        entity.attr("_defaults") = py::dict("holes"_a = py::list());
        entity
            .def(py::init([](const py::object& exterior, const py::iterable& holes) {
                   auto mesh = boost::make_shared<Node<T>>();
                   mesh->getExteriorMesh() = meshCopy<T>(exterior, "exterior");
                   for (const py::handle hole : holes) addHole<Node<T>>(py::cast(mesh), holeOf<T>(hole));
                   return mesh;
                 }),
                 "exterior"_a, "holes"_a = py::tuple())
            .def_property("exterior", &exteriorOf<T>, &setExterior<T>,
                          "The exterior mesh itself: what changes it changes this body.")
            .def_property_readonly("type", &Node<T>::getMesh3dType, "The role of the exterior mesh.")
            .def_property_readonly("is_empty", &Node<T>::isEmpty,
                                   "Whether the exterior mesh has neither vertices nor triangles.")
            .def_property_readonly("nb_tot_meshes", &Node<T>::getNbTotMesh, "The number of meshes of the whole tree.")
            .def_property_readonly("nb_tot_vertices", &Node<T>::getNbTotVertices, "The number of their vertices.")
            .def_property_readonly("nb_tot_edges", &Node<T>::getNbTotEdges, "The number of their edges. Linear.")
            .def_property_readonly("nb_tot_triangles", &Node<T>::getNbTotTriangles, "The number of their triangles.");
        bindHoles<Node<T>>(entity);
        bindAsType(entity);
      });
}

}  // namespace ormix::python
