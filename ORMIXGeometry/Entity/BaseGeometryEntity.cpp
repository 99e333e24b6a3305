#include <ORMIXGeometry/Entity/BaseGeometryEntity.h>
#include <ORMIXSerialization/Object/VersionedLevel.ipp>

namespace ormix {
template class VersionedLevel<geom::BaseGeometryEntity, BaseObjectWithSkeleton>;
}  // namespace ormix

namespace ormix::geom {

BaseGeometryEntity::~BaseGeometryEntity() = default;

}  // namespace ormix::geom
