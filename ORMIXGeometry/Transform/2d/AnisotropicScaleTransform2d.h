#pragma once

#include <ORMIXGeometry/Transform/2d/LinearTransform2d.h>
#include <ORMIXMath/Transform/2d/AnisotropicScale2d.h>

#include <utility>

ORMIX_GEOMETRY_LINEAR_TRANSFORM2D_LEVELS(extern, AnisotropicScaleTransform2d, AnisotropicScale2d)

namespace ormix::geom {

/// Scales planar entities about the origin by one factor along x and one along y. The one linear transform that can
/// turn an entity into one of another class: a circle becomes an ellipse, and so has no image in place.
class ORMIX_GEOMETRY_API AnisotropicScaleTransform2d
    : public LinearTransform2d<AnisotropicScaleTransform2d, AnisotropicScale2d> {
 public:
  static constexpr const char* s_className = "ormix::geom::AnisotropicScaleTransform2d";
  static constexpr eTransform2dType s_transform2dType = eT2DT_AnisotropicScale;

  /// The identity.
  AnisotropicScaleTransform2d() = default;
  explicit AnisotropicScaleTransform2d(const AnisotropicScale2d& transform) : LinearTransform(transform) {}
  AnisotropicScaleTransform2d(omReal64 sx, omReal64 sy) : LinearTransform(AnisotropicScale2d(sx, sy)) {}

  /// The image of an entity that has one in place.
  template <class Entity, class Base = LinearTransform,
            class = decltype(std::declval<const Base&>().processInSitu(std::declval<Entity&>()))>
  GeometryEntity2dPtr process(const Entity& entity) const {
    return this->image(entity);
  }
  /// The ellipse that is the image of a circle: its major radius the larger of the two, at an angle of 0 when the x
  /// radius is strictly larger, of pi/2 otherwise.
  template <class T>
  GeometryEntity2dPtr process(const Circle2d<T>& circle) const;
  /// A shape of the images of the polygons, without pixels: scaled, they would be none.
  GeometryEntity2dPtr process(const Shape2d& shape) const;

  /// The image of a circle under the scale by these factors.
  /// \throw ORMIXGeometryException, logged first, where it is none
  template <class T>
  static Ellipse2d<T> anisotropicScale(const Circle2d<T>& circle, omReal64 sx, omReal64 sy);
};

}  // namespace ormix::geom
