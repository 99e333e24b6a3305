#include <ORMIXGeometry/Message/TransformMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Transform/3d/AnisotropicScaleTransform3d.h>
#include <ORMIXGeometry/Transform/3d/GeometryTransform3dUtils.h>
#include <ORMIXGeometry/Transform/3d/HomographyTransform3d.h>
#include <ORMIXGeometry/Transform/3d/RigidTransform3d.h>
#include <ORMIXGeometry/Transform/3d/RotationTransform3d.h>
#include <ORMIXGeometry/Transform/3d/ScaleTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SimilarityTransform3d.h>
#include <ORMIXGeometry/Transform/3d/TranslationTransform3d.h>
#include <ORMIXGeometry/Transform/ApplyToAll.ipp>

#include <boost/smart_ptr/make_shared_object.hpp>

namespace ormix::geom {

namespace {

template <class Transform, class Math>
GeometryTransform3dPtr converted(const BaseGeometricTransform3d& transform) {
  return boost::make_shared<Transform>(static_cast<const Math&>(transform));
}

}  // namespace

GeometryTransform3dPtr convert(const BaseGeometricTransform3d& transform) {
  switch (transform.getType()) {
    case eGT3DT_Translation:
      return converted<TranslationTransform3d, Translation3d>(transform);
    case eGT3DT_Rotation:
      return converted<RotationTransform3d, Rotation3d>(transform);
    case eGT3DT_Rigid:
      return converted<RigidTransform3d, Rigid3d>(transform);
    case eGT3DT_Scale:
      return converted<ScaleTransform3d, Scale3d>(transform);
    case eGT3DT_Similarity:
      return converted<SimilarityTransform3d, Similarity3d>(transform);
    case eGT3DT_AnisotropicScale:
      return converted<AnisotropicScaleTransform3d, AnisotropicScale3d>(transform);
    case eGT3DT_Homography:
      return converted<HomographyTransform3d, Homography3d>(transform);
    case eGT3DT_Affine:
      break;
  }
  logAndThrow(
      formatMessage<eTransformMessage>(eTransformMessage::eTM_TransformNotSupported, toString(transform.getType())),
      __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

BoolResult apply(const BaseGeometryTransform3d& transform, BaseGeometryEntity3d& entity) {
  return transform.applyInSitu(entity);
}

GeometryEntity3dPtr apply(const BaseGeometryTransform3d& transform,
                          const boost::shared_ptr<const BaseGeometryEntity3d>& entity) {
  return transform.apply(entity);
}

GeometryEntity3dPtr apply(const BaseGeometricTransform3d& transform,
                          const boost::shared_ptr<const BaseGeometryEntity3d>& entity) {
  return convert(transform)->apply(entity);
}

BoolResult applyAll(const BaseGeometryTransform3d& transform, GeometryEntity3dPtrColl& entities) {
  return detail::applyToAll<SpatialTransforms>(transform, entities);
}

BoolResult applyAll(const BaseGeometryTransform3d& transform, const GeometryEntity3dPtrColl& in,
                    GeometryEntity3dPtrColl& out) {
  return detail::imagesOfAll<SpatialTransforms>(transform, in, out);
}

GeometryEntity3dPtrColl applyAll(const BaseGeometryTransform3d& transform, const GeometryEntity3dPtrColl& entities) {
  GeometryEntity3dPtrColl images;
  const BoolResult result = applyAll(transform, entities, images);
  if (!result) logAndThrow(result.getMessage(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return images;
}

GeometryEntity3dPtrColl applyAll(const BaseGeometricTransform3d& transform, const GeometryEntity3dPtrColl& entities) {
  return applyAll(*convert(transform), entities);
}

}  // namespace ormix::geom
