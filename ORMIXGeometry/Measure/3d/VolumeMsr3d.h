#pragma once

#include <ORMIXGeometry/Measure/3d/BaseTypedGeometryMeasure3d.h>
#include <ORMIXGeometry/Measure/3d/SpatialMeasureTable.h>
#include <ORMIXGeometry/Measure/GeometryMeasure.h>

#include <type_traits>

ORMIX_GEOMETRY_MEASURE_LEVELS(extern, VolumeMsr3d, BaseTypedGeometryMeasure3d<omReal64>)

namespace ormix::geom {

/// Volume of a spatial entity, in cubed units of its coordinates. Points, vectors and triangles measure 0. The volume
/// of a mesh is the absolute value of the sum, in face order, of the signed tetrahedra between its triangles and the
/// origin of coordinates: of either orientation, and meaningless but defined for a mesh that is open or oriented in two
/// ways. Far from the origin it loses digits, up to epsilon · (distance / size)³ of the volume: of a cube about 1e-8
/// at a thousand sizes away, 1e-3 at 1e5, and all of them at 1e6; `localVolume` (MeshMoments3d.h) measures about the
/// mesh itself. Holes are subtracted. A shape is measured by its meshes, not by its voxels. Segments, plans and point
/// clouds are not supported.
class ORMIX_GEOMETRY_API VolumeMsr3d : public GeometryMeasure<VolumeMsr3d, BaseTypedGeometryMeasure3d<omReal64>> {
 public:
  static constexpr const char* s_className = "ormix::geom::VolumeMsr3d";

  using GeometryMeasure::measure;
  /// Measures with the default hole policy.
  /// \throw ORMIXGeometryException, logged first, when the entity is not supported
  static omReal64 measure(const BaseGeometryEntity3d& entity);

  eMeasure3dType getMeasure3dType() const final { return eM3DT_Volume; }

  template <class Entity>
  struct Supports : std::bool_constant<s_spatialMeasuresOf<Entity>.volume> {};

  using GeometryMeasure::process;
  /// The value of an entity of a known class that has one; false when a hole is null, the value then unspecified.
  template <class Measured, std::enable_if_t<std::conjunction_v<std::is_class<Measured>, Supports<Measured>>, int> = 0>
  bool process(const Measured& entity, omReal64& value) const;
};

}  // namespace ormix::geom
