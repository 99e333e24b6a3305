#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Transform/2d/AnisotropicScaleTransform2d.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXGeometry/Transform/2d/LinearTransform2d.ipp>
#include <ORMIXGeometry/Transform/LinearTransformFrame.ipp>

namespace ormix::geom {

template <class T>
GeometryEntity2dPtr AnisotropicScaleTransform2d::process(const Circle2d<T>& circle) const {
  Point2dData<T> center = circle.center();
  Point2dData<T> radii(circle.getRadius(), circle.getRadius());
  if (!detail::mapPoint(map(), center)) return {};
  if (!detail::mapPoint(map(), radii)) return {};
  const T rx = radii.getX();
  const T ry = radii.getY();
  // Equal radii are sent to pi/2 (intended).
  if (rx > ry) return boost::make_shared<Ellipse2d<T>>(center, rx, ry, 0);
  return boost::make_shared<Ellipse2d<T>>(center, ry, rx, s_pi / 2);
}

GeometryEntity2dPtr AnisotropicScaleTransform2d::process(const Shape2d& shape) const {
  const auto image = boost::make_shared<Shape2d>();
  image->setPolygonWithHolesColl(shape.getPolygonWithHolesColl());
  if (!processInSitu(*image)) return {};
  return image;
}

template <class T>
Ellipse2d<T> AnisotropicScaleTransform2d::anisotropicScale(const Circle2d<T>& circle, omReal64 sx, omReal64 sy) {
  const GeometryEntity2dPtr image = AnisotropicScaleTransform2d(sx, sy).apply(circle);
  if (!image)
    logAndThrow(formatMessage<eTransformMessage>(eTransformMessage::eTM_TransformFailed, std::string(s_className),
                                                 toString(circle.getEntity2dType())),
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return static_cast<const Ellipse2d<T>&>(*image);
}

#define ORMIX_GEOMETRY_INSTANTIATE_CIRCLE_SCALE(T)                                                                     \
  template ORMIX_GEOMETRY_API GeometryEntity2dPtr AnisotropicScaleTransform2d::process(const Circle2d<T>&) const;      \
  template ORMIX_GEOMETRY_API Ellipse2d<T> AnisotropicScaleTransform2d::anisotropicScale(const Circle2d<T>&, omReal64, \
                                                                                         omReal64);
ORMIX_GEOMETRY_INSTANTIATE_CIRCLE_SCALE(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_CIRCLE_SCALE(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_CIRCLE_SCALE(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_CIRCLE_SCALE(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_CIRCLE_SCALE

}  // namespace ormix::geom

ORMIX_GEOMETRY_LINEAR_TRANSFORM2D_LEVELS(, AnisotropicScaleTransform2d, AnisotropicScale2d)
