#pragma once

#include <ORMIXGeometry/Entity/3d/BaseGeometryEntity3d.h>
#include <ORMIXGeometry/Measure/BaseGeometryMeasure.h>

namespace ormix::geom {

/// Kinds of spatial measures.
enum eMeasure3dType {
  eM3DT_Area,   ///< AreaMsr3d
  eM3DT_Volume  ///< VolumeMsr3d
};

class ORMIX_GEOMETRY_API BaseGeometryMeasure3d;
}  // namespace ormix::geom

namespace ormix {
/// The texts of eMeasure3dType.
template <>
struct EnumerationNames<geom::eMeasure3dType> {
  static constexpr std::string_view typeName = "eMeasure3dType";  ///< name of the enumeration
  /// Names of the enumerators, in order.
  static constexpr std::array<std::string_view, 2> names{"eM3DT_Area", "eM3DT_Volume"};
};

extern template class VersionedLevel<geom::BaseGeometryMeasure3d, geom::BaseGeometryMeasure>;
}  // namespace ormix

namespace ormix::geom {

/// Root of the spatial measures.
class ORMIX_GEOMETRY_API BaseGeometryMeasure3d : public VersionedLevel<BaseGeometryMeasure3d, BaseGeometryMeasure> {
 public:
  static constexpr const char* s_className = "ormix::geom::BaseGeometryMeasure3d";  ///< registered name

  ~BaseGeometryMeasure3d() override;

  /// Always `eCD_3d`.
  eCoordinateDimension getCoordinateDimension() const override;
  /// The kind of this measure.
  virtual eMeasure3dType getMeasure3dType() const = 0;

 protected:
  BaseGeometryMeasure3d() = default;
  BaseGeometryMeasure3d(const BaseGeometryMeasure3d&) = default;
  BaseGeometryMeasure3d(BaseGeometryMeasure3d&&) = default;
  BaseGeometryMeasure3d& operator=(const BaseGeometryMeasure3d&) = default;
  BaseGeometryMeasure3d& operator=(BaseGeometryMeasure3d&&) = default;
};

}  // namespace ormix::geom
