#pragma once

#include <ORMIXGeometry/Transform/3d/LinearTransform3d.h>
#include <ORMIXMath/Transform/3d/AnisotropicScale3d.h>

#include <utility>

ORMIX_GEOMETRY_LINEAR_TRANSFORM3D_LEVELS(extern, AnisotropicScaleTransform3d, AnisotropicScale3d)

namespace ormix::geom {

/// Scales spatial entities about the origin by one factor along each axis. The one linear transform that can turn an
/// entity into one of another class: a sphere becomes an ellipsoid, and so has no image in place.
class ORMIX_GEOMETRY_API AnisotropicScaleTransform3d
    : public LinearTransform3d<AnisotropicScaleTransform3d, AnisotropicScale3d> {
 public:
  static constexpr const char* s_className = "ormix::geom::AnisotropicScaleTransform3d";
  static constexpr eTransform3dType s_transform3dType = eT3DT_AnisotropicScale;

  /// The identity.
  AnisotropicScaleTransform3d() = default;
  explicit AnisotropicScaleTransform3d(const AnisotropicScale3d& transform) : LinearTransform(transform) {}
  AnisotropicScaleTransform3d(omReal64 sx, omReal64 sy, omReal64 sz)
      : LinearTransform(AnisotropicScale3d(sx, sy, sz)) {}

  /// The image of an entity that has one in place.
  template <class Entity, class Base = LinearTransform,
            class = decltype(std::declval<const Base&>().processInSitu(std::declval<Entity&>()))>
  GeometryEntity3dPtr process(const Entity& entity) const {
    return this->image(entity);
  }
  /// The ellipsoid that is the image of a sphere: its radii, which are positive whatever the signs of the factors and
  /// of the radius, in descending order, equal ones in order of the axes x, y, z, and its orientation that of these
  /// axes; the last of them points so that it is a rotation. So equal factors give an ellipsoid that is not turned.
  /// Empty where a radius of the image is 0, also after rounding, or not finite: no ellipsoid then.
  template <class T>
  GeometryEntity3dPtr process(const Sphere3d<T>& sphere) const;

  /// The image of a sphere under the scale by these factors.
  /// \throw ORMIXGeometryException, logged first, where it is none
  template <class T>
  static Ellipsoid3d<T> anisotropicScale(const Sphere3d<T>& sphere, omReal64 sx, omReal64 sy, omReal64 sz);
};

}  // namespace ormix::geom
