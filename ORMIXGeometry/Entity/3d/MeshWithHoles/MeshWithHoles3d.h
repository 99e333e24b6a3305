#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Entity/HoleTree.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <iosfwd>

namespace ormix::geom {

/// A body: the inside of an exterior mesh less its holes, the cavities, each of which is a mesh with holes itself, so
/// that a cavity may contain bodies, and these cavities again. The role of a node is that of its exterior mesh. Nothing
/// checks the tree's geometry, nor that its meshes are closed. How nodes own each other, are copied and nested: see
/// `HoleTree`.
template <class T>
class ORMIX_GEOMETRY_API MeshWithHoles3d : public Entity3d<MeshWithHoles3d<T>, BaseTypedGeometryEntity3d<T>>,
                                           public HoleTree<MeshWithHoles3d<T>, Mesh3d<T>> {
  using Base = Entity3d<MeshWithHoles3d<T>, BaseTypedGeometryEntity3d<T>>;

 public:
  static constexpr const char* s_className = "ormix::geom::MeshWithHoles3d";
  static constexpr eEntity3dType s_entity3dType = eE3DT_MeshWithHoles;

  using MeshHoleColl = typename HoleTree<MeshWithHoles3d<T>, Mesh3d<T>>::HoleColl;

  /// An empty exterior mesh, no holes, no parent.
  MeshWithHoles3d() = default;
  MeshWithHoles3d(const MeshWithHoles3d& other);
  MeshWithHoles3d(MeshWithHoles3d&& other) noexcept;
  /// \param other may be one of the holes below
  MeshWithHoles3d& operator=(const MeshWithHoles3d& other);
  MeshWithHoles3d& operator=(MeshWithHoles3d&& other) noexcept;
  ~MeshWithHoles3d() override;

  /// As for every entity; the holes read have this node as their parent.
  BoolResult read(BaseIArchive& archive) override;

  /// The role of this node: a body, or a cavity.
  eMesh3dType getMesh3dType() const { return this->exterior().getMesh3dType(); }

  const Mesh3d<T>& getExteriorMesh() const { return this->exterior(); }
  Mesh3d<T>& getExteriorMesh() { return this->exterior(); }

  /// The holes themselves, in order of insertion. A hole is added by appending it and setting its parent.
  const MeshHoleColl& getMeshHoles() const { return this->holes(); }
  MeshHoleColl& getMeshHoles() { return this->holes(); }

  /// Whether the exterior mesh has neither vertices nor triangles, whatever the holes.
  bool isEmpty() const { return this->exterior().isEmpty(); }

  /// \name Counts of the exterior mesh.
  /// @{
  std::size_t getNbExteriorVertices() const { return this->exterior().getNbVertices(); }
  std::size_t getNbExteriorEdges() const { return this->exterior().getNbEdges(); }
  std::size_t getNbExteriorTriangles() const { return this->exterior().getNbTriangles(); }
  /// @}
  /// \name Counts of the whole tree below and including this node.
  /// @{
  std::size_t getNbTotMesh() const;
  std::size_t getNbTotVertices() const;
  std::size_t getNbTotEdges() const;
  std::size_t getNbTotTriangles() const;
  /// @}

  /// Releases every hole; one that others own too lives on, with its own holes.
  void clearMeshHoles() noexcept { this->clearHoles(); }
  /// Forgets the parent, the vertices, the triangles and the holes; the role stays.
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

/// "[" the exterior mesh "]", with holes "[" the exterior mesh ", [" their addresses separated by ", " "]]": holes are
/// deliberately not expanded.
template <class T>
std::ostream& operator<<(std::ostream& stream, const MeshWithHoles3d<T>& mesh);

/// Whether the trees have the same form, null holes at the same places, and their meshes compare one by one, see
/// meshes.
template <class T>
bool compare(const MeshWithHoles3d<T>& a, const MeshWithHoles3d<T>& b, std::common_type_t<T> tolerance);

/// A new tree: each mesh as meshes are cast, with parents linked as in a copy.
template <class TOut, class TIn>
boost::shared_ptr<MeshWithHoles3d<TOut>> cast(const MeshWithHoles3d<TIn>& mesh);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(extern, MeshWithHoles3d)
