#pragma once

#include <ORMIXGeometry/Measure/3d/BaseTypedGeometryMeasure3d.h>
#include <ORMIXGeometry/Measure/3d/SpatialMeasureTable.h>
#include <ORMIXGeometry/Measure/GeometryMeasure.h>

#include <type_traits>

ORMIX_GEOMETRY_MEASURE_LEVELS(extern, AreaMsr3d, BaseTypedGeometryMeasure3d<omReal64>)

namespace ormix::geom {

/// Surface area of a spatial entity, in squared units of its coordinates. The area of points and vectors is 0, that of
/// a triangle counts one side, that of a mesh is the sum of its triangles, whether it is closed or not. The surfaces of
/// holes are added. The area of a shape is that of its meshes, not of its voxels. Segments, plans and point clouds are
/// not supported.
class ORMIX_GEOMETRY_API AreaMsr3d : public GeometryMeasure<AreaMsr3d, BaseTypedGeometryMeasure3d<omReal64>> {
 public:
  static constexpr const char* s_className = "ormix::geom::AreaMsr3d";  ///< registered name

  using GeometryMeasure::measure;
  /// The area with the default hole policy.
  /// \throw ORMIXGeometryException, logged first, when the entity is not supported
  static omReal64 measure(const BaseGeometryEntity3d& entity);

  /// Always `eM3DT_Area`.
  eMeasure3dType getMeasure3dType() const final { return eM3DT_Area; }

  /// Whether the area of entities of this class is defined, from the table of the spatial measures.
  template <class Entity>
  struct Supports : std::bool_constant<s_spatialMeasuresOf<Entity>.area> {};

  using GeometryMeasure::process;
  /// The area of an entity whose class is known at compile time and supported. False when a hole or a mesh of a shape
  /// is null; the value is then unspecified.
  template <class Measured, std::enable_if_t<std::conjunction_v<std::is_class<Measured>, Supports<Measured>>, int> = 0>
  bool process(const Measured& entity, omReal64& value) const;
};

}  // namespace ormix::geom
