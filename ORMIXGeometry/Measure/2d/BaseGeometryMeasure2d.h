#pragma once

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Measure/BaseGeometryMeasure.h>

namespace ormix::geom {

/// Kinds of planar measures.
enum eMeasure2dType {
  eM2DT_Perimeter,  ///< PerimeterMsr2d
  eM2DT_Area,       ///< AreaMsr2d
  eM2DT_Moments,    ///< MomentsMsr2d
  eM2DT_HuMoments   ///< HuMomentsMsr2d
};

class ORMIX_GEOMETRY_API BaseGeometryMeasure2d;
}  // namespace ormix::geom

namespace ormix {
/// Texts of eMeasure2dType.
template <>
struct EnumerationNames<geom::eMeasure2dType> {
  static constexpr std::string_view typeName = "eMeasure2dType";  ///< name of the enumeration
  /// Names of the enumerators, in order of their values.
  static constexpr std::array<std::string_view, 4> names{"eM2DT_Perimeter", "eM2DT_Area", "eM2DT_Moments",
                                                         "eM2DT_HuMoments"};
};

extern template class VersionedLevel<geom::BaseGeometryMeasure2d, geom::BaseGeometryMeasure>;
}  // namespace ormix

namespace ormix::geom {

/// Base class of the measures of planar entities.
class ORMIX_GEOMETRY_API BaseGeometryMeasure2d : public VersionedLevel<BaseGeometryMeasure2d, BaseGeometryMeasure> {
 public:
  static constexpr const char* s_className = "ormix::geom::BaseGeometryMeasure2d";  ///< registered name

  ~BaseGeometryMeasure2d() override;

  /// eCD_2d
  eCoordinateDimension getCoordinateDimension() const override;
  /// The kind of the measure.
  virtual eMeasure2dType getMeasure2dType() const = 0;

 protected:
  BaseGeometryMeasure2d() = default;
  BaseGeometryMeasure2d(const BaseGeometryMeasure2d&) = default;
  BaseGeometryMeasure2d(BaseGeometryMeasure2d&&) = default;
  BaseGeometryMeasure2d& operator=(const BaseGeometryMeasure2d&) = default;
  BaseGeometryMeasure2d& operator=(BaseGeometryMeasure2d&&) = default;
};

}  // namespace ormix::geom
