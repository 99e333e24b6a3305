#pragma once

#include <ORMIXGeometry/Measure/2d/BaseTypedGeometryMeasure2d.h>
#include <ORMIXGeometry/Measure/2d/PlanarMeasureTable.h>
#include <ORMIXGeometry/Measure/GeometryMeasure.h>

#include <type_traits>

ORMIX_GEOMETRY_MEASURE_LEVELS(extern, PerimeterMsr2d, BaseTypedGeometryMeasure2d<omReal64>)

namespace ormix::geom {

/// Perimeter of a planar entity, in units of its coordinates. Points and vectors measure 0. The perimeter of a polygon
/// is the length of its stored path, summed wider than omReal64; the edge from the last vertex back to the first is not
/// added. Holes are added. Segments, lines, parabolas and point clouds are not supported.
class ORMIX_GEOMETRY_API PerimeterMsr2d : public GeometryMeasure<PerimeterMsr2d, BaseTypedGeometryMeasure2d<omReal64>> {
 public:
  static constexpr const char* s_className = "ormix::geom::PerimeterMsr2d";
  using GeometryMeasure::measure;
  /// Measures with the default hole policy.
  /// \throw ORMIXGeometryException, logged first, when the entity is not supported
  static omReal64 measure(const BaseGeometryEntity2d& entity);

  eMeasure2dType getMeasure2dType() const final { return eM2DT_Perimeter; }

  template <class Entity>
  struct Supports : std::bool_constant<s_planarMeasuresOf<Entity>.perimeter> {};

  using GeometryMeasure::process;
  /// The value of an entity of a known class that has one; false when a hole is null, the value then unspecified.
  template <class Measured, std::enable_if_t<std::conjunction_v<std::is_class<Measured>, Supports<Measured>>, int> = 0>
  bool process(const Measured& entity, omReal64& value) const;
};

}  // namespace ormix::geom
