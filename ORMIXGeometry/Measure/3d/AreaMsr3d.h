#pragma once

#include <ORMIXGeometry/Measure/3d/BaseTypedGeometryMeasure3d.h>
#include <ORMIXGeometry/Measure/3d/SpatialMeasureTable.h>
#include <ORMIXGeometry/Measure/GeometryMeasure.h>

#include <type_traits>

ORMIX_GEOMETRY_MEASURE_LEVELS(extern, AreaMsr3d, BaseTypedGeometryMeasure3d<omReal64>)

namespace ormix::geom {

/// Surface area of a spatial entity, in squared units of its coordinates. Points and vectors measure 0, a triangle its
/// one side, a mesh the sum of its triangles, open or closed. The walls of holes are added. A shape is measured by its
/// meshes, not by its voxels. Segments, plans and point clouds are not supported.
class ORMIX_GEOMETRY_API AreaMsr3d : public GeometryMeasure<AreaMsr3d, BaseTypedGeometryMeasure3d<omReal64>> {
 public:
  static constexpr const char* s_className = "ormix::geom::AreaMsr3d";

  using GeometryMeasure::measure;
  /// Measures with the default hole policy.
  /// \throw ORMIXGeometryException, logged first, when the entity is not supported
  static omReal64 measure(const BaseGeometryEntity3d& entity);

  eMeasure3dType getMeasure3dType() const final { return eM3DT_Area; }

  template <class Entity>
  struct Supports : std::bool_constant<s_spatialMeasuresOf<Entity>.area> {};

  using GeometryMeasure::process;
  /// The value of an entity of a known class that has one; false when a hole is null, the value then unspecified.
  template <class Measured, std::enable_if_t<std::conjunction_v<std::is_class<Measured>, Supports<Measured>>, int> = 0>
  bool process(const Measured& entity, omReal64& value) const;
};

}  // namespace ormix::geom
