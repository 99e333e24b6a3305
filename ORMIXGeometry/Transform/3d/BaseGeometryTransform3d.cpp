#include <ORMIXGeometry/Message/EntityMessage.h>
#include <ORMIXGeometry/Transform/3d/BaseGeometryTransform3d.h>
#include <ORMIXSerialization/Object/VersionedLevel.ipp>

namespace ormix {
template class VersionedLevel<geom::BaseGeometryTransform3d, geom::BaseGeometryTransform>;
}  // namespace ormix

namespace ormix::geom {

BaseGeometryTransform3d::~BaseGeometryTransform3d() = default;

eCoordinateDimension BaseGeometryTransform3d::getCoordinateDimension() const { return eCD_3d; }

BoolResult BaseGeometryTransform3d::applyInSitu(const GeometryEntity3dPtr& entity) const {
  if (!entity) return failure(formatMessage<eEntityMessage>(eEntityMessage::eEM_NullPointer));
  return applyInSitu(*entity);
}

GeometryEntity3dPtr BaseGeometryTransform3d::apply(const boost::shared_ptr<const BaseGeometryEntity3d>& entity) const {
  return entity ? apply(*entity) : GeometryEntity3dPtr();
}

}  // namespace ormix::geom
