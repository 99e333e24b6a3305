#pragma once

#include <ORMIXGeometry/Measure/3d/BaseGeometryMeasure3d.h>

namespace ormix::geom {

/// Root of the spatial measures whose result is a `DataType`.
template <class DataType>
class ORMIX_GEOMETRY_API BaseTypedGeometryMeasure3d
    : public VersionedLevel<BaseTypedGeometryMeasure3d<DataType>, BaseGeometryMeasure3d> {
 public:
  static constexpr const char* s_className = "ormix::geom::BaseTypedGeometryMeasure3d";  ///< registered name

  using Entity = BaseGeometryEntity3d;  ///< root of the entities that are measured
  using Value = DataType;               ///< type of the result

  /// Measures the entity. False, without a log entry, when the entity is not supported or has a null part; the value is
  /// then unspecified.
  virtual bool measure(const BaseGeometryEntity3d& entity, DataType& value) const = 0;
  /// The same for the entity to which the pointer points; it must not be null.
  bool measure(const GeometryEntity3dPtr& entity, DataType& value) const { return measure(*entity, value); }

 protected:
  BaseTypedGeometryMeasure3d() = default;
  BaseTypedGeometryMeasure3d(const BaseTypedGeometryMeasure3d&) = default;
  BaseTypedGeometryMeasure3d(BaseTypedGeometryMeasure3d&&) = default;
  BaseTypedGeometryMeasure3d& operator=(const BaseTypedGeometryMeasure3d&) = default;
  BaseTypedGeometryMeasure3d& operator=(BaseTypedGeometryMeasure3d&&) = default;
  ~BaseTypedGeometryMeasure3d() override = default;
};

extern template class BaseTypedGeometryMeasure3d<omReal64>;

}  // namespace ormix::geom

namespace ormix {
extern template class VersionedLevel<geom::BaseTypedGeometryMeasure3d<omReal64>, geom::BaseGeometryMeasure3d>;
}  // namespace ormix
