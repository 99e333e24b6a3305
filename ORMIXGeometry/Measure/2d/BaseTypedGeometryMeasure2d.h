#pragma once

#include <ORMIXGeometry/Measure/2d/BaseGeometryMeasure2d.h>

namespace ormix::geom {

/// Base class of the measures of planar entities whose value is a `DataType`.
template <class DataType>
class ORMIX_GEOMETRY_API BaseTypedGeometryMeasure2d
    : public VersionedLevel<BaseTypedGeometryMeasure2d<DataType>, BaseGeometryMeasure2d> {
 public:
  /// Registered name, without the template argument.
  static constexpr const char* s_className = "ormix::geom::BaseTypedGeometryMeasure2d";

  using Entity = BaseGeometryEntity2d;  ///< what is measured
  using Value = DataType;               ///< type of the result

  /// Measures the entity. Returns false, without a log entry, if the entity is not supported or a hole of it is null;
  /// `value` is then unspecified.
  virtual bool measure(const BaseGeometryEntity2d& entity, DataType& value) const = 0;
  /// The same for the entity that the pointer refers to; the pointer must not be null.
  bool measure(const GeometryEntity2dPtr& entity, DataType& value) const { return measure(*entity, value); }

 protected:
  BaseTypedGeometryMeasure2d() = default;
  BaseTypedGeometryMeasure2d(const BaseTypedGeometryMeasure2d&) = default;
  BaseTypedGeometryMeasure2d(BaseTypedGeometryMeasure2d&&) = default;
  BaseTypedGeometryMeasure2d& operator=(const BaseTypedGeometryMeasure2d&) = default;
  BaseTypedGeometryMeasure2d& operator=(BaseTypedGeometryMeasure2d&&) = default;
  ~BaseTypedGeometryMeasure2d() override = default;
};

extern template class BaseTypedGeometryMeasure2d<omInt32>;
extern template class BaseTypedGeometryMeasure2d<omUInt32>;
extern template class BaseTypedGeometryMeasure2d<omReal32>;
extern template class BaseTypedGeometryMeasure2d<omReal64>;
extern template class BaseTypedGeometryMeasure2d<Moments2dO3>;
extern template class BaseTypedGeometryMeasure2d<HuMoments2dO3>;

}  // namespace ormix::geom

namespace ormix {
extern template class VersionedLevel<geom::BaseTypedGeometryMeasure2d<omInt32>, geom::BaseGeometryMeasure2d>;
extern template class VersionedLevel<geom::BaseTypedGeometryMeasure2d<omUInt32>, geom::BaseGeometryMeasure2d>;
extern template class VersionedLevel<geom::BaseTypedGeometryMeasure2d<omReal32>, geom::BaseGeometryMeasure2d>;
extern template class VersionedLevel<geom::BaseTypedGeometryMeasure2d<omReal64>, geom::BaseGeometryMeasure2d>;
extern template class VersionedLevel<geom::BaseTypedGeometryMeasure2d<geom::Moments2dO3>, geom::BaseGeometryMeasure2d>;
extern template class VersionedLevel<geom::BaseTypedGeometryMeasure2d<geom::HuMoments2dO3>,
                                     geom::BaseGeometryMeasure2d>;
}  // namespace ormix
