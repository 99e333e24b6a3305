#pragma once

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Measure/BaseGeometryMeasure.h>

namespace ormix::geom {

/// Kinds of planar measures.
enum eMeasure2dType { eM2DT_Perimeter, eM2DT_Area, eM2DT_Moments, eM2DT_HuMoments };

class ORMIX_GEOMETRY_API BaseGeometryMeasure2d;
}  // namespace ormix::geom

namespace ormix {
template <>
struct EnumerationNames<geom::eMeasure2dType> {
  static constexpr std::string_view typeName = "eMeasure2dType";
  static constexpr std::array<std::string_view, 4> names{"eM2DT_Perimeter", "eM2DT_Area", "eM2DT_Moments",
                                                         "eM2DT_HuMoments"};
};

extern template class VersionedLevel<geom::BaseGeometryMeasure2d, geom::BaseGeometryMeasure>;
}  // namespace ormix

namespace ormix::geom {

/// Root of the planar measures.
class ORMIX_GEOMETRY_API BaseGeometryMeasure2d : public VersionedLevel<BaseGeometryMeasure2d, BaseGeometryMeasure> {
 public:
  static constexpr const char* s_className = "ormix::geom::BaseGeometryMeasure2d";

  ~BaseGeometryMeasure2d() override;

  eCoordinateDimension getCoordinateDimension() const override;
  virtual eMeasure2dType getMeasure2dType() const = 0;

 protected:
  BaseGeometryMeasure2d() = default;
  BaseGeometryMeasure2d(const BaseGeometryMeasure2d&) = default;
  BaseGeometryMeasure2d(BaseGeometryMeasure2d&&) = default;
  BaseGeometryMeasure2d& operator=(const BaseGeometryMeasure2d&) = default;
  BaseGeometryMeasure2d& operator=(BaseGeometryMeasure2d&&) = default;
};

}  // namespace ormix::geom
