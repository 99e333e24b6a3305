#pragma once

#include <ORMIXGeometry/Transform/2d/GeometryTransform2d.h>
#include <ORMIXGeometry/Transform/2d/PlanarDerivationTable.h>
#include <ORMIXGeometry/Transform/DerivedTransform.h>

ORMIX_GEOMETRY_DERIVED_TRANSFORM2D_LEVELS(extern, EnvelopeTransform2d)

namespace ormix::geom {

/// The smallest box, with sides along the axes, around a planar entity: a `BoundingBox2d` of its coordinate type, of a
/// shape that of its boundaries.
///
/// It contains every point of the entity: sides that are no numbers of the coordinate type are rounded outwards, and
/// cut at its finite range. Of ellipses, and of squares and rectangles that are turned, sides in reals are up to 1e-15
/// of the half size too far out, for the rounding of the sine and cosine; all others are exact. In integers a side
/// that differs from a whole number by rounding only is that number. The sign of a radius
/// or a half size does not matter, nor which corner of a box is the lower one.
///
/// Vectors, lines and parabolas have none, nor has what has no points, a null hole or a number that is not finite. A
/// shape without boundaries has that of its pixels. In place for boxes only. Linear in the number of vertices.
class ORMIX_GEOMETRY_API EnvelopeTransform2d : public DerivedTransform<EnvelopeTransform2d, PlanarTransforms> {
 public:
  static constexpr const char* s_className = "ormix::geom::EnvelopeTransform2d";  ///< registered name
  static constexpr eTransform2dType s_transform2dType = eT2DT_Envelope;

  template <class Entity>
  struct Supports : std::bool_constant<s_planarDerivationsOf<Entity>.envelope> {};
  template <class Entity>
  using Result = BoundingBox2d<CoordinateOf<Entity>>;

  EnvelopeTransform2d() = default;

  /// The envelope of an entity.
  /// \throw ORMIXGeometryException, logged first, where there is none
  /// @{
  template <class Entity, std::enable_if_t<Supports<Entity>::value, int> = 0>
  static Result<Entity> envelope(const Entity& entity) {
    return derivedOf(entity);
  }
  static GeometryEntity2dPtr envelope(const BaseGeometryEntity2d& entity) { return derivedOfAny(entity); }
  /// @}

  /// The same without an exception.
  /// \return false, `result` unspecified, where there is none
  template <class Entity>
  bool derive(const Entity& entity, Result<Entity>& result) const;
};

}  // namespace ormix::geom
