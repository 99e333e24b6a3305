#pragma once

#include <ORMIXGeometry/Measure/2d/BaseTypedGeometryMeasure2d.h>
#include <ORMIXGeometry/Measure/2d/Moments2dO3.h>
#include <ORMIXGeometry/Measure/2d/PlanarMeasureTable.h>
#include <ORMIXGeometry/Measure/GeometryMeasure.h>

#include <type_traits>

ORMIX_GEOMETRY_MEASURE_LEVELS(extern, MomentsMsr2d, BaseTypedGeometryMeasure2d<geom::Moments2dO3>)

namespace ormix::geom {

/// Moments of a planar entity up to the order 3: of the region that has the area AreaMsr2d, and of a point cloud with
/// the mass 1 for each point. Points and vectors have the mass 0, as their area is; segments, lines and parabolas are
/// not supported.
///
/// The moments of a polygon have the sign of its area as AreaMsr2d has it, and those of a polygon of fewer than four
/// stored vertices are 0; the edge from the last vertex to the first needs not be stored. Moments of holes are
/// subtracted with their signs. Nothing is lost far from the origin: moments are computed about the first vertex and
/// held about the centroid. ringMoments() gives the formula; linear in the number of vertices.
class ORMIX_GEOMETRY_API MomentsMsr2d : public GeometryMeasure<MomentsMsr2d, BaseTypedGeometryMeasure2d<Moments2dO3>> {
 public:
  static constexpr const char* s_className = "ormix::geom::MomentsMsr2d";  ///< registered name
  using GeometryMeasure::measure;
  /// Measures the entity, its holes included.
  /// \throw ORMIXGeometryException, logged first, when the entity is not supported, a hole is null, or the moments are
  /// not finite
  static Moments2dO3 measure(const BaseGeometryEntity2d& entity);

  eMeasure2dType getMeasure2dType() const final { return eM2DT_Moments; }  ///< eM2DT_Moments

  /// Whether this measure supports entities of the class `Entity`.
  template <class Entity>
  struct Supports : std::bool_constant<s_planarMeasuresOf<Entity>.moments> {};

  using GeometryMeasure::process;
  /// Measures an entity whose class is known at compile time and supported.
  /// \return false when a hole is null, or the moments are not finite, as where coordinates are NaN or infinite, or so
  /// large that a third moment overflows (extents beyond about 1e61); `value` is then unspecified
  template <class Measured, std::enable_if_t<std::conjunction_v<std::is_class<Measured>, Supports<Measured>>, int> = 0>
  bool process(const Measured& entity, Moments2dO3& value) const;
};

}  // namespace ormix::geom
