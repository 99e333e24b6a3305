#include "../Frame/Arrays.h"
#include "../Frame/Calls.h"
#include "../Frame/Enumerations.h"
#include "../Frame/Errors.h"
#include "../Frame/Meshes.h"
#include "MeshTools.h"

#include <ORMIXGeometry/Entity/3d/Cone/Cone3d.h>
#include <ORMIXGeometry/Entity/3d/Cylinder/Cylinder3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshConversion.h>
#include <ORMIXGeometry/Entity/3d/Mesh/QuickHull.h>
#include <ORMIXGeometry/Entity/3d/Mesh/RoundMeshes.h>
#include <ORMIXGeometry/Entity/3d/Shape/Voxelize.h>
#include <ORMIXGeometry/Entity/3d/Torus/Torus3d.h>

#include <pybind11/stl.h>

#include <boost/smart_ptr/make_shared_object.hpp>

namespace ormix::python {
namespace {

py::object toMesh3d(const MeshArgument& mesh, geom::eNonManifoldPolicy policy, bool returnOwners) {
  return mesh.visit([&](const auto& typed) -> py::object {
    using T = typename std::decay_t<decltype(typed)>::CoordinateType;
    auto result = boost::make_shared<geom::Mesh3d<T>>();
    typename geom::Mesh3d<T>::IndexColl owners;
    check(
        [&] {
          const Reading reading;
          return geom::toMesh3d(typed.view(), *result, policy, &owners);
        }(),
        "Mesh3d", "mesh");
    if (!returnOwners) return py::cast(result);
    return py::make_tuple(result, copyOf(owners));
  });
}

// A conversion that the library makes of a view.
template <class Convert>
py::object converted(const MeshArgument& mesh, Convert convert) {
  return mesh.visit([&](const auto& typed) -> py::object {
    auto result = [&] {
      const Reading reading;
      return convert(typed.view());
    }();
    return py::cast(std::move(result));
  });
}

// The hull of points or of the vertices of a mesh.
template <class T, class Source>
py::object hullOf(const Source& source) {
  auto hull = boost::make_shared<geom::Mesh3d<T>>();
  check(
      [&] {
        const Reading reading;
        return source(*hull);
      }(),
      "Mesh3d", "points");
  return py::cast(hull);
}

py::object hullOfMesh(const MeshArgument& mesh) {
  return mesh.visit([](const auto& typed) {
    using T = typename std::decay_t<decltype(typed)>::CoordinateType;
    return hullOf<T>([&](geom::Mesh3d<T>& hull) { return geom::quickHull(typed.view(), hull); });
  });
}

template <class T>
py::object hullOfCloud(const geom::PointCloud3d<T>& cloud) {
  return hullOf<T>([&](geom::Mesh3d<T>& hull) { return geom::quickHull(cloud, hull); });
}

template <class T>
py::object hullOfArray(const py::array& points) {
  const auto coll = pointsOf<geom::Point3dData<T>>(points, "points");
  return hullOf<T>([&](geom::Mesh3d<T>& hull) { return geom::quickHull(coll, hull); });
}

// Types of coordinates are kept, all others become omReal64.
py::object hullOfPoints(const py::object& points) {
  const py::array array = py::array::ensure(points);
  if (!array) {
    PyErr_Clear();
    throw py::type_error("points: an array of numbers was wanted");
  }
  if (py::isinstance<py::array_t<omReal32>>(array)) return hullOfArray<omReal32>(array);
  if (py::isinstance<py::array_t<omInt32>>(array)) return hullOfArray<omInt32>(array);
  if (py::isinstance<py::array_t<omUInt32>>(array)) return hullOfArray<omUInt32>(array);
  return hullOfArray<omReal64>(array);
}

geom::VoxelGrid gridOf(const std::array<omUInt32, 3>& shape, const geom::Point3dData<omReal64>& origin,
                       const geom::Point3dData<omReal64>& spacing) {
  return {origin, spacing, shape[2], shape[1], shape[0]};
}

geom::RowIntersections3d voxelizeMesh(const MeshArgument& mesh, const std::array<omUInt32, 3>& shape,
                                      const geom::Point3dData<omReal64>& origin,
                                      const geom::Point3dData<omReal64>& spacing, geom::eInsideRule rule) {
  return mesh.visit([&](const auto& typed) {
    const geom::VoxelGrid grid = gridOf(shape, origin, spacing);
    const Reading reading;
    return typed.mesh != nullptr ? geom::voxelize(*typed.mesh, grid, rule)
                                 : geom::voxelize(geom::toMesh3d(typed.view()), grid, rule);
  });
}

template <class Solid>
void bindRound(py::module_& module) {
  module.def(
      "to_mesh3d", [](const Solid& solid, omUInt32 sides) { return geom::toMesh3d(solid, sides); }, "solid"_a,
      "sides"_a);
}

template <class T>
void bindTyped(py::module_& module) {
  using Meshes = std::vector<boost::shared_ptr<geom::MeshWithHoles3d<T>>>;
  const geom::Point3dData<omReal64> zero(0, 0, 0), one(1, 1, 1);
  bindRound<geom::Cylinder3d<T>>(module);
  bindRound<geom::Cone3d<T>>(module);
  bindRound<geom::Torus3d<T>>(module);
  module.def("quick_hull", &hullOfCloud<T>, "points"_a)
      .def(
          "voxelize",
          [](const geom::MeshWithHoles3d<T>& mesh, const std::array<omUInt32, 3>& shape,
             const geom::Point3dData<omReal64>& origin, const geom::Point3dData<omReal64>& spacing,
             geom::eInsideRule rule) { return geom::voxelize(mesh, gridOf(shape, origin, spacing), rule); },
          "mesh"_a, "shape"_a, "origin"_a = zero, "spacing"_a = one, "rule"_a = geom::eIR_EvenOdd, LongCall())
      .def(
          "voxelize",
          [](const Meshes& meshes, const std::array<omUInt32, 3>& shape, const geom::Point3dData<omReal64>& origin,
             const geom::Point3dData<omReal64>& spacing,
             geom::eInsideRule rule) { return geom::voxelize(meshes, gridOf(shape, origin, spacing), rule); },
          "mesh"_a, "shape"_a, "origin"_a = zero, "spacing"_a = one, "rule"_a = geom::eIR_EvenOdd, LongCall());
}

}  // namespace

void bindMeshConversions(py::module_& module) {
  bindEnumeration<geom::eInsideRule>(module, "What is inside surfaces.");
  module
      .def(
          "to_mesh3d", &toMesh3d, "mesh"_a, "policy"_a = geom::eNMP_OwnVertices, py::kw_only(),
          "return_owners"_a = false,
          "A mesh as a Mesh3d. Vertices and triangles keep their order and their indices.\n\n"
          "`policy`: whether a triangle with equal corners, or with an edge that an earlier triangle has in the same\n"
          "direction, gets vertices of its own (eNMP_OwnVertices) or is an error (eNMP_Refuse).\n"
          "`return_owners`: whether to return (mesh, owners), with the indices of such triangles.\n\n"
          "With a cylinder, a cone or a torus, and a number of `sides` around the axis, 3 to 4096: a closed Mesh3d\n"
          "with its vertices on the surface. An error for one without a volume, or with values that are not finite.\n\n"
          ">>> to_mesh3d((np.eye(3), [[0, 1, 2]])).nb_triangles\n"
          "1\n"
          ">>> round(volume(to_mesh3d(Cylinder3d((0, 0, 0), (0, 0, 4), 3), sides=4)), 9)\n"
          "72.0")
      .def(
          "to_face_vertex_tri_mesh3d",
          [](const MeshArgument& mesh) {
            return converted(mesh, [](const auto& view) { return geom::toFaceVertexTriMesh3d(view); });
          },
          "mesh"_a, "A copy of the vertices and the index triples as a FaceVertexTriMesh3d.")
      .def(
          "to_face_vertex_adj_tri_mesh3d",
          [](const MeshArgument& mesh) {
            return converted(mesh, [](const auto& view) { return geom::toFaceVertexAdjTriMesh3d(view); });
          },
          "mesh"_a, "The same with the neighbours of the triangles, as a FaceVertexAdjTriMesh3d.");
  const geom::Point3dData<omReal64> zero(0, 0, 0), one(1, 1, 1);
  module.def("voxelize", &voxelizeMesh, "mesh"_a, "shape"_a, "origin"_a = zero, "spacing"_a = one,
             "rule"_a = geom::eIR_EvenOdd,
             "The voxels of a grid whose centers are inside a mesh, a mesh with holes, or several of these, decided "
             "exactly.\n\n"
             "`shape`: (depth, height, width) of the grid.\n"
             "`origin`: the corner of the voxel (0, 0, 0); `spacing`: the size of a voxel, (x, y, z).\n"
             "`rule`: eIR_EvenOdd, or eIR_NonZero by which bodies that overlap are united.\n\n"
             "An error for a surface that is open where a row of centers meets it.\n\n"
             ">>> mesh = voxel_surfaces(np.ones((1, 2, 3), bool))[0]\n"
             ">>> voxelize(mesh, (2, 4, 6), spacing=(0.5, 0.5, 0.5)).nb_voxels\n"
             "48");
  module.def(
      "quick_hull", &hullOfMesh, "points"_a,
      "The convex hull of the vertices of a mesh, of a point cloud or of an array of points of shape (n, 3), as a\n"
      "Mesh3d: closed, exact, with the extreme points in the order in which they are given.\n\n"
      "An error where all points lie in one plane, and for coordinates that are not finite.\n\n"
      ">>> quick_hull(np.vstack([np.zeros(3), np.eye(3)])).nb_triangles\n"
      "4");
  bindTyped<omReal64>(module);
  bindTyped<omReal32>(module);
  bindTyped<omInt32>(module);
  bindTyped<omUInt32>(module);
  module.def("quick_hull", &hullOfPoints, "points"_a);
}

}  // namespace ormix::python
