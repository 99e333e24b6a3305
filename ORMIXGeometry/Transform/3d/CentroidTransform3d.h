#pragma once

#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>
#include <ORMIXGeometry/Measure/BaseGeometryMeasure.h>
#include <ORMIXGeometry/Transform/3d/GeometryTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SpatialDerivationTable.h>
#include <ORMIXGeometry/Transform/DerivedTransform.h>

ORMIX_GEOMETRY_DERIVED_TRANSFORM3D_LEVELS(extern, CentroidTransform3d)

namespace ormix::geom {

/// The centroid of a spatial entity, a `Point3d<omReal64>`.
///
/// Of volumes: that within a closed mesh, oriented either way, less that of the cavities where the policy says so.
/// Where a mesh that counts is open, or the volume is 0, it is the centroid of the surface, and where that has no area,
/// of the vertices. Of a segment it is its middle, of a triangle the mean of its corners, of a cloud the mean of its
/// points, of what has a centre the centre; that of cubes and cuboids is turned about the origin of coordinates with
/// them. A shape without boundaries has that of its voxels, whose centres are at half numbers.
///
/// Computed about the first vertex: to 1e-14 of the size, wherever it lies, as far as omReal64 has the number. A
/// volume counts as 0 within the rounding of its sum, 1e-15 of area times extent, and if its centroid is outside.
///
/// Vectors, plans and lines have none, nor has what has no points, a null hole that counts, or a number that is not
/// finite. In place for `Point3d<omReal64>`, which it leaves as it is. Linear in the number of triangles.
class ORMIX_GEOMETRY_API CentroidTransform3d : public DerivedTransform<CentroidTransform3d, SpatialTransforms> {
 public:
  static constexpr const char* s_className = "ormix::geom::CentroidTransform3d";  ///< registered name
  static constexpr eTransform3dType s_transform3dType = eT3DT_Centroid;

  template <class Entity>
  struct Supports : std::bool_constant<s_spatialDerivationsOf<Entity>.centroid> {};
  template <class Entity>
  using Result = Point3d<omReal64>;

  CentroidTransform3d() = default;

  /// Whether the volume of holes counts; eHMP_ProcessHoles unless set otherwise.
  /// @{
  eHoleMsrPolicy getHoleMsrPolicy() const { return _holeMsrPolicy; }
  void setHoleMsrPolicy(eHoleMsrPolicy policy) { _holeMsrPolicy = policy; }
  /// @}

  /// The centroid of an entity.
  /// \throw ORMIXGeometryException, logged first, where there is none
  /// @{
  template <class Entity, std::enable_if_t<Supports<Entity>::value, int> = 0>
  static Result<Entity> centroid(const Entity& entity) {
    return derivedOf(entity);
  }
  static Point3d<omReal64> centroid(const BaseGeometryEntity3d& entity) {
    return static_cast<const Point3d<omReal64>&>(*derivedOfAny(entity));
  }
  /// @}

  /// The same without an exception.
  /// \return false, `result` unspecified, where there is none
  template <class Entity>
  bool derive(const Entity& entity, Result<Entity>& result) const;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_holeMsrPolicy", self._holeMsrPolicy);
  }

  eHoleMsrPolicy _holeMsrPolicy = eHMP_ProcessHoles;
};

}  // namespace ormix::geom
