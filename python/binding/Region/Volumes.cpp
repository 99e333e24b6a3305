#include "../Frame/Arrays.h"
#include "../Frame/Calls.h"
#include "../Frame/Dtypes.h"
#include "../Frame/Enumerations.h"
#include "Arguments.h"
#include "Regions.h"

#include <ORMIXGeometry/Entity/3d/Shape/ConnectedVoxels.h>
#include <ORMIXGeometry/Entity/3d/Shape/LabelShapes3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/SurfaceNets.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelSurfaces.h>

#include <pybind11/stl.h>

namespace ormix::python {
namespace {

using Components = std::vector<geom::VoxelComponent>;

py::dict columnsOf(const Components& components) {
  py::dict columns;
  const auto add = [&](const char* name, auto value) {
    using Value = decltype(value(geom::VoxelComponent()));
    py::array_t<Value> column(static_cast<py::ssize_t>(components.size()));
    Value* to = column.mutable_data();
    for (const geom::VoxelComponent& component : components) *to++ = value(component);
    columns[name] = column;
  };
  using C = geom::VoxelComponent;
  omInt64 label = 0;
  add("label", [&label](const C&) { return ++label; });
  add("nb_voxels", [](const C& c) { return static_cast<omInt64>(c.nbVoxels); });
  add("centroid_x", [](const C& c) { return c.centroid.getX(); });
  add("centroid_y", [](const C& c) { return c.centroid.getY(); });
  add("centroid_z", [](const C& c) { return c.centroid.getZ(); });
  add("x_begin", [](const C& c) { return omInt64{c.xBegin}; });
  add("x_end", [](const C& c) { return omInt64{c.xEnd}; });
  add("y_begin", [](const C& c) { return static_cast<omInt64>(c.yBegin); });
  add("y_end", [](const C& c) { return static_cast<omInt64>(c.yEnd); });
  add("z_begin", [](const C& c) { return static_cast<omInt64>(c.zBegin); });
  add("z_end", [](const C& c) { return static_cast<omInt64>(c.zEnd); });
  return columns;
}

py::dict measureComponents(const VoxelsArgument& volume, VoxelConnectivity connectivity) {
  return columnsOf([&] {
    const Reading reading;
    return geom::measureComponents(volume.get(), geom::componentsOf(volume.get(), connectivity));
  }());
}

// The meshes of a function that makes them of either type of reals.
template <class Make>
py::object meshes(const py::object& dtype, Make make) {
  return callWithDtype(RealDtypes(), dtype, [&](auto coordinate) -> py::object {
    const auto made = [&] {
      const Reading reading;
      return make(coordinate);
    }();
    return py::cast(made);
  });
}

py::object voxelSurfaces(const VoxelsArgument& volume, VoxelConnectivity connectivity, const py::object& dtype) {
  return meshes(dtype,
                [&](auto coordinate) { return geom::voxelSurfaces<decltype(coordinate)>(volume.get(), connectivity); });
}

py::object surfaceNets(const VoxelsArgument& volume, VoxelConnectivity connectivity, std::size_t nbSteps,
                       const py::object& dtype) {
  // Nothing moves any more long before.
  constexpr std::size_t mostSteps = 1000000;
  if (nbSteps > mostSteps) throw py::value_error("nb_steps: at most 1000000");
  return meshes(dtype, [&](auto coordinate) {
    return geom::surfaceNets<decltype(coordinate)>(volume.get(), connectivity, nbSteps);
  });
}

void bindComponents(py::module_& module, const VoxelConnectivity& all) {
  for (const char* name : {"label3d", "label_shapes3d"})
    module.def(
        name,
        [](const VoxelsArgument& volume, VoxelConnectivity connectivity, geom::eShapeSurface surface) {
          return geom::labelShapes3d(volume.get(), connectivity, surface);
        },
        "volume"_a, "connectivity"_a = all, "surface"_a = geom::eSS_None, LongCall(),
        "The connected regions of a volume as shapes, in the order of their first voxels.\n\n"
        "`volume`: an array of bool or integers, indexed [z, y, x], in which all but 0 is inside, or another set of\n"
        "voxels. Any strides are read without a copy.\n"
        "`connectivity`: 26 or 6, with which neighbours voxels are one region; or an eVoxelConnectivity.\n"
        "`surface`: which surfaces the shapes get: eSS_None, eSS_VoxelFaces or eSS_SurfaceNets.\n\n"
        ">>> [shape.nb_voxels for shape in label3d([[[1, 1, 0], [0, 0, 1]]], connectivity=6)]\n"
        "[2, 1]");
  module
      .def("measure_components", &measureComponents, "volume"_a, "connectivity"_a = all,
           "Size and place of each connected region of a volume, without making it: a dictionary of arrays, for "
           "pandas.\n"
           "`label` counts from 1 in the order of the first voxels, `nb_voxels` is the volume, `centroid_x` and so on "
           "the\n"
           "mean of the centers, `x_begin` the first column and `x_end` the one after the last.\n\n"
           ">>> measure_components(np.ones((2, 2, 3), bool))['centroid_x']\n"
           "array([1.5])")
      .def(
          "make_shape",
          [](const VoxelsArgument& volume, geom::eShapeSurface surface, VoxelConnectivity connectivity) {
            return geom::makeShape(volume.get(), surface, connectivity);
          },
          "volume"_a, "surface"_a = geom::eSS_None, "connectivity"_a = all, LongCall(),
          "The shape of a set of voxels, which need not be connected.")
      .def(
          "connected_components",
          [](const VoxelsArgument& volume, VoxelConnectivity connectivity) {
            return geom::connectedComponents(volume.get(), connectivity);
          },
          "volume"_a, "connectivity"_a = all, LongCall(),
          "The connected parts of a set of voxels, in the order of their first voxels.")
      .def(
          "to_row_intersections3d", [](const VoxelsArgument& volume) { return volume.get(); }, "volume"_a,
          "The voxels of a volume that are not 0, as runs. It is indexed [z, y, x] and read where it is, whatever its\n"
          "strides.");
}

}  // namespace

void bindVolumes(py::module_& module) {
  bindEnumeration<geom::eShapeSurface>(module, "Which surfaces a shape gets with its voxels.");
  const VoxelConnectivity all{geom::eVC_26};
  bindComponents(module, all);
  module
      .def("voxel_surfaces", &voxelSurfaces, "volume"_a, "connectivity"_a = all, "dtype"_a = "float64",
           "The exact boundaries of voxels as meshes with holes, one for each region that no other one encloses: "
           "closed,\n"
           "with the voxels inside, so that the volume is the number of voxels. `voxelize` is the way back.\n\n"
           "`connectivity`: 26 or 6, with which neighbours voxels are one region.\n"
           "`dtype`: float64 or float32; an error where it does not hold a coordinate exactly.\n\n"
           ">>> mesh = voxel_surfaces(np.ones((1, 1, 1), bool))[0].exterior\n"
           ">>> mesh.nb_vertices, mesh.nb_triangles\n"
           "(8, 12)")
      .def("surface_nets", &surfaceNets, "volume"_a, "connectivity"_a = all, "nb_steps"_a = geom::s_nbNetSteps,
           "dtype"_a = "float64",
           "Smooth boundaries of voxels: the meshes of `voxel_surfaces`, of which each vertex is moved towards the "
           "mean of\n"
           "its neighbours, within half a voxel. `nb_steps`: how often, 0 for the faces themselves.");
}

}  // namespace ormix::python
