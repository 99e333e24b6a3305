#include <ORMIXGeometry/Transform/2d/AnisotropicScaleTransform2d.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXGeometry/Transform/2d/LinearTransform2dFrame.ipp>

namespace ormix {
template class VersionedLevel<geom::AnisotropicScaleTransform2d, geom::BaseGeometryTransform2d>;
template class RegisteredObject<geom::AnisotropicScaleTransform2d, geom::BaseGeometryTransform2d>;
}  // namespace ormix

namespace ormix::geom {

template class LinearTransform2d<AnisotropicScaleTransform2d, AnisotropicScale2d>;

namespace {
const DynamicRegistrator<AnisotropicScaleTransform2d> g_classRegistrator;
}  // namespace

template <class T>
GeometryEntity2dPtr AnisotropicScaleTransform2d::process(const Circle2d<T>& circle) const {
  Point2dData<T> center = circle.center();
  Point2dData<T> radii(circle.getRadius(), circle.getRadius());
  if (!detail::mapPoint(s_transform2dType, _transform, center)) return {};
  if (!detail::mapPoint(s_transform2dType, _transform, radii)) return {};
  const T rx = radii.getX();
  const T ry = radii.getY();
  // Equal radii are sent to pi/2 (intended).
  if (rx > ry) return boost::make_shared<Ellipse2d<T>>(center, rx, ry, 0);
  return boost::make_shared<Ellipse2d<T>>(center, ry, rx, s_pi / 2);
}

template GeometryEntity2dPtr AnisotropicScaleTransform2d::process(const Circle2d<omInt32>&) const;
template GeometryEntity2dPtr AnisotropicScaleTransform2d::process(const Circle2d<omUInt32>&) const;
template GeometryEntity2dPtr AnisotropicScaleTransform2d::process(const Circle2d<omReal32>&) const;
template GeometryEntity2dPtr AnisotropicScaleTransform2d::process(const Circle2d<omReal64>&) const;

}  // namespace ormix::geom
