#pragma once

#include "Arrays.h"

#include <ORMIXGeometry/Entity/3d/Mesh/TriMesh3d.h>

#include <variant>

/// \file
/// What functions take as a mesh of triangles: any mesh of the library, or arrays of the caller without a copy.

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

/// A mesh with what keeps it alive. Call the library by `std::visit` on `view`, within `Reading`.
struct MeshArgument {
  py::object owner;
  std::variant<geom::TriMesh3d<omReal64>, geom::TriMesh3d<omReal32>, geom::TriMesh3d<omInt32>,
               geom::TriMesh3d<omUInt32>>
      view;
};

/// The view of an argument: Mesh3d, FaceVertexTriMesh3d, FaceVertexAdjTriMesh3d, TriMesh3d, or a sequence
/// (vertices, triangles). Indices of arrays are checked, which is linear.
/// \throw py::type_error for anything else; as triMeshArrays()
MeshArgument meshOf(const py::handle& mesh, const char* name = "mesh");

/// Whether `mesh` is one of the classes of meshes, or a pair that may be one.
bool isMesh(const py::handle& mesh);

}  // namespace ormix::python
