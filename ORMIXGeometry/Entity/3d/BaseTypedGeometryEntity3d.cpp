#include <ORMIXGeometry/Entity/3d/BaseTypedGeometryEntity3d.h>
#include <ORMIXSerialization/Object/VersionedLevel.ipp>

namespace ormix {
template class VersionedLevel<geom::BaseTypedGeometryEntity3d<omInt32>, geom::BaseGeometryEntity3d>;
template class VersionedLevel<geom::BaseTypedGeometryEntity3d<omUInt32>, geom::BaseGeometryEntity3d>;
template class VersionedLevel<geom::BaseTypedGeometryEntity3d<omReal32>, geom::BaseGeometryEntity3d>;
template class VersionedLevel<geom::BaseTypedGeometryEntity3d<omReal64>, geom::BaseGeometryEntity3d>;
}  // namespace ormix

namespace ormix::geom {
template class BaseTypedGeometryEntity3d<omInt32>;
template class BaseTypedGeometryEntity3d<omUInt32>;
template class BaseTypedGeometryEntity3d<omReal32>;
template class BaseTypedGeometryEntity3d<omReal64>;
}  // namespace ormix::geom
