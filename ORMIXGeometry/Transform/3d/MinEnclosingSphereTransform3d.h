#pragma once

#include <ORMIXGeometry/Entity/3d/Sphere/Sphere3d.h>
#include <ORMIXGeometry/Transform/3d/GeometryTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SpatialDerivationTable.h>
#include <ORMIXGeometry/Transform/DerivedTransform.h>

ORMIX_GEOMETRY_DERIVED_TRANSFORM3D_LEVELS(extern, MinEnclosingSphereTransform3d)

namespace ormix::geom {

/// The smallest sphere around a spatial entity, a `Sphere3d<omReal64>`.
///
/// It contains every stored point and corner, as its distance() says: the radius is rounded outwards, and within 1e-12
/// of the smallest, see smallestEnclosingSphere(), which also tells the points that determine the sphere. A sphere
/// answers itself, an ellipsoid the sphere around its major axis. A shape without boundaries has that of its voxels.
///
/// Vectors, plans and lines have none, nor has what has no points, a null hole, or a number that is not finite. In
/// place for `Sphere3d<omReal64>`. Linear in the number of points, with about ten passes.
class ORMIX_GEOMETRY_API MinEnclosingSphereTransform3d
    : public DerivedTransform<MinEnclosingSphereTransform3d, SpatialTransforms> {
 public:
  static constexpr const char* s_className = "ormix::geom::MinEnclosingSphereTransform3d";  ///< registered name
  static constexpr eTransform3dType s_transform3dType = eT3DT_MinEnclosingSphere;

  template <class Entity>
  struct Supports : std::bool_constant<s_spatialDerivationsOf<Entity>.minEnclosingSphere> {};
  template <class Entity>
  using Result = Sphere3d<omReal64>;

  MinEnclosingSphereTransform3d() = default;

  /// The smallest sphere around an entity.
  /// \throw ORMIXGeometryException, logged first, where there is none
  /// @{
  template <class Entity, std::enable_if_t<Supports<Entity>::value, int> = 0>
  static Result<Entity> minEnclosingSphere(const Entity& entity) {
    return derivedOf(entity);
  }
  static Sphere3d<omReal64> minEnclosingSphere(const BaseGeometryEntity3d& entity) {
    return static_cast<const Sphere3d<omReal64>&>(*derivedOfAny(entity));
  }
  /// @}

  /// The same without an exception.
  /// \return false, `result` unspecified, where there is none
  template <class Entity>
  bool derive(const Entity& entity, Result<Entity>& result) const;
};

}  // namespace ormix::geom
