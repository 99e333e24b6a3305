#pragma once

#include <ORMIXGeometry/Measure/2d/BaseTypedGeometryMeasure2d.h>
#include <ORMIXGeometry/Measure/2d/PlanarMeasureTable.h>
#include <ORMIXGeometry/Measure/GeometryMeasure.h>

#include <type_traits>

ORMIX_GEOMETRY_MEASURE_LEVELS(extern, AreaMsr2d, BaseTypedGeometryMeasure2d<omReal64>)

namespace ormix::geom {

/// Area of a planar entity, in squared units of its coordinates, computed in omReal64. Points and vectors have the area
/// 0; segments, lines, parabolas and point clouds are not supported.
///
/// The area of a polygon is signed: positive for an exterior ring that is oriented counter-clockwise (x to the right, y
/// up) and for an interior ring that is oriented clockwise (intended). Rings are assumed to be closed: the edge from
/// the last stored vertex to the first is not added, and fewer than four stored vertices have the area 0. The areas of
/// holes are subtracted with their signs. Linear in the number of vertices; ringSignedArea() gives the formula.
class ORMIX_GEOMETRY_API AreaMsr2d : public GeometryMeasure<AreaMsr2d, BaseTypedGeometryMeasure2d<omReal64>> {
 public:
  static constexpr const char* s_className = "ormix::geom::AreaMsr2d";  ///< registered name
  using GeometryMeasure::measure;
  /// Measures the entity, its holes included.
  /// \throw ORMIXGeometryException, logged first, when the entity is not supported or a hole is null
  static omReal64 measure(const BaseGeometryEntity2d& entity);

  eMeasure2dType getMeasure2dType() const final { return eM2DT_Area; }  ///< eM2DT_Area

  /// Whether this measure supports entities of the class `Entity`.
  template <class Entity>
  struct Supports : std::bool_constant<s_planarMeasuresOf<Entity>.area> {};

  using GeometryMeasure::process;
  /// Measures an entity whose class is known at compile time and supported.
  /// \return false when a hole is null; `value` is then unspecified
  template <class Measured, std::enable_if_t<std::conjunction_v<std::is_class<Measured>, Supports<Measured>>, int> = 0>
  bool process(const Measured& entity, omReal64& value) const;
};

}  // namespace ormix::geom
