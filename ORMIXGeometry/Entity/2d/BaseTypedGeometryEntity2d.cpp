#include <ORMIXGeometry/Entity/2d/BaseTypedGeometryEntity2d.h>
#include <ORMIXSerialization/Object/VersionedLevel.ipp>

namespace ormix {
template class VersionedLevel<geom::BaseTypedGeometryEntity2d<omInt32>, geom::BaseGeometryEntity2d>;
template class VersionedLevel<geom::BaseTypedGeometryEntity2d<omUInt32>, geom::BaseGeometryEntity2d>;
template class VersionedLevel<geom::BaseTypedGeometryEntity2d<omInt64>, geom::BaseGeometryEntity2d>;
template class VersionedLevel<geom::BaseTypedGeometryEntity2d<omUInt64>, geom::BaseGeometryEntity2d>;
template class VersionedLevel<geom::BaseTypedGeometryEntity2d<omReal32>, geom::BaseGeometryEntity2d>;
template class VersionedLevel<geom::BaseTypedGeometryEntity2d<omReal64>, geom::BaseGeometryEntity2d>;
}  // namespace ormix

namespace ormix::geom {
template class BaseTypedGeometryEntity2d<omInt32>;
template class BaseTypedGeometryEntity2d<omUInt32>;
template class BaseTypedGeometryEntity2d<omInt64>;
template class BaseTypedGeometryEntity2d<omUInt64>;
template class BaseTypedGeometryEntity2d<omReal32>;
template class BaseTypedGeometryEntity2d<omReal64>;
}  // namespace ormix::geom
