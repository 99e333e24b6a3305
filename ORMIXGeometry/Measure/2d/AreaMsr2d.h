#pragma once

#include <ORMIXGeometry/Measure/2d/BaseTypedGeometryMeasure2d.h>
#include <ORMIXGeometry/Measure/GeometryMeasure.h>
#include <ORMIXGeometry/Measure/MeasuredEntities.h>

#include <type_traits>

namespace ormix {
extern template class RegisteredObject<geom::AreaMsr2d, geom::BaseTypedGeometryMeasure2d<omReal64>>;
extern template class VersionedLevel<geom::AreaMsr2d, geom::BaseTypedGeometryMeasure2d<omReal64>>;
}  // namespace ormix

namespace ormix::geom {

extern template class GeometryMeasure<AreaMsr2d, BaseTypedGeometryMeasure2d<omReal64>>;

/// Area of a planar entity, in squared units of its coordinates. Points and vectors measure 0. The area of a polygon is
/// signed: an exterior ring is positive when its vertices turn counter-clockwise (x to the right, y up), an interior
/// ring when they turn clockwise (intended). A ring is taken as closed: the edge from its last stored vertex back to
/// the first is not added, and fewer than four stored vertices measure 0. Holes are subtracted. Segments, lines,
/// parabolas and point clouds are not supported.
class ORMIX_GEOMETRY_API AreaMsr2d : public GeometryMeasure<AreaMsr2d, BaseTypedGeometryMeasure2d<omReal64>> {
 public:
  static constexpr const char* s_className = "ormix::geom::AreaMsr2d";
  using GeometryMeasure::measure;
  /// Measures with the default hole policy.
  /// \throw ORMIXGeometryException, logged first, when the entity is not supported
  static omReal64 measure(const BaseGeometryEntity2d& entity);

  eMeasure2dType getMeasure2dType() const final { return eM2DT_Area; }

  /// The value of any entity that is measured; false when a hole is null.
  template <class Measured, std::enable_if_t<isMeasured<Measured>, int> = 0>
  bool process(const Measured& entity, omReal64& value) const;
};

}  // namespace ormix::geom
