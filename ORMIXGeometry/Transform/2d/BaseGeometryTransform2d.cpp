#include <ORMIXGeometry/Message/EntityMessage.h>
#include <ORMIXGeometry/Transform/2d/BaseGeometryTransform2d.h>
#include <ORMIXSerialization/Object/VersionedLevel.ipp>

namespace ormix {
template class VersionedLevel<geom::BaseGeometryTransform2d, geom::BaseGeometryTransform>;
}  // namespace ormix

namespace ormix::geom {

BaseGeometryTransform2d::~BaseGeometryTransform2d() = default;

eCoordinateDimension BaseGeometryTransform2d::getCoordinateDimension() const { return eCD_2d; }

BoolResult BaseGeometryTransform2d::applyInSitu(const GeometryEntity2dPtr& entity) const {
  if (!entity) return failure(formatMessage<eEntityMessage>(eEntityMessage::eEM_NullPointer));
  return applyInSitu(*entity);
}

GeometryEntity2dPtr BaseGeometryTransform2d::apply(const boost::shared_ptr<const BaseGeometryEntity2d>& entity) const {
  return entity ? apply(*entity) : GeometryEntity2dPtr();
}

}  // namespace ormix::geom
