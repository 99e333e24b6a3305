#include "Meshes.h"

#include "Errors.h"

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

TriMeshArrays arraysOf(const py::handle& vertices, const py::handle& triangles) {
  return {verticesOf(vertices), matrixOf<omUInt32>(triangles, 3, "triangles")};
}

template <class T>
TypedMesh<T> typedMesh(const TriMeshArrays& arrays, Indices indices) {
  TypedMesh<T> typed;
  typed.arrays = {static_cast<const T*>(arrays.vertices.data()), static_cast<std::size_t>(arrays.vertices.shape(0)),
                  static_cast<const omUInt32*>(arrays.triangles.data()),
                  static_cast<std::size_t>(arrays.triangles.shape(0))};
  if (indices == Indices::Checked) check(geom::checkIndices(typed.arrays), "TriMesh3d", "triangles");
  return typed;
}

MeshArgument argumentOf(const TriMeshArrays& arrays, Indices indices) {
  const py::object owner = py::make_tuple(arrays.vertices, arrays.triangles);
  if (hasType<omReal64>(arrays.vertices)) return {typedMesh<omReal64>(arrays, indices), owner};
  if (hasType<omReal32>(arrays.vertices)) return {typedMesh<omReal32>(arrays, indices), owner};
  if (hasType<omInt32>(arrays.vertices)) return {typedMesh<omInt32>(arrays, indices), owner};
  return {typedMesh<omUInt32>(arrays, indices), owner};
}

// With triangles of its own.
MeshArgument copiedArgument(const py::handle& vertices, const py::handle& triangles, Indices indices) {
  TriMeshArrays arrays = arraysOf(vertices, triangles);
  arrays.triangles = py::array(arrays.triangles.attr("copy")());
  return argumentOf(arrays, indices);
}

template <class T>
bool loadMesh(py::handle source, MeshArgument& argument) {
  TypedMesh<T> typed;
  if (py::isinstance<geom::Mesh3d<T>>(source))
    typed.mesh = source.cast<const geom::Mesh3d<T>*>();
  else if (py::isinstance<geom::FaceVertexTriMesh3d<T>>(source))
    typed.faces = source.cast<const geom::FaceVertexTriMesh3d<T>*>();
  else if (py::isinstance<geom::FaceVertexAdjTriMesh3d<T>>(source))
    typed.adjacent = source.cast<const geom::FaceVertexAdjTriMesh3d<T>*>();
  else
    return false;
  argument = {typed, py::reinterpret_borrow<py::object>(source)};
  return true;
}

}  // namespace

TriMeshArrays triMeshArrays(const py::handle& vertices, const py::handle& triangles) {
  const TriMeshArrays arrays = arraysOf(vertices, triangles);
  argumentOf(arrays, Indices::Checked);
  return arrays;
}

bool load(py::handle source, bool convert, MeshArgument& mesh, Indices indices) {
  if (loadMesh<omReal64>(source, mesh) || loadMesh<omReal32>(source, mesh) || loadMesh<omInt32>(source, mesh) ||
      loadMesh<omUInt32>(source, mesh))
    return true;
  // The shape and the type of an array may be assigned, so that they are looked at each time.
  if (py::isinstance<TriMeshArrays>(source)) {
    const auto& arrays = py::cast<const TriMeshArrays&>(source);
    mesh = copiedArgument(arrays.vertices, arrays.triangles, indices);
    return true;
  }
  const bool isPair = (PyTuple_Check(source.ptr()) || PyList_Check(source.ptr())) && py::len(source) == 2;
  if (!convert || !isPair) return false;
  const auto pair = py::reinterpret_borrow<py::sequence>(source);
  mesh = copiedArgument(py::object(pair[0]), py::object(pair[1]), indices);
  return true;
}

MeshArgument meshOf(const py::handle& mesh, const char* name, Indices indices) {
  MeshArgument argument;
  if (load(mesh, true, argument, indices)) return argument;
  throw py::type_error(std::string(name) + ": a mesh or a pair (vertices, triangles) was wanted, not " +
                       py::cast<std::string>(py::type::handle_of(mesh).attr("__name__")));
}

}  // namespace ormix::python
