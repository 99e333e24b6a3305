#pragma once

#include <ORMIXGeometry/Transform/3d/GeometryTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SpatialDerivationTable.h>
#include <ORMIXGeometry/Transform/DerivedTransform.h>

ORMIX_GEOMETRY_DERIVED_TRANSFORM3D_LEVELS(extern, EnvelopeTransform3d)

namespace ormix::geom {

/// The smallest box, with sides along the axes, around a spatial entity: a `BoundingBox3d` of its coordinate type, of a
/// shape that of its boundaries.
///
/// It contains every point of the entity, as EnvelopeTransform2d says; of ellipsoids, cubes, cuboids, cylinders, cones,
/// tori and circles that are turned, sides in reals are a few units in the last place too far out. Cubes and cuboids
/// are where their corners are, turned about the origin of coordinates. A shape without boundaries has that of its
/// voxels.
///
/// Vectors, plans and lines have none, nor has what has no points, a null hole or a number that is not finite. In place
/// for boxes only. Linear in the number of vertices; those of a mesh that no triangle has are within the box, too.
class ORMIX_GEOMETRY_API EnvelopeTransform3d : public DerivedTransform<EnvelopeTransform3d, SpatialTransforms> {
 public:
  static constexpr const char* s_className = "ormix::geom::EnvelopeTransform3d";
  static constexpr eTransform3dType s_transform3dType = eT3DT_Envelope;

  template <class Entity>
  struct Supports : std::bool_constant<s_spatialDerivationsOf<Entity>.envelope> {};
  template <class Entity>
  using Result = BoundingBox3d<CoordinateOf<Entity>>;

  EnvelopeTransform3d() = default;

  /// The envelope of an entity.
  /// \throw ORMIXGeometryException, logged first, where there is none
  /// @{
  template <class Entity, std::enable_if_t<Supports<Entity>::value, int> = 0>
  static Result<Entity> envelope(const Entity& entity) {
    return derivedOf(entity);
  }
  static GeometryEntity3dPtr envelope(const BaseGeometryEntity3d& entity) { return derivedOfAny(entity); }
  /// @}

  /// The same without an exception.
  /// \return false, `result` unspecified, where there is none
  template <class Entity>
  bool derive(const Entity& entity, Result<Entity>& result) const;
};

}  // namespace ormix::geom
