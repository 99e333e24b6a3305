#include "../Frame/Calls.h"
#include "../Frame/Dtypes.h"
#include "../Frame/Errors.h"
#include "../Frame/Meshes.h"
#include "MeshTools.h"

#include <ORMIXGeometry/Entity/3d/Mesh/MeshConversion.h>
#include <ORMIXGeometry/Entity/3d/MeshWithHoles/MeshWithHoles3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/Shape3d.h>
#include <ORMIXGeometry/Tools/Stl/StlLoad.h>
#include <ORMIXGeometry/Tools/Stl/StlSave.h>

#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

namespace ormix::python {
namespace {

using Path = std::filesystem::path;

// A function that reads a mesh of the type of a dtype.
template <class Read>
py::object readAs(const py::object& dtype, Read read) {
  return callWithDtype(AllDtypes(), dtype, [&](auto coordinate) -> py::object {
    const auto mesh = [&] {
      const Reading reading;
      return read(coordinate);
    }();
    return py::cast(mesh);
  });
}

// The mesh as one that the writers take.
template <class T, class Save>
BoolResult saveMesh(const TypedMesh<T>& typed, Save save) {
  const Reading reading;
  return typed.mesh != nullptr ? save(*typed.mesh) : save(geom::toMesh3d(typed.view()));
}

template <class T>
void bindTrees(py::module_& module) {
  using Mesh = geom::MeshWithHoles3d<T>;
  module
      .def(
          "save_to_stl_ascii",
          [](const Path& path, const Mesh& mesh, const std::string& name, bool withHoles) {
            check([&] {
              const Reading reading;
              return geom::saveToStLAscii(path.string(), mesh, withHoles, name);
            }());
          },
          "path"_a, "mesh"_a, "name"_a = "mesh", py::kw_only(), "with_holes"_a = true)
      .def(
          "save_to_stl_binary",
          [](const Path& path, const Mesh& mesh, bool withHoles) {
            check([&] {
              const Reading reading;
              return geom::saveToStLBinary(path.string(), mesh, withHoles);
            }());
          },
          "path"_a, "mesh"_a, py::kw_only(), "with_holes"_a = true);
}

void bindShapes(py::module_& module) {
  using Shapes = std::vector<boost::shared_ptr<geom::Shape3d>>;
  module
      .def(
          "save_to_stl_ascii",
          [](const Path& path, const Shapes& shapes, const std::string& name, bool withHoles) {
            check([&] {
              const Reading reading;
              return geom::saveToStLAscii(path.string(), shapes, withHoles, name);
            }());
          },
          "path"_a, "shapes"_a, "name"_a = "mesh", py::kw_only(), "with_holes"_a = true)
      .def(
          "save_to_stl_binary",
          [](const Path& path, const Shapes& shapes, bool withHoles) {
            check([&] {
              const Reading reading;
              return geom::saveToStLBinary(path.string(), shapes, withHoles);
            }());
          },
          "path"_a, "shapes"_a, py::kw_only(), "with_holes"_a = true);
}

void bindReaders(py::module_& module) {
  module
      .def(
          "stl_file_has_ascii_format", [](const Path& path) { return geom::stlFileHasASCIIFormat(path.string()); },
          "path"_a, LongCall(), "Whether the beginning of a file is that of an ASCII STL file.")
      .def(
          "read_from_stl_file",
          [](const Path& path, const py::object& dtype) {
            return readAs(dtype,
                          [&](auto coordinate) { return geom::readFromStLFile<decltype(coordinate)>(path.string()); });
          },
          "path"_a, "dtype"_a = "float64",
          "The mesh of an STL file of either format, with the fixed grammar that older programs rely on: of a "
          "malformed\n"
          "file the triangles before the defect, of a file that cannot be read none. `read_mesh` is tolerant and says\n"
          "what was wrong.")
      .def(
          "read_stl_ascii",
          [](const Path& path, const py::object& dtype) {
            return readAs(dtype,
                          [&](auto coordinate) { return geom::readStLAscii<decltype(coordinate)>(path.string()); });
          },
          "path"_a, "dtype"_a = "float64", "The same of an ASCII file.")
      .def(
          "read_stl_binary",
          [](const Path& path, const py::object& dtype) {
            return readAs(dtype,
                          [&](auto coordinate) { return geom::readStLBinary<decltype(coordinate)>(path.string()); });
          },
          "path"_a, "dtype"_a = "float64", "The same of a binary file.");
}

}  // namespace

void bindStlFiles(py::module_& module) {
  bindReaders(module);
  module
      .def(
          "save_to_stl_ascii",
          [](const Path& path, const MeshArgument& mesh, const std::string& name) {
            check(mesh.visit([&](const auto& typed) {
              return saveMesh(typed, [&](const auto& m) { return geom::saveToStLAscii(path.string(), m, name); });
            }));
          },
          "path"_a, "mesh"_a, "name"_a = "mesh",
          "Write a mesh, a mesh with holes or shapes to an ASCII STL file, translated to the positive octant, as the\n"
          "format originally required. `write_mesh` leaves coordinates as they are.")
      .def(
          "save_to_stl_binary",
          [](const Path& path, const MeshArgument& mesh) {
            check(mesh.visit([&](const auto& typed) {
              return saveMesh(typed, [&](const auto& m) { return geom::saveToStLBinary(path.string(), m); });
            }));
          },
          "path"_a, "mesh"_a, "The same as a binary file.");
  bindTrees<omReal64>(module);
  bindTrees<omReal32>(module);
  bindTrees<omInt32>(module);
  bindTrees<omUInt32>(module);
  bindShapes(module);
}

}  // namespace ormix::python
