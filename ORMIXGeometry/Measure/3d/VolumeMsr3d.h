#pragma once

#include <ORMIXGeometry/Measure/3d/BaseTypedGeometryMeasure3d.h>
#include <ORMIXGeometry/Measure/GeometryMeasure.h>
#include <ORMIXGeometry/Measure/MeasuredEntities.h>

#include <type_traits>

namespace ormix {
extern template class RegisteredObject<geom::VolumeMsr3d, geom::BaseTypedGeometryMeasure3d<omReal64>>;
extern template class VersionedLevel<geom::VolumeMsr3d, geom::BaseTypedGeometryMeasure3d<omReal64>>;
}  // namespace ormix

namespace ormix::geom {

extern template class GeometryMeasure<VolumeMsr3d, BaseTypedGeometryMeasure3d<omReal64>>;

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

  /// The value of any entity that is measured; false when a hole is null.
  template <class Measured, std::enable_if_t<isMeasured<Measured>, int> = 0>
  bool process(const Measured& entity, omReal64& value) const;
};

}  // namespace ormix::geom
