#pragma once

#include "../Frame/Meshes.h"
#include "AsType.h"

#include <array>
#include <utility>
#include <vector>

/// \file
/// What the classes of meshes have in common in Python: vertices and triangles from and to arrays.

namespace ormix::python {

/// \throw py::buffer_error (BufferError) if an array shows what moves when triangles are added or removed
template <class T>
void requireNoViewsOf(const geom::Mesh3d<T>& mesh) {
  requireNoView(mesh.getVertexColl().data(), "vertices");
  requireNoView(mesh.getVertexIndexColl().data(), "triangles");
  requireNoView(mesh.getHalfEdgeColl().data(), "half-edges");
}

/// Rows of three or four indices as an array, read-only, without a copy.
template <class Row>
py::array viewOfIndices(boost::shared_ptr<const void> owner, const std::vector<Row>& rows) {
  constexpr auto nbColumns = static_cast<py::ssize_t>(sizeof(Row) / sizeof(omUInt32));
  return viewOf(std::move(owner), const_cast<omUInt32*>(reinterpret_cast<const omUInt32*>(rows.data())),
                {static_cast<py::ssize_t>(rows.size()), nbColumns}, Access::Read);
}

/// The same of indices that stand in groups of three.
inline py::array viewOfTriples(boost::shared_ptr<const void> owner, const std::vector<omUInt32>& indices) {
  return viewOf(std::move(owner), const_cast<omUInt32*>(indices.data()),
                {static_cast<py::ssize_t>(indices.size() / 3), py::ssize_t{3}}, Access::Read);
}

/// Replaces the vertices of a mesh.
/// \throw py::value_error where there would be fewer and a triangle has one of those that go
template <class Mesh>
void setVertices(Mesh& mesh, const py::object& values) {
  using T = typename Mesh::CoordinateType;
  auto vertices = pointsOf<geom::Point3dData<T>>(values, "vertices");
  const Changing changing;
  if (vertices.size() < mesh.getNbVertices()) {
    const geom::TriMesh3d<T> all(mesh);
    const BoolResult isUsed = geom::checkIndices(
        geom::TriMesh3d<T>(vertices.data(), vertices.size(), all.getIndices(), all.getNbTriangles()));
    if (!isUsed) throw py::value_error("vertices: " + isUsed.getMessage());
  }
  requireNoView(mesh.getVertexColl().data(), "vertices");
  mesh.getVertexColl() = std::move(vertices);
}

/// Adds a vertex and returns its index.
template <class Mesh>
std::size_t addVertex(Mesh& mesh, const geom::Point3dData<typename Mesh::CoordinateType>& point) {
  const Changing changing;
  requireNoView(mesh.getVertexColl().data(), "vertices");
  return mesh.addVertex(point);
}

/// The properties of every mesh.
template <class Class>
void bindMesh(Class& entity) {
  using Mesh = typename Class::type;
  entity
      .def_property(
          "vertices", [](const boost::shared_ptr<Mesh>& self) { return viewOfPoints(self, self->getVertexColl()); },
          &setVertices<Mesh>,
          "The vertices as an array of shape (n, 3), a view. Assigning an array replaces them; while a view is alive\n"
          "that is a BufferError.")
      .def_property_readonly("nb_vertices", &Mesh::getNbVertices, "The number of vertices, used or not.")
      .def_property_readonly("nb_triangles", &Mesh::getNbTriangles, "The number of triangles.")
      .def_property_readonly("is_empty", &Mesh::isEmpty, "Whether there are neither vertices nor triangles.");
}

}  // namespace ormix::python
