#pragma once

#include <ORMIXGeometry/Entity/3d/MeshWithHoles/MeshWithHoles3d.h>
#include <ORMIXGeometry/Tools/Mesh/Components.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <cstddef>
#include <limits>
#include <vector>

/// \file
/// The shells that a mesh consists of, which way they are turned, and which lies inside which.

namespace ormix::geom {

/// The side to which the triangles of a closed shell are turned.
enum eShellOrientation {
  eSO_None,     ///< the shell is open, turned in itself, or its volume is 0 within rounding
  eSO_Outward,  ///< they are counter-clockwise as seen from outside
  eSO_Inward    ///< they are clockwise as seen from outside
};

/// In place of the shell around one that is in none.
inline constexpr std::size_t s_noShell = std::numeric_limits<std::size_t>::max();

/// One component of a mesh.
struct MeshShell {
  std::size_t firstTriangle = 0;             ///< index of its lowest triangle
  std::size_t nbTriangles = 0;               ///< how many it has
  bool isClosed = false;                     ///< whether each of its edges has an even number of its triangles
  bool isOriented = false;                   ///< whether each but those on a boundary has as many in either direction
  eShellOrientation orientation = eSO_None;  ///< to which side they are turned
  omReal64 volume = 0;                       ///< positive when turned outward; without meaning for an open shell
  std::size_t parent = s_noShell;            ///< the innermost closed shell around it
  std::size_t depth = 0;                     ///< how many closed shells are around it
};

/// The shells of a mesh.
struct MeshShells {
  std::vector<omUInt32> labels;   ///< of each triangle the index of its shell
  std::vector<MeshShell> shells;  ///< in order of their lowest triangles
};

/// Finds the components of a mesh, whether they are closed and how they are turned and nested.
///
/// A shell is inside a closed one when a vertex of it is, by the parity of exact crossings; a vertex that lies on the
/// other does not count. Where the first 16 vertices that are tried lie on it, the centres of as many triangles are
/// tried; a shell of which all lie on the other is not inside. This is right for shells that do not cross each other;
/// of such that do, it is unspecified which is inside which, but none is inside itself. A shell with a vertex that is
/// not finite is outside all others, and they outside of it.
///
/// O(n log n) in the triangles, and O(log n) for each pair of shells of which the box of one lies in that of the other
/// and the smaller has no parent that is smaller still.
/// \throw ORMIXGeometryException, logged, for invalid indices
template <class T>
ORMIX_GEOMETRY_API MeshShells findShells(const TriMesh3d<T>& mesh, eMeshConnectivity connectivity = eMC_ManifoldEdges);
template <class Mesh, class View = TriMesh3dOf<Mesh>>
MeshShells findShells(const Mesh& mesh, eMeshConnectivity connectivity = eMC_ManifoldEdges) {
  return findShells(View(mesh), connectivity);
}

/// The bodies whose surfaces the shells of a mesh are, in order of their lowest triangles: a shell in no other is the
/// exterior of a body, one inside it bounds a cavity, and so on to any depth. Their roles are set so; the orientation
/// of the triangles is kept. Shells are components by `eMC_ManifoldEdges`; where a shell touches itself in an edge, see
/// `eNMP_OwnVertices`.
/// \throw ORMIXGeometryException, logged, for invalid indices and a shell that is not closed
template <class T>
ORMIX_GEOMETRY_API std::vector<boost::shared_ptr<MeshWithHoles3d<T>>> toMeshesWithHoles(const TriMesh3d<T>& mesh);
template <class Mesh, class View = TriMesh3dOf<Mesh>>
auto toMeshesWithHoles(const Mesh& mesh) {
  return toMeshesWithHoles(View(mesh));
}

}  // namespace ormix::geom

namespace ormix {

/// The texts of eShellOrientation.
template <>
struct EnumerationNames<geom::eShellOrientation> {
  static constexpr std::string_view typeName = "eShellOrientation";  ///< name of the enumeration
  /// Names of the enumerators, in order.
  static constexpr std::array<std::string_view, 3> names{"eSO_None", "eSO_Outward", "eSO_Inward"};
};

}  // namespace ormix
