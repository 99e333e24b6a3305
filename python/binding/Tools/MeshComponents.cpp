#include "../Frame/Arrays.h"
#include "../Frame/Calls.h"
#include "../Frame/Enumerations.h"
#include "../Frame/Meshes.h"
#include "../Frame/Result.h"
#include "MeshTools.h"

#include <ORMIXGeometry/Tools/Mesh/Components.h>
#include <ORMIXGeometry/Tools/Mesh/Shells.h>

#include <pybind11/stl.h>

namespace ormix::python {
namespace {

py::tuple labelComponents(const MeshArgument& mesh, geom::eMeshConnectivity connectivity) {
  std::vector<omUInt32> labels;
  const std::size_t count = mesh.visit([&](const auto& typed) {
    const Reading reading;
    return geom::labelComponents(typed.view(), labels, connectivity);
  });
  return py::make_tuple(count, copyOf(labels));
}

template <class Mesh>
py::object componentsOf(const Mesh& mesh, geom::eMeshConnectivity connectivity) {
  auto components = [&] {
    const Reading reading;
    return geom::extractComponents(mesh, connectivity);
  }();
  return py::cast(std::move(components));
}

py::object extractComponents(const MeshArgument& mesh, geom::eMeshConnectivity connectivity) {
  return mesh.visit([&](const auto& typed) {
    if (typed.mesh != nullptr) return componentsOf(*typed.mesh, connectivity);
    if (typed.faces != nullptr) return componentsOf(*typed.faces, connectivity);
    if (typed.adjacent != nullptr) return componentsOf(*typed.adjacent, connectivity);
    return componentsOf(typed.arrays, connectivity);
  });
}

geom::MeshShells findShells(const MeshArgument& mesh, geom::eMeshConnectivity connectivity) {
  return mesh.visit([&](const auto& typed) {
    const Reading reading;
    return geom::findShells(typed.view(), connectivity);
  });
}

py::object toMeshesWithHoles(const MeshArgument& mesh) {
  return mesh.visit([](const auto& typed) -> py::object {
    const auto meshes = [&] {
      const Reading reading;
      return geom::toMeshesWithHoles(typed.view());
    }();
    return py::cast(meshes);
  });
}

void bindShells(py::module_& module) {
  using geom::MeshShell;
  using geom::MeshShells;
  bindEnumeration<geom::eShellOrientation>(module, "The side to which the triangles of a closed shell are turned.");
  Result<MeshShell>(module, "MeshShell", "One component of a mesh, see `find_shells`.")
      .value("first_triangle", &MeshShell::firstTriangle, "The index of its lowest triangle.")
      .value("nb_triangles", &MeshShell::nbTriangles, "How many triangles it has.")
      .value("is_closed", &MeshShell::isClosed, "Whether each of its edges has an even number of its triangles.")
      .value("is_oriented", &MeshShell::isOriented, "Whether its triangles agree along all edges.")
      .value("orientation", &MeshShell::orientation, "To which side they are turned, an eShellOrientation.")
      .value("volume", &MeshShell::volume, "Positive when turned outward; without meaning for an open shell.")
      .value(
          "parent",
          [](const MeshShell& self) -> py::object {
            return self.parent == geom::s_noShell ? py::object(py::none()) : py::int_(self.parent);
          },
          "The index of the innermost closed shell around it, or None.")
      .value("depth", &MeshShell::depth, "How many closed shells are around it.");
  Result<MeshShells>(module, "MeshShells", "The shells of a mesh, see `find_shells`.")
      .value("shells", &MeshShells::shells, "A list of MeshShell, in order of their lowest triangles.")
      .hidden(
          "labels", [](const MeshShells& self) { return copyOf(self.labels); },
          "Of each triangle the index of its shell, uint32.");
  module
      .def("find_shells", &findShells, "mesh"_a, "connectivity"_a = geom::eMC_ManifoldEdges,
           "The components of a mesh, whether they are closed, how they are turned and which lies inside which.\n\n"
           ">>> boxes = voxel_surfaces(np.pad(np.ones((1, 1, 1), bool), 1))\n"
           ">>> find_shells(boxes[0].exterior).shells[0].volume\n"
           "1.0")
      .def("to_meshes_with_holes", &toMeshesWithHoles, "mesh"_a,
           "The bodies whose surfaces the shells of a mesh are: a shell in no other is the exterior of a body, one "
           "inside\n"
           "it bounds a cavity, and so on. An error where a shell is not closed.");
}

}  // namespace

void bindMeshComponents(py::module_& module) {
  bindEnumeration<geom::eMeshConnectivity>(module, "What connects two triangles.");
  module
      .def(
          "label_components", &labelComponents, "mesh"_a, "connectivity"_a = geom::eMC_Edges,
          "The number of components of a mesh, and for each triangle the index of its own, uint32. They are numbered "
          "in\n"
          "order of their lowest triangles.\n\n"
          "As everywhere, a mesh is an object of one of the classes of meshes, or a pair of arrays: vertices of shape\n"
          "(n, 3) and triangles of shape (m, 3), indices of vertices.\n\n"
          ">>> count, labels = label_components((np.eye(3), [[0, 1, 2], [1, 0, 2]]))\n"
          ">>> count, labels.tolist()\n"
          "(1, [0, 0])")
      .def("extract_components", &extractComponents, "mesh"_a, "connectivity"_a = geom::eMC_Edges,
           "One mesh for each component, of the class of the mesh; of arrays a FaceVertexTriMesh3d. Triangles and\n"
           "vertices keep their order; a vertex that several components use is copied to each.");
  bindShells(module);
}

}  // namespace ormix::python
