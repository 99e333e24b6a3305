#pragma once

#include <ORMIXGeometry/Entity/2d/PlanarClasses.h>
#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>
#include <ORMIXGeometry/Message/TransformMessage.h>
#include <ORMIXGeometry/Transform/GeometryTransform.h>
#include <ORMIXSerialization/Object/RegisteredObject.ipp>

namespace ormix::geom {

template <class Self, class Space>
BoolResult GeometryTransform<Self, Space>::applyInSitu(typename Space::Entity& entity) const {
  static_assert(isListed<Self>(JoinedLists<PlanarTransformList, SpatialTransformList>()),
                "a transform is missing in PlanarTransformList or SpatialTransformList: add it in "
                "Entity/2d/PlanarClasses.h or Entity/3d/SpatialClasses.h");
  if (entity.visitInSitu(static_cast<const Self&>(*this))) return {};
  return failure(formatMessage<eTransformMessage>(eTransformMessage::eTM_TransformFailed, this->getClassName(),
                                                  toString(Space::typeOf(entity))));
}

template <class Self, class Space>
typename Space::EntityPtr GeometryTransform<Self, Space>::apply(const typename Space::Entity& entity) const {
  return entity.visitNonInSitu(static_cast<const Self&>(*this));
}

}  // namespace ormix::geom
