#include <ORMIXGeometry/Message/TransformMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Transform/2d/AnisotropicScaleTransform2d.h>
#include <ORMIXGeometry/Transform/2d/GeometryTransform2dUtils.h>
#include <ORMIXGeometry/Transform/2d/HomographyTransform2d.h>
#include <ORMIXGeometry/Transform/2d/RigidTransform2d.h>
#include <ORMIXGeometry/Transform/2d/RotationTransform2d.h>
#include <ORMIXGeometry/Transform/2d/ScaleTransform2d.h>
#include <ORMIXGeometry/Transform/2d/SimilarityTransform2d.h>
#include <ORMIXGeometry/Transform/2d/TranslationTransform2d.h>
#include <ORMIXGeometry/Transform/ApplyToAll.ipp>

#include <boost/smart_ptr/make_shared_object.hpp>

namespace ormix::geom {

namespace {

template <class Transform, class Math>
GeometryTransform2dPtr converted(const BaseGeometricTransform2d& transform) {
  return boost::make_shared<Transform>(static_cast<const Math&>(transform));
}

}  // namespace

GeometryTransform2dPtr convert(const BaseGeometricTransform2d& transform) {
  switch (transform.getType()) {
    case eGT2DT_Translation:
      return converted<TranslationTransform2d, Translation2d>(transform);
    case eGT2DT_Rotation:
      return converted<RotationTransform2d, Rotation2d>(transform);
    case eGT2DT_Rigid:
      return converted<RigidTransform2d, Rigid2d>(transform);
    case eGT2DT_Scale:
      return converted<ScaleTransform2d, Scale2d>(transform);
    case eGT2DT_Similarity:
      return converted<SimilarityTransform2d, Similarity2d>(transform);
    case eGT2DT_AnisotropicScale:
      return converted<AnisotropicScaleTransform2d, AnisotropicScale2d>(transform);
    case eGT2DT_Homography:
      return converted<HomographyTransform2d, Homography2d>(transform);
    case eGT2DT_Affine:
      break;
  }
  logAndThrow(
      formatMessage<eTransformMessage>(eTransformMessage::eTM_TransformNotSupported, toString(transform.getType())),
      __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

BoolResult apply(const BaseGeometryTransform2d& transform, BaseGeometryEntity2d& entity) {
  return transform.applyInSitu(entity);
}

GeometryEntity2dPtr apply(const BaseGeometryTransform2d& transform,
                          const boost::shared_ptr<const BaseGeometryEntity2d>& entity) {
  return transform.apply(entity);
}

GeometryEntity2dPtr apply(const BaseGeometricTransform2d& transform,
                          const boost::shared_ptr<const BaseGeometryEntity2d>& entity) {
  return convert(transform)->apply(entity);
}

BoolResult applyAll(const BaseGeometryTransform2d& transform, GeometryEntity2dPtrColl& entities) {
  return detail::applyToAll<PlanarTransforms>(transform, entities);
}

BoolResult applyAll(const BaseGeometryTransform2d& transform, const GeometryEntity2dPtrColl& in,
                    GeometryEntity2dPtrColl& out) {
  return detail::imagesOfAll<PlanarTransforms>(transform, in, out);
}

GeometryEntity2dPtrColl applyAll(const BaseGeometryTransform2d& transform, const GeometryEntity2dPtrColl& entities) {
  GeometryEntity2dPtrColl images;
  const BoolResult result = applyAll(transform, entities, images);
  if (!result) logAndThrow(result.getMessage(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return images;
}

GeometryEntity2dPtrColl applyAll(const BaseGeometricTransform2d& transform, const GeometryEntity2dPtrColl& entities) {
  return applyAll(*convert(transform), entities);
}

}  // namespace ormix::geom
