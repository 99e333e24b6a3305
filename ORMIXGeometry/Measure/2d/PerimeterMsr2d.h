#pragma once

#include <ORMIXGeometry/Measure/2d/BaseTypedGeometryMeasure2d.h>
#include <ORMIXGeometry/Measure/2d/PlanarMeasureTable.h>
#include <ORMIXGeometry/Measure/GeometryMeasure.h>

#include <type_traits>

ORMIX_GEOMETRY_MEASURE_LEVELS(extern, PerimeterMsr2d, BaseTypedGeometryMeasure2d<omReal64>)

namespace ormix::geom {

/// Perimeter of a planar entity, in units of its coordinates, computed in omReal64. Points and vectors have the
/// perimeter 0; segments, lines, parabolas and point clouds are not supported.
///
/// The perimeter of a polygon is the length of the path through its stored vertices, summed with more precision than
/// omReal64; the edge from the last stored vertex to the first is not added. The perimeters of holes are added. That of
/// an ellipse is an approximation with a relative error of at most 4.1e-4 [Ramanujan1914]. Linear in the number of
/// vertices.
class ORMIX_GEOMETRY_API PerimeterMsr2d : public GeometryMeasure<PerimeterMsr2d, BaseTypedGeometryMeasure2d<omReal64>> {
 public:
  static constexpr const char* s_className = "ormix::geom::PerimeterMsr2d";  ///< registered name
  using GeometryMeasure::measure;
  /// Measures the entity, its holes included.
  /// \throw ORMIXGeometryException, logged first, when the entity is not supported or a hole is null
  static omReal64 measure(const BaseGeometryEntity2d& entity);

  eMeasure2dType getMeasure2dType() const final { return eM2DT_Perimeter; }  ///< eM2DT_Perimeter

  /// Whether this measure supports entities of the class `Entity`.
  template <class Entity>
  struct Supports : std::bool_constant<s_planarMeasuresOf<Entity>.perimeter> {};

  using GeometryMeasure::process;
  /// Measures an entity whose class is known at compile time and supported.
  /// \return false when a hole is null; `value` is then unspecified
  template <class Measured, std::enable_if_t<std::conjunction_v<std::is_class<Measured>, Supports<Measured>>, int> = 0>
  bool process(const Measured& entity, omReal64& value) const;
};

}  // namespace ormix::geom
