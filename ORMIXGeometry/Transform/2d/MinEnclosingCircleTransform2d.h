#pragma once

#include <ORMIXGeometry/Entity/2d/Circle/Circle2d.h>
#include <ORMIXGeometry/Transform/2d/GeometryTransform2d.h>
#include <ORMIXGeometry/Transform/2d/PlanarDerivationTable.h>
#include <ORMIXGeometry/Transform/DerivedTransform.h>

ORMIX_GEOMETRY_DERIVED_TRANSFORM2D_LEVELS(extern, MinEnclosingCircleTransform2d)

namespace ormix::geom {

/// The smallest circle around a planar entity, a `Circle2d<omReal64>`.
///
/// It contains every stored point and corner, as its distance() says: the radius is rounded outwards, and within 1e-12
/// of the smallest, see smallestEnclosingCircle(), which also tells the points that determine the circle. A circle
/// answers itself, an ellipse the circle around its major axis. A shape without boundaries has that of its pixels.
///
/// Vectors, lines and parabolas have none, nor has what has no points, a null hole, or a number that is not finite. In
/// place for `Circle2d<omReal64>`. Linear in the number of points, with about ten passes.
class ORMIX_GEOMETRY_API MinEnclosingCircleTransform2d
    : public DerivedTransform<MinEnclosingCircleTransform2d, PlanarTransforms> {
 public:
  static constexpr const char* s_className = "ormix::geom::MinEnclosingCircleTransform2d";  ///< registered name
  static constexpr eTransform2dType s_transform2dType = eT2DT_MinEnclosingCircle;

  template <class Entity>
  struct Supports : std::bool_constant<s_planarDerivationsOf<Entity>.minEnclosingCircle> {};
  template <class Entity>
  using Result = Circle2d<omReal64>;

  MinEnclosingCircleTransform2d() = default;

  /// The smallest circle around an entity.
  /// \throw ORMIXGeometryException, logged first, where there is none
  /// @{
  template <class Entity, std::enable_if_t<Supports<Entity>::value, int> = 0>
  static Result<Entity> minEnclosingCircle(const Entity& entity) {
    return derivedOf(entity);
  }
  static Circle2d<omReal64> minEnclosingCircle(const BaseGeometryEntity2d& entity) {
    return static_cast<const Circle2d<omReal64>&>(*derivedOfAny(entity));
  }
  /// @}

  /// The same without an exception.
  /// \return false, `result` unspecified, where there is none
  template <class Entity>
  bool derive(const Entity& entity, Result<Entity>& result) const;
};

}  // namespace ormix::geom
