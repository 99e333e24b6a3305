#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Transform/3d/AnisotropicScaleTransform3d.h>
#include <ORMIXGeometry/Transform/3d/LinearTransform3d.ipp>
#include <ORMIXGeometry/Transform/LinearTransformFrame.ipp>

#include <algorithm>
#include <array>

namespace ormix::geom {

namespace {

/// The rotation that turns the first two axes to these two, and the third to what makes it one.
EulerAngles orientationOfAxes(std::size_t first, std::size_t second) {
  const std::size_t third = 3 - first - second;
  RotationMatrix matrix{};
  matrix[first][0] = 1;
  matrix[second][1] = 1;
  matrix[third][2] = second == (first + 1) % 3 ? 1 : -1;
  return matrixToEuler(matrix);
}

}  // namespace

template <class T>
GeometryEntity3dPtr AnisotropicScaleTransform3d::process(const Sphere3d<T>& sphere) const {
  Point3dData<T> center = sphere.center();
  if (!detail::mapPoint(map(), center)) return {};
  // As unit lengths scaled by the radius of the image: in omReal64 up to the absolute value, as unsigned lengths have
  // no negative, and rounded once.
  const auto radius = static_cast<omReal64>(sphere.getRadius());
  const std::array<omReal64, 3> factors{_transform.getSx(), _transform.getSy(), _transform.getSz()};
  std::array<T, 3> radii{1, 1, 1};
  for (std::size_t axis = 0; axis < 3; ++axis)
    if (!detail::scaleLength(std::abs(factors[axis] * radius), radii[axis]) || radii[axis] == 0) return {};
  std::array<std::size_t, 3> axes{0, 1, 2};
  std::stable_sort(axes.begin(), axes.end(), [&radii](std::size_t a, std::size_t b) { return radii[a] > radii[b]; });
  const EulerAngles angles = orientationOfAxes(axes[0], axes[1]);
  return boost::make_shared<Ellipsoid3d<T>>(center, radii[axes[0]], radii[axes[1]], radii[axes[2]], angles.alpha,
                                            angles.beta, angles.chi);
}

template <class T>
Ellipsoid3d<T> AnisotropicScaleTransform3d::anisotropicScale(const Sphere3d<T>& sphere, omReal64 sx, omReal64 sy,
                                                             omReal64 sz) {
  const GeometryEntity3dPtr image = AnisotropicScaleTransform3d(sx, sy, sz).apply(sphere);
  if (!image)
    logAndThrow(formatMessage<eTransformMessage>(eTransformMessage::eTM_TransformFailed, std::string(s_className),
                                                 toString(sphere.getEntity3dType())),
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return static_cast<const Ellipsoid3d<T>&>(*image);
}

#define ORMIX_GEOMETRY_INSTANTIATE_SPHERE_SCALE(T)                                                                \
  template ORMIX_GEOMETRY_API GeometryEntity3dPtr AnisotropicScaleTransform3d::process(const Sphere3d<T>&) const; \
  template ORMIX_GEOMETRY_API Ellipsoid3d<T> AnisotropicScaleTransform3d::anisotropicScale(                       \
      const Sphere3d<T>&, omReal64, omReal64, omReal64);
ORMIX_GEOMETRY_INSTANTIATE_SPHERE_SCALE(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_SPHERE_SCALE(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_SPHERE_SCALE(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_SPHERE_SCALE(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_SPHERE_SCALE

}  // namespace ormix::geom

ORMIX_GEOMETRY_LINEAR_TRANSFORM3D_LEVELS(, AnisotropicScaleTransform3d, AnisotropicScale3d)
