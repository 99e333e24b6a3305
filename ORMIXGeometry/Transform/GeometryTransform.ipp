#pragma once

#include <ORMIXGeometry/Message/TransformMessage.h>
#include <ORMIXGeometry/Transform/GeometryTransform.h>
#include <ORMIXUtil/Object/DynamicRegistrator.h>
#include <ORMIXSerialization/Object/RegisteredObject.ipp>

namespace ormix::geom {

template <class Self, class Space>
BoolResult GeometryTransform<Self, Space>::applyInSitu(typename Space::Entity& entity) const {
  if (entity.visitInSitu(static_cast<const Self&>(*this))) return {};
  return failure(formatMessage<eTransformMessage>(eTransformMessage::eTM_TransformFailed, this->getClassName(),
                                                  toString(Space::typeOf(entity))));
}

template <class Self, class Space>
typename Space::EntityPtr GeometryTransform<Self, Space>::apply(const typename Space::Entity& entity) const {
  return entity.visitNonInSitu(static_cast<const Self&>(*this));
}

}  // namespace ormix::geom
