#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Entity/HoleTree.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <iosfwd>

namespace ormix::geom {

/// A body: the inside of an exterior mesh without its holes, the cavities. Each hole is a mesh with holes itself, so
/// that a cavity may contain bodies, which may have cavities again. The role of a node is that of its exterior mesh. It
/// is not checked that holes lie inside, nor that meshes are closed. For ownership, copies and nesting see `HoleTree`.
template <class T>
class ORMIX_GEOMETRY_API MeshWithHoles3d : public Entity3d<MeshWithHoles3d<T>, BaseTypedGeometryEntity3d<T>>,
                                           public HoleTree<MeshWithHoles3d<T>, Mesh3d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::MeshWithHoles3d";  ///< registered name
  static constexpr eEntity3dType s_entity3dType = eE3DT_MeshWithHoles;        ///< family

  /// The holes of one node, as shared pointers; one may be null.
  using MeshHoleColl = typename HoleTree<MeshWithHoles3d<T>, Mesh3d<T>>::HoleColl;

  /// An empty exterior mesh, no holes, no parent.
  MeshWithHoles3d() = default;
  /// Copies are deep, moves take the holes along; in both cases this node keeps its own parent, see `HoleTree`.
  /// \param other may be one of the holes of this node, at any depth
  /// @{
  MeshWithHoles3d(const MeshWithHoles3d& other);
  MeshWithHoles3d(MeshWithHoles3d&& other) noexcept;
  MeshWithHoles3d& operator=(const MeshWithHoles3d& other);
  MeshWithHoles3d& operator=(MeshWithHoles3d&& other) noexcept;
  /// @}
  ~MeshWithHoles3d() override;

  /// The role of this node: a body or a cavity.
  eMesh3dType getMesh3dType() const { return this->exterior().getMesh3dType(); }

  /// The exterior mesh itself; it may be changed.
  /// @{
  const Mesh3d<T>& getExteriorMesh() const { return this->exterior(); }
  Mesh3d<T>& getExteriorMesh() { return this->exterior(); }
  /// @}

  /// The holes themselves, in order of insertion. A hole is added by appending it here and setting its parent.
  /// @{
  const MeshHoleColl& getMeshHoles() const { return this->holes(); }
  MeshHoleColl& getMeshHoles() { return this->holes(); }
  /// @}

  /// Whether the exterior mesh has neither vertices nor triangles, whatever the holes.
  bool isEmpty() const { return this->exterior().isEmpty(); }

  /// A count of the exterior mesh; that of the edges is linear in the triangles.
  /// @{
  std::size_t getNbExteriorVertices() const { return this->exterior().getNbVertices(); }
  std::size_t getNbExteriorEdges() const { return this->exterior().getNbEdges(); }
  std::size_t getNbExteriorTriangles() const { return this->exterior().getNbTriangles(); }
  /// @}
  /// A count of the whole tree: this node and its holes at all depths. Linear in the nodes, that of the edges also in
  /// the triangles.
  /// @{
  std::size_t getNbTotMesh() const;
  std::size_t getNbTotVertices() const;
  std::size_t getNbTotEdges() const;
  std::size_t getNbTotTriangles() const;
  /// @}

  /// Removes every hole; one that is also owned elsewhere continues to exist, with its own holes.
  void clearMeshHoles() noexcept { this->clearHoles(); }
  /// Removes the link to the parent, the vertices, the triangles and the holes; the role is kept.
  void clear() noexcept { this->clearTree(); }

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_exteriorMesh", self.exterior()) && item("_meshHoles", self.holes());
  }
  template <class TOut, class TIn>
  friend boost::shared_ptr<MeshWithHoles3d<TOut>> cast(const MeshWithHoles3d<TIn>& mesh);
};

/// Prints "[" exterior mesh "]", or with holes "[" exterior mesh ", [" addresses of the holes, separated by ", " "]]".
/// The contents of holes are not printed (intended).
template <class T>
std::ostream& operator<<(std::ostream& stream, const MeshWithHoles3d<T>& mesh);

/// Whether the trees have the same shape, with null holes at the same positions, and their exterior meshes are equal
/// within the tolerance one by one, see compare() of meshes.
template <class T>
bool compare(const MeshWithHoles3d<T>& a, const MeshWithHoles3d<T>& b, std::common_type_t<T> tolerance);

/// Converts each mesh of the tree, see cast() of meshes, into a new tree whose holes have their new parents.
template <class TOut, class TIn>
boost::shared_ptr<MeshWithHoles3d<TOut>> cast(const MeshWithHoles3d<TIn>& mesh);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(extern, MeshWithHoles3d)
