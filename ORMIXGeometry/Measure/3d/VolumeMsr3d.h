#pragma once

#include <ORMIXGeometry/Measure/3d/BaseTypedGeometryMeasure3d.h>
#include <ORMIXGeometry/Measure/3d/SpatialMeasureTable.h>
#include <ORMIXGeometry/Measure/GeometryMeasure.h>

#include <type_traits>

ORMIX_GEOMETRY_MEASURE_LEVELS(extern, VolumeMsr3d, BaseTypedGeometryMeasure3d<omReal64>)

namespace ormix::geom {

/// Volume of a spatial entity, in cubed units of its coordinates. The volume of points, vectors and triangles is 0. The
/// volume of a mesh is the absolute value of the sum, in order of the triangles, of the signed volumes of the
/// tetrahedra between the triangles and the origin of coordinates. It does not depend on the orientation of a closed
/// mesh; for a mesh that is open or inconsistently oriented the number is defined but without meaning.
///
/// The relative error of the volume of a mesh grows with its distance from the origin, up to epsilon · (distance /
/// size)³: for a cube about 1e-8 at a distance of 1e3 sizes, 1e-3 at 1e5, and no digit is right at 1e6. `localVolume`
/// (MeshMoments3d.h) does not have this error.
///
/// The volumes of holes are subtracted. The volume of a shape is that of its meshes, not of its voxels. Segments, plans
/// and point clouds are not supported.
class ORMIX_GEOMETRY_API VolumeMsr3d : public GeometryMeasure<VolumeMsr3d, BaseTypedGeometryMeasure3d<omReal64>> {
 public:
  static constexpr const char* s_className = "ormix::geom::VolumeMsr3d";  ///< registered name

  using GeometryMeasure::measure;
  /// The volume with the default hole policy.
  /// \throw ORMIXGeometryException, logged first, when the entity is not supported
  static omReal64 measure(const BaseGeometryEntity3d& entity);

  /// Always `eM3DT_Volume`.
  eMeasure3dType getMeasure3dType() const final { return eM3DT_Volume; }

  /// Whether the volume of entities of this class is defined, from the table of the spatial measures.
  template <class Entity>
  struct Supports : std::bool_constant<s_spatialMeasuresOf<Entity>.volume> {};

  using GeometryMeasure::process;
  /// The volume of an entity whose class is known at compile time and supported. False when a hole or a mesh of a shape
  /// is null; the value is then unspecified.
  template <class Measured, std::enable_if_t<std::conjunction_v<std::is_class<Measured>, Supports<Measured>>, int> = 0>
  bool process(const Measured& entity, omReal64& value) const;
};

}  // namespace ormix::geom
