#pragma once

#include <ORMIXGeometry/Entity/3d/BaseGeometryEntity3d.h>

namespace ormix::geom {

/// Root of the spatial entities with coordinates of type `T`; holds no data.
template <class T>
class ORMIX_GEOMETRY_API BaseTypedGeometryEntity3d
    : public VersionedLevel<BaseTypedGeometryEntity3d<T>, BaseGeometryEntity3d> {
 public:
  static constexpr const char* s_className = "ormix::geom::BaseTypedGeometryEntity3d";  ///< registered name

  using CoordinateType = T;  ///< omInt32, omUInt32, omReal32 or omReal64

 protected:
  BaseTypedGeometryEntity3d() = default;
  BaseTypedGeometryEntity3d(const BaseTypedGeometryEntity3d&) = default;
  BaseTypedGeometryEntity3d(BaseTypedGeometryEntity3d&&) = default;
  BaseTypedGeometryEntity3d& operator=(const BaseTypedGeometryEntity3d&) = default;
  BaseTypedGeometryEntity3d& operator=(BaseTypedGeometryEntity3d&&) = default;
  ~BaseTypedGeometryEntity3d() override = default;
};

extern template class BaseTypedGeometryEntity3d<omInt32>;
extern template class BaseTypedGeometryEntity3d<omUInt32>;
extern template class BaseTypedGeometryEntity3d<omReal32>;
extern template class BaseTypedGeometryEntity3d<omReal64>;

}  // namespace ormix::geom

namespace ormix {
extern template class VersionedLevel<geom::BaseTypedGeometryEntity3d<omInt32>, geom::BaseGeometryEntity3d>;
extern template class VersionedLevel<geom::BaseTypedGeometryEntity3d<omUInt32>, geom::BaseGeometryEntity3d>;
extern template class VersionedLevel<geom::BaseTypedGeometryEntity3d<omReal32>, geom::BaseGeometryEntity3d>;
extern template class VersionedLevel<geom::BaseTypedGeometryEntity3d<omReal64>, geom::BaseGeometryEntity3d>;
}  // namespace ormix
