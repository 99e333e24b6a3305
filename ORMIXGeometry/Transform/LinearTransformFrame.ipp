#pragma once

#include <ORMIXGeometry/Transform/GeometricTransformArchive.h>
#include <ORMIXGeometry/Transform/GeometryTransform.ipp>
#include <ORMIXGeometry/Transform/LinearTransform.ipp>

namespace ormix::geom {

template <class Self, class Math, class Space>
template <class S, class F>
bool LinearTransform<Self, Math, Space>::fields(S& self, F&& item) {
  return item("params", self._transform);
}

// An anisotropic scale can turn an entity into one of another class and builds its images itself, in the entities'
// visits. Those answer null to any other linear transform (intended), whose image is a copy mapped in place. That is
// three passes over the points, so of a run the image is made from them at once, by a copy of this that asks for it.
template <class Self, class Math, class Space>
typename Space::EntityPtr LinearTransform<Self, Math, Space>::apply(const typename Space::Entity& entity) const {
  if constexpr (Math::s_type == Space::s_anisotropicScale) {
    return Frame::apply(entity);
  } else {
    RunImage runImage;
    Self asking(static_cast<const Self&>(*this));
    static_cast<LinearTransform&>(asking)._runImage = &runImage;
    entity.visitNonInSitu(static_cast<const Self&>(asking));
    if (runImage.isRun) return runImage.entity;
    const EntityPtr image = boost::static_pointer_cast<typename Space::Entity>(entity.duplicateShared());
    return image->visitInSitu(static_cast<const Self&>(*this)) ? image : nullptr;
  }
}

}  // namespace ormix::geom
