#pragma once

#include <ORMIXGeometry/Measure/2d/HuMoments2dO3.h>
#include <ORMIXGeometry/Measure/2d/MomentsMsr2d.h>

ORMIX_GEOMETRY_MEASURE_LEVELS(extern, HuMomentsMsr2d, BaseTypedGeometryMeasure2d<geom::HuMoments2dO3>)

namespace ormix::geom {

/// Hu's moment invariants of a planar entity, from its moments as MomentsMsr2d has them, for the same entities.
class ORMIX_GEOMETRY_API HuMomentsMsr2d
    : public GeometryMeasure<HuMomentsMsr2d, BaseTypedGeometryMeasure2d<HuMoments2dO3>> {
 public:
  static constexpr const char* s_className = "ormix::geom::HuMomentsMsr2d";  ///< registered name
  using GeometryMeasure::measure;
  /// Measures the entity, its holes included.
  /// \throw ORMIXGeometryException, logged first, when the entity is not supported, a hole is null, the mass is 0, or a
  /// value is not finite
  static HuMoments2dO3 measure(const BaseGeometryEntity2d& entity);

  eMeasure2dType getMeasure2dType() const final { return eM2DT_HuMoments; }  ///< eM2DT_HuMoments

  /// Whether this measure supports entities of the class `Entity`.
  template <class Entity>
  struct Supports : MomentsMsr2d::Supports<Entity> {};

  using GeometryMeasure::process;
  /// Measures an entity whose class is known at compile time and supported.
  /// \return false where MomentsMsr2d does, and when the mass is 0, as that of points and vectors is, or a value is not
  /// finite, as where masses cancel almost; `value` is then unspecified
  template <class Measured, std::enable_if_t<std::conjunction_v<std::is_class<Measured>, Supports<Measured>>, int> = 0>
  bool process(const Measured& entity, HuMoments2dO3& value) const;
};

}  // namespace ormix::geom
