#include "Meshes.h"

#include "Errors.h"

#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexAdjTriMesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexTriMesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>

#include <string>

namespace ormix::python {
namespace {

template <class T>
bool hasType(const py::array& array) {
  return py::isinstance<py::array_t<T>>(array);
}

// The vertices in the nearest coordinate type.
py::array verticesOf(const py::handle& values) {
  const py::array array = py::array::ensure(values);
  if (!array) PyErr_Clear();
  if (array && hasType<omReal32>(array)) return matrixOf<omReal32>(array, 3, "vertices");
  if (array && hasType<omInt32>(array)) return matrixOf<omInt32>(array, 3, "vertices");
  if (array && hasType<omUInt32>(array)) return matrixOf<omUInt32>(array, 3, "vertices");
  return matrixOf<omReal64>(array ? array : values, 3, "vertices");
}

TriMeshArrays checkedArrays(const py::handle& vertices, const py::handle& triangles) {
  return {verticesOf(vertices), matrixOf<omUInt32>(triangles, 3, "triangles")};
}

template <class T>
geom::TriMesh3d<T> viewOfArrays(const TriMeshArrays& arrays) {
  const geom::TriMesh3d<T> view(
      static_cast<const T*>(arrays.vertices.data()), static_cast<std::size_t>(arrays.vertices.shape(0)),
      static_cast<const omUInt32*>(arrays.triangles.data()), static_cast<std::size_t>(arrays.triangles.shape(0)));
  check(geom::checkIndices(view), "TriMesh3d", "triangles");
  return view;
}

MeshArgument argumentOf(const TriMeshArrays& arrays) {
  py::object owner = py::make_tuple(arrays.vertices, arrays.triangles);
  if (hasType<omReal64>(arrays.vertices)) return {owner, viewOfArrays<omReal64>(arrays)};
  if (hasType<omReal32>(arrays.vertices)) return {owner, viewOfArrays<omReal32>(arrays)};
  if (hasType<omInt32>(arrays.vertices)) return {owner, viewOfArrays<omInt32>(arrays)};
  return {owner, viewOfArrays<omUInt32>(arrays)};
}

template <class Mesh>
bool viewIfMesh(const py::handle& mesh, MeshArgument& argument) {
  if (!py::isinstance<Mesh>(mesh)) return false;
  argument = {py::reinterpret_borrow<py::object>(mesh), geom::TriMesh3dOf<Mesh>(py::cast<const Mesh&>(mesh))};
  return true;
}

template <class T>
bool viewIfMeshOf(const py::handle& mesh, MeshArgument& argument) {
  return viewIfMesh<geom::Mesh3d<T>>(mesh, argument) || viewIfMesh<geom::FaceVertexTriMesh3d<T>>(mesh, argument) ||
         viewIfMesh<geom::FaceVertexAdjTriMesh3d<T>>(mesh, argument);
}

bool viewIfAnyMesh(const py::handle& mesh, MeshArgument& argument) {
  return viewIfMeshOf<omReal64>(mesh, argument) || viewIfMeshOf<omReal32>(mesh, argument) ||
         viewIfMeshOf<omInt32>(mesh, argument) || viewIfMeshOf<omUInt32>(mesh, argument);
}

bool isPair(const py::handle& mesh) {
  return (py::isinstance<py::tuple>(mesh) || py::isinstance<py::list>(mesh)) && py::len(mesh) == 2;
}

}  // namespace

TriMeshArrays triMeshArrays(const py::handle& vertices, const py::handle& triangles) {
  const TriMeshArrays arrays = checkedArrays(vertices, triangles);
  argumentOf(arrays);
  return arrays;
}

MeshArgument meshOf(const py::handle& mesh, const char* name) {
  MeshArgument argument;
  if (viewIfAnyMesh(mesh, argument)) return argument;
  // The shape and the type of an array may be assigned, so that they are looked at each time.
  if (py::isinstance<TriMeshArrays>(mesh)) {
    const auto& arrays = py::cast<const TriMeshArrays&>(mesh);
    return argumentOf(checkedArrays(arrays.vertices, arrays.triangles));
  }
  if (isPair(mesh)) {
    const auto pair = py::cast<py::sequence>(mesh);
    return argumentOf(checkedArrays(py::object(pair[0]), py::object(pair[1])));
  }
  throw py::type_error(std::string(name) + ": a mesh or a pair (vertices, triangles) was wanted, not " +
                       py::cast<std::string>(py::type::handle_of(mesh).attr("__name__")));
}

bool isMesh(const py::handle& mesh) {
  MeshArgument argument;
  return viewIfAnyMesh(mesh, argument) || py::isinstance<TriMeshArrays>(mesh) || isPair(mesh);
}

}  // namespace ormix::python
