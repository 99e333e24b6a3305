#pragma once

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/2d/BaseTypedGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/EntityVisits.h>

namespace ormix::geom {

/// Argument `Space` of EntityVisits for the plane: names the planar classes that have a counterpart in space.
struct ORMIX_GEOMETRY_API PlanarSpace {
  using EntityPtr = GeometryEntity2dPtr;  ///< shared pointer to any planar entity
  /// The planar transform of this kind.
  /// @{
  using AnisotropicScale = AnisotropicScaleTransform2d;
  using Homography = HomographyTransform2d;
  using Rigid = RigidTransform2d;
  using Rotation = RotationTransform2d;
  using Scale = ScaleTransform2d;
  using Similarity = SimilarityTransform2d;
  using Translation = TranslationTransform2d;
  using Centroid = CentroidTransform2d;
  using ConvexHull = ConvexHullTransform2d;
  using Envelope = EnvelopeTransform2d;
  /// @}
};

/// Implements what is uniform in all concrete planar entities: the visit functions and the type queries. A visit calls
/// the overload of the transform or measure for `Self` if there is one. `Self`, the entity, defines `s_className`,
/// `s_entity2dType` and, where its numbers are polar, `s_coordinateSystem2dType`.
///
/// The definitions are in Entity2d.ipp, which only the sources of entities include.
template <class Self, class Base>
class ORMIX_GEOMETRY_API Entity2d : public EntityVisits<Self, Base, PlanarSpace> {
 public:
  /// Returned by getCoordinateSystem2dType(); redefined in `Self` where it differs.
  static constexpr eCoordinateSystem2dType s_coordinateSystem2dType = eCS2DT_Cartesian;

  using EntityVisits<Self, Base, PlanarSpace>::visitInSitu;
  using EntityVisits<Self, Base, PlanarSpace>::visitNonInSitu;
  /// As for the transforms of EntityVisits; these exist in the plane only.
  /// @{
  bool visitInSitu(const SimplifyTransform2d& transform) final;
  GeometryEntity2dPtr visitNonInSitu(const SimplifyTransform2d& transform) const final;
  bool visitInSitu(const MinEnclosingCircleTransform2d& transform) final;
  GeometryEntity2dPtr visitNonInSitu(const MinEnclosingCircleTransform2d& transform) const final;
  /// @}
  /// Returns false, without a log entry, where the measure does not support `Self`; `value` is then unspecified.
  /// @{
  bool visit(const PerimeterMsr2d& measure, omReal64& value) const final;
  bool visit(const AreaMsr2d& measure, omReal64& value) const final;
  bool visit(const MomentsMsr2d& measure, Moments2dO3& value) const final;
  bool visit(const HuMomentsMsr2d& measure, HuMoments2dO3& value) const final;
  /// @}

  eCoordinateSystem2dType getCoordinateSystem2dType() const final;  ///< Self::s_coordinateSystem2dType
  eEntity2dType getEntity2dType() const final;                      ///< Self::s_entity2dType

 protected:
  Entity2d() = default;
  Entity2d(const Entity2d&) = default;
  Entity2d(Entity2d&&) = default;
  Entity2d& operator=(const Entity2d&) = default;
  Entity2d& operator=(Entity2d&&) = default;
  ~Entity2d() override = default;
};

}  // namespace ormix::geom

// ORMIX_GEOMETRY_ENTITY_LEVELS of EntityVisits.h for the plane.
#define ORMIX_GEOMETRY_ENTITY2D_LEVELS(keyword, Class, Base) \
  ORMIX_GEOMETRY_ENTITY_LEVELS(keyword, Entity2d, PlanarSpace, Class, Base)
#define ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(keyword, Class) \
  ORMIX_GEOMETRY_ENTITY_TEMPLATE_LEVELS(keyword, Entity2d, PlanarSpace, Class, BaseTypedGeometryEntity2d)
