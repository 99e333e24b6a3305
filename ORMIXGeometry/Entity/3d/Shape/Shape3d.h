#pragma once

#include <ORMIXGeometry/Entity/3d/MeshWithHoles/MeshWithHoles3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/RowIntersections3d.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <iosfwd>
#include <vector>

ORMIX_GEOMETRY_ENTITY3D_LEVELS(extern, Shape3d, BaseGeometryEntity3d)

namespace ormix::geom {

/// A volume in two descriptions: its voxels, and the surfaces of its connected parts. Nothing derives one from the
/// other or checks that they agree; measures and transforms take the surfaces.
///
/// Copies are deep: the meshes are copied too. A mesh may be null: it counts as none, but an archive refuses it.
class ORMIX_GEOMETRY_API Shape3d : public Entity3d<Shape3d, BaseGeometryEntity3d> {
  using Base = Entity3d<Shape3d, BaseGeometryEntity3d>;

 public:
  static constexpr const char* s_className = "ormix::geom::Shape3d";
  static constexpr eEntity3dType s_entity3dType = eE3DT_Shape;

  using MeshWithHolesColl = std::vector<boost::shared_ptr<MeshWithHoles3d<omReal32>>>;

  /// No slices, no meshes.
  Shape3d() = default;
  Shape3d(const Shape3d& other);
  Shape3d(Shape3d&& other) noexcept;
  Shape3d& operator=(const Shape3d& other);
  Shape3d& operator=(Shape3d&& other) noexcept;
  ~Shape3d() override;

  /// \name Voxels.
  /// @{
  const RowIntersections3d& getRowIntersections() const { return _rowIntersections; }
  RowIntersections3d& getRowIntersections() { return _rowIntersections; }
  omUInt64 getNbVoxels() const { return geom::getNbVoxels(_rowIntersections); }
  /// The first row of the slice z, and the one behind its last.
  /// \throw ORMIXGeometryException, logged, when z is not that of a slice
  omUInt64 getStartY(omUInt64 z) const { return slice(z).getStartRow(); }
  omUInt64 getEndY(omUInt64 z) const { return slice(z).getEndRow(); }
  /// The runs of the row y of the slice z; valid until the next change.
  /// \throw ORMIXGeometryException, logged, when z is not that of a slice or y not in [getStartY(z), getEndY(z))
  RowIntersections::Row getRowIntersections(omUInt64 z, omUInt64 y) const;
  /// Removes the slices; the first one is at 0 again.
  void clearRowIntersections() { _rowIntersections = {}; }
  /// @}

  /// \name Surfaces.
  /// @{
  const MeshWithHolesColl& getMeshWithHolesColl() const { return _meshWithHolesColl; }
  MeshWithHolesColl& getMeshWithHolesColl() { return _meshWithHolesColl; }
  void clearMeshWithHolesColl() { _meshWithHolesColl.clear(); }
  /// Sums over the meshes, with and without their holes.
  std::size_t getNbTotVertices() const;
  std::size_t getNbTotEdges() const;
  std::size_t getNbTotTriangles() const;
  std::size_t getNbExteriorVertices() const;
  std::size_t getNbExteriorEdges() const;
  std::size_t getNbExteriorTriangles() const;
  /// @}

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

/// "[" the addresses of the meshes, separated by ", " "]": meshes are deliberately not expanded.
ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream& stream, const Shape3d& shape);

/// Whether the voxels are the same, and the meshes compare one by one, null ones with null ones.
ORMIX_GEOMETRY_API bool compare(const Shape3d& a, const Shape3d& b, omReal32 tolerance);

}  // namespace ormix::geom
