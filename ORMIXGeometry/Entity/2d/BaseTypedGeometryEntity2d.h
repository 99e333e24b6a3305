#pragma once

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>

namespace ormix::geom {

/// Base class of the planar entities with coordinates of type `T`; holds no data.
template <class T>
class ORMIX_GEOMETRY_API BaseTypedGeometryEntity2d
    : public VersionedLevel<BaseTypedGeometryEntity2d<T>, BaseGeometryEntity2d> {
 public:
  /// Registered name, without the template argument.
  static constexpr const char* s_className = "ormix::geom::BaseTypedGeometryEntity2d";

  using CoordinateType = T;  ///< type of the coordinates

 protected:
  BaseTypedGeometryEntity2d() = default;
  BaseTypedGeometryEntity2d(const BaseTypedGeometryEntity2d&) = default;
  BaseTypedGeometryEntity2d(BaseTypedGeometryEntity2d&&) = default;
  BaseTypedGeometryEntity2d& operator=(const BaseTypedGeometryEntity2d&) = default;
  BaseTypedGeometryEntity2d& operator=(BaseTypedGeometryEntity2d&&) = default;
  ~BaseTypedGeometryEntity2d() override = default;
};

extern template class BaseTypedGeometryEntity2d<omInt32>;
extern template class BaseTypedGeometryEntity2d<omUInt32>;
extern template class BaseTypedGeometryEntity2d<omInt64>;
extern template class BaseTypedGeometryEntity2d<omUInt64>;
extern template class BaseTypedGeometryEntity2d<omReal32>;
extern template class BaseTypedGeometryEntity2d<omReal64>;

}  // namespace ormix::geom

namespace ormix {
extern template class VersionedLevel<geom::BaseTypedGeometryEntity2d<omInt32>, geom::BaseGeometryEntity2d>;
extern template class VersionedLevel<geom::BaseTypedGeometryEntity2d<omUInt32>, geom::BaseGeometryEntity2d>;
extern template class VersionedLevel<geom::BaseTypedGeometryEntity2d<omInt64>, geom::BaseGeometryEntity2d>;
extern template class VersionedLevel<geom::BaseTypedGeometryEntity2d<omUInt64>, geom::BaseGeometryEntity2d>;
extern template class VersionedLevel<geom::BaseTypedGeometryEntity2d<omReal32>, geom::BaseGeometryEntity2d>;
extern template class VersionedLevel<geom::BaseTypedGeometryEntity2d<omReal64>, geom::BaseGeometryEntity2d>;
}  // namespace ormix
