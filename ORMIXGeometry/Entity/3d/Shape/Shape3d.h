#pragma once

#include <ORMIXGeometry/Entity/3d/MeshWithHoles/MeshWithHoles3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/RowIntersections3d.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <iosfwd>
#include <vector>

ORMIX_GEOMETRY_ENTITY3D_LEVELS(extern, Shape3d, BaseGeometryEntity3d)

namespace ormix::geom {

/// A volume in two representations: its voxels, and the surfaces of its connected parts. Neither is derived from the
/// other by itself (makeShape() makes surfaces of voxels, voxelize() the reverse), and nothing checks that they agree;
/// measures and transforms use the surfaces.
///
/// Copies are deep: the meshes are copied too. A mesh may be null: counts ignore it, measures fail on it, and a shape
/// with it cannot be archived.
class ORMIX_GEOMETRY_API Shape3d : public Entity3d<Shape3d, BaseGeometryEntity3d> {
  using Base = Entity3d<Shape3d, BaseGeometryEntity3d>;

 public:
  static constexpr const char* s_className = "ormix::geom::Shape3d";  ///< registered name
  static constexpr eEntity3dType s_entity3dType = eE3DT_Shape;        ///< family

  /// The surfaces, one mesh with its cavities for each connected part.
  using MeshWithHolesColl = std::vector<boost::shared_ptr<MeshWithHoles3d<omReal32>>>;

  /// No slices, no meshes.
  Shape3d() = default;
  /// Copies are deep; moves take over slices and meshes.
  /// @{
  Shape3d(const Shape3d& other);
  Shape3d(Shape3d&& other) noexcept;
  Shape3d& operator=(const Shape3d& other);
  Shape3d& operator=(Shape3d&& other) noexcept;
  /// @}
  ~Shape3d() override;

  /// The voxels themselves; they may be changed.
  /// @{
  const RowIntersections3d& getRowIntersections() const { return _rowIntersections; }
  RowIntersections3d& getRowIntersections() { return _rowIntersections; }
  /// @}
  /// The number of voxels; linear in the runs.
  omUInt64 getNbVoxels() const { return geom::getNbVoxels(_rowIntersections); }
  /// The y of the first row of the slice z, and the y after its last row.
  /// \throw ORMIXGeometryException, logged, when there is no slice z
  /// @{
  omUInt64 getStartY(omUInt64 z) const { return slice(z).getStartRow(); }
  omUInt64 getEndY(omUInt64 z) const { return slice(z).getEndRow(); }
  /// @}
  /// The runs of the row y of the slice z; valid until the voxels are changed.
  /// \throw ORMIXGeometryException, logged, when there is no slice z or y is not in [getStartY(z), getEndY(z))
  RowIntersections::Row getRowIntersections(omUInt64 z, omUInt64 y) const;
  /// Removes all slices; zOffset becomes 0.
  void clearRowIntersections() { _rowIntersections = {}; }

  /// The meshes themselves; they may be changed, added and removed.
  /// @{
  const MeshWithHolesColl& getMeshWithHolesColl() const { return _meshWithHolesColl; }
  MeshWithHolesColl& getMeshWithHolesColl() { return _meshWithHolesColl; }
  /// @}
  /// Removes all meshes.
  void clearMeshWithHolesColl() { _meshWithHolesColl.clear(); }
  /// Sums over the meshes: `Tot` with all their holes, `Exterior` of the exterior meshes alone. Numbers of edges are
  /// linear in the half-edges.
  /// @{
  std::size_t getNbTotVertices() const;
  std::size_t getNbTotEdges() const;
  std::size_t getNbTotTriangles() const;
  std::size_t getNbExteriorVertices() const;
  std::size_t getNbExteriorEdges() const;
  std::size_t getNbExteriorTriangles() const;
  /// @}

  /// Removes voxels and meshes.
  void clear();

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_rowIntersections", self._rowIntersections) && item("_meshWithHolesColl", self._meshWithHolesColl);
  }

  const RowIntersections& slice(omUInt64 z) const;

  RowIntersections3d _rowIntersections;
  MeshWithHolesColl _meshWithHolesColl;
};

/// Prints the addresses of the meshes, "[0x55d0c8, 0x55d0f0]", not their contents (intended).
ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream& stream, const Shape3d& shape);

/// Whether the voxels are equal, there are as many meshes, null ones at the same positions, and the others are equal
/// within the tolerance one by one, see compare() of meshes with holes.
ORMIX_GEOMETRY_API bool compare(const Shape3d& a, const Shape3d& b, omReal32 tolerance);

}  // namespace ormix::geom
