#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexAdjTriMesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexTriMesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Enumeration.h>

#include <array>
#include <string_view>
#include <vector>

/// \file
/// The connected components of meshes of triangles.
///
/// Components are numbered from 0 in order of their lowest triangles. Vertices that no triangle uses are in none. A
/// triangle with equal corners is connected by what edges and vertices it has.

namespace ormix::geom {

/// What connects two triangles.
enum eMeshConnectivity {
  eMC_Edges,         ///< an edge that both have, however many others have it
  eMC_Vertices,      ///< a vertex that both have
  eMC_ManifoldEdges  ///< an edge that these two have and no other, so that bodies that touch in an edge are separate
};

/// Sets `labels` to the number of the component of each triangle. O(n log n), nearly linear as a rule.
/// \return the number of components
/// \throw ORMIXGeometryException, logged, for invalid indices; `labels` is then unchanged, as when memory runs out
template <class T>
ORMIX_GEOMETRY_API std::size_t labelComponents(const TriMesh3d<T>& mesh, std::vector<omUInt32>& labels,
                                               eMeshConnectivity connectivity = eMC_Edges);
template <class Mesh, class View = TriMesh3dOf<Mesh>>
std::size_t labelComponents(const Mesh& mesh, std::vector<omUInt32>& labels,
                            eMeshConnectivity connectivity = eMC_Edges) {
  return labelComponents(View(mesh), labels, connectivity);
}

/// One mesh a component, of the class of the mesh; of a view a `FaceVertexTriMesh3d`. Triangles keep their order and
/// their first vertices, and vertices, of which only those in use are kept, their order: a connected mesh is its own
/// component. A vertex that several components use is copied to each. The role of a `Mesh3d` is kept. O(n log n).
/// \throw ORMIXGeometryException, logged, for invalid indices
/// @{
template <class T>
ORMIX_GEOMETRY_API std::vector<FaceVertexTriMesh3d<T>> extractComponents(const TriMesh3d<T>& mesh,
                                                                         eMeshConnectivity connectivity = eMC_Edges);
template <class T>
ORMIX_GEOMETRY_API std::vector<FaceVertexTriMesh3d<T>> extractComponents(const FaceVertexTriMesh3d<T>& mesh,
                                                                         eMeshConnectivity connectivity = eMC_Edges);
template <class T>
ORMIX_GEOMETRY_API std::vector<FaceVertexAdjTriMesh3d<T>> extractComponents(const FaceVertexAdjTriMesh3d<T>& mesh,
                                                                            eMeshConnectivity connectivity = eMC_Edges);
template <class T>
ORMIX_GEOMETRY_API std::vector<Mesh3d<T>> extractComponents(const Mesh3d<T>& mesh,
                                                            eMeshConnectivity connectivity = eMC_Edges);
/// @}

}  // namespace ormix::geom

namespace ormix {

/// The texts of eMeshConnectivity.
template <>
struct EnumerationNames<geom::eMeshConnectivity> {
  static constexpr std::string_view typeName = "eMeshConnectivity";  ///< name of the enumeration
  /// Names of the enumerators, in order.
  static constexpr std::array<std::string_view, 3> names{"eMC_Edges", "eMC_Vertices", "eMC_ManifoldEdges"};
};

}  // namespace ormix
