#pragma once

#include <ORMIXGeometry/Message/TransformMessage.h>
#include <ORMIXGeometry/Transform/GeometricTransformArchive.h>
#include <ORMIXUtil/Object/DynamicRegistrator.h>
#include <ORMIXGeometry/Transform/2d/LinearTransform2d.ipp>
#include <ORMIXSerialization/Object/RegisteredObject.ipp>

#include <boost/smart_ptr/shared_ptr.hpp>

namespace ormix::geom {

template <class Self, class Math>
template <class S, class F>
bool LinearTransform2d<Self, Math>::fields(S& self, F&& item) {
  return item("params", self._transform);
}

template <class Self, class Math>
eTransform2dType LinearTransform2d<Self, Math>::getTransform2dType() const {
  return Self::s_transform2dType;
}

template <class Self, class Math>
BoolResult LinearTransform2d<Self, Math>::applyInSitu(BaseGeometryEntity2d& entity) const {
  if (entity.visitInSitu(static_cast<const Self&>(*this))) return {};
  return failure(formatMessage<eTransformMessage>(eTransformMessage::eTM_TransformFailed, this->getClassName(),
                                                  toString(entity.getEntity2dType())));
}

// An anisotropic scale can turn an entity into one of another class and builds its images itself; the image under any
// other linear transform is a copy transformed in place.
template <class Self, class Math>
GeometryEntity2dPtr LinearTransform2d<Self, Math>::apply(const BaseGeometryEntity2d& entity) const {
  if constexpr (std::is_same_v<Math, AnisotropicScale2d>) return entity.visitNonInSitu(static_cast<const Self&>(*this));
  const auto image = boost::static_pointer_cast<BaseGeometryEntity2d>(entity.duplicateShared());
  return image->visitInSitu(static_cast<const Self&>(*this)) ? image : GeometryEntity2dPtr();
}

}  // namespace ormix::geom
