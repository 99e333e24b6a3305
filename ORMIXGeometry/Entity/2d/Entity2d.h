#pragma once

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/2d/BaseTypedGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/EntityVisits.h>

namespace ormix::geom {

/// The transforms of the plane that have a counterpart in space.
struct ORMIX_GEOMETRY_API PlanarSpace {
  using EntityPtr = GeometryEntity2dPtr;
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
};

/// The uniform part of a concrete planar entity: every visit, answered by asking whether the transform or the measure
/// has an overload for `Self`, and the type queries. `Self` states `s_className`, `s_entity2dType` and, where it is not
/// Cartesian, `s_coordinateSystem2dType`. The bodies are in Entity2d.ipp, which only entity sources include.
template <class Self, class Base>
class ORMIX_GEOMETRY_API Entity2d : public EntityVisits<Self, Base, PlanarSpace> {
 public:
  static constexpr eCoordinateSystem2dType s_coordinateSystem2dType = eCS2DT_Cartesian;

  using EntityVisits<Self, Base, PlanarSpace>::visitInSitu;
  using EntityVisits<Self, Base, PlanarSpace>::visitNonInSitu;
  bool visitInSitu(const SimplifyTransform2d& transform) final;
  GeometryEntity2dPtr visitNonInSitu(const SimplifyTransform2d& transform) const final;
  bool visitInSitu(const MinEnclosingCircleTransform2d& transform) final;
  GeometryEntity2dPtr visitNonInSitu(const MinEnclosingCircleTransform2d& transform) const final;
  bool visit(const PerimeterMsr2d& measure, omReal64& value) const final;
  bool visit(const AreaMsr2d& measure, omReal64& value) const final;
  bool visit(const MomentsMsr2d& measure, Moments2dO3& value) const final;
  bool visit(const HuMomentsMsr2d& measure, HuMoments2dO3& value) const final;

  eCoordinateSystem2dType getCoordinateSystem2dType() const final;
  eEntity2dType getEntity2dType() const final;

 protected:
  Entity2d() = default;
  Entity2d(const Entity2d&) = default;
  Entity2d(Entity2d&&) = default;
  Entity2d& operator=(const Entity2d&) = default;
  Entity2d& operator=(Entity2d&&) = default;
  ~Entity2d() override = default;
};

}  // namespace ormix::geom

#define ORMIX_GEOMETRY_ENTITY2D_LEVELS(keyword, Class, Base) \
  ORMIX_GEOMETRY_ENTITY_LEVELS(keyword, Entity2d, PlanarSpace, Class, Base)
#define ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(keyword, Class) \
  ORMIX_GEOMETRY_ENTITY_TEMPLATE_LEVELS(keyword, Entity2d, PlanarSpace, Class, BaseTypedGeometryEntity2d)
