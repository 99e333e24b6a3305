#pragma once

#include "Arrays.h"

#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexAdjTriMesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexTriMesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>

#include <utility>
#include <variant>

/// \file
/// What functions take as a mesh of triangles: any mesh of the library, or arrays of the caller.

namespace ormix::python {

/// Vertices and triangles in arrays: the Python class `TriMesh3d`. Vertices have one of the four coordinate types,
/// triangles are of uint32; both are C-contiguous.
struct TriMeshArrays {
  py::array vertices;   ///< of shape (n, 3)
  py::array triangles;  ///< of shape (m, 3): indices of vertices
};

/// The arrays as they are where their types and strides are those above, else copies: of int32 or uint32 vertices of
/// these types, of float32 such ones, else of float64.
/// \throw py::type_error, py::value_error for other arrays; `Error` for triangles with an index that is none
TriMeshArrays triMeshArrays(const py::handle& vertices, const py::handle& triangles);

/// A mesh with coordinates of one type: one of three classes, or arrays where all are null.
template <class T>
struct TypedMesh {
  using CoordinateType = T;

  const geom::Mesh3d<T>* mesh = nullptr;
  const geom::FaceVertexTriMesh3d<T>* faces = nullptr;
  const geom::FaceVertexAdjTriMesh3d<T>* adjacent = nullptr;
  geom::TriMesh3d<T> arrays{};

  /// The mesh as a view; to be taken within `Reading`, as the memory of an object may have moved until then.
  geom::TriMesh3d<T> view() const {
    if (mesh != nullptr) return *mesh;
    if (faces != nullptr) return *faces;
    return adjacent != nullptr ? geom::TriMesh3d<T>(*adjacent) : arrays;
  }
};

/// A mesh as an argument of a function: Mesh3d, FaceVertexTriMesh3d, FaceVertexAdjTriMesh3d, TriMesh3d, or a pair
/// (vertices, triangles). Vertices of arrays are not copied, see triMeshArrays(); their indices are, so that nobody
/// changes them after they were checked.
struct MeshArgument {
  std::variant<TypedMesh<omReal64>, TypedMesh<omReal32>, TypedMesh<omInt32>, TypedMesh<omUInt32>> typed;
  py::object owner;  ///< what keeps the mesh alive

  /// Calls a function with the TypedMesh of the type that it has.
  template <class Function>
  decltype(auto) visit(Function function) const {
    return std::visit(std::move(function), typed);
  }
};

/// Whether the indices of arrays are checked, which is linear.
enum class Indices { Checked, Unchecked };

/// The mesh, false for what is none.
/// \param convert whether pairs of arrays are taken
/// \throw as triMeshArrays()
bool load(py::handle source, bool convert, MeshArgument& mesh, Indices indices = Indices::Checked);
/// The same.
/// \throw py::type_error for what is no mesh, too
MeshArgument meshOf(const py::handle& mesh, const char* name = "mesh", Indices indices = Indices::Checked);

}  // namespace ormix::python

namespace pybind11::detail {

template <>
struct type_caster<ormix::python::MeshArgument> {
  PYBIND11_TYPE_CASTER(ormix::python::MeshArgument, const_name("MeshLike"));
  bool load(handle source, bool convert) { return ormix::python::load(source, convert, value); }
};

}  // namespace pybind11::detail
