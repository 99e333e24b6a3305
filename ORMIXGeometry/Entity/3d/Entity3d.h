#pragma once

#include <ORMIXGeometry/Entity/3d/BaseGeometryEntity3d.h>
#include <ORMIXGeometry/Entity/3d/BaseTypedGeometryEntity3d.h>
#include <ORMIXGeometry/Entity/EntityVisits.h>

namespace ormix::geom {

/// The transforms of space that have a counterpart in the plane, under the names by which `EntityVisits` uses them.
struct ORMIX_GEOMETRY_API SpatialSpace {
  using EntityPtr = GeometryEntity3dPtr;  ///< what a transform not in place returns
  /// The transform of the name.
  /// @{
  using AnisotropicScale = AnisotropicScaleTransform3d;
  using Homography = HomographyTransform3d;
  using Rigid = RigidTransform3d;
  using Rotation = RotationTransform3d;
  using Scale = ScaleTransform3d;
  using Similarity = SimilarityTransform3d;
  using Translation = TranslationTransform3d;
  using Centroid = CentroidTransform3d;
  using ConvexHull = ConvexHullTransform3d;
  using Envelope = EnvelopeTransform3d;
  /// @}
};

/// What is the same in every concrete spatial entity: the visits, which call the overload for `Self` of the transform
/// or measure where there is one, and the type queries. `Self` declares `s_className`, `s_entity3dType` and, where it
/// is not Cartesian, `s_coordinateSystem3dType`. The bodies are in Entity3d.ipp, which only entity sources include.
template <class Self, class Base>
class ORMIX_GEOMETRY_API Entity3d : public EntityVisits<Self, Base, SpatialSpace> {
 public:
  static constexpr eCoordinateSystem3dType s_coordinateSystem3dType = eCS3DT_Cartesian;  ///< unless `Self` hides it

  using EntityVisits<Self, Base, SpatialSpace>::visitInSitu;
  using EntityVisits<Self, Base, SpatialSpace>::visitNonInSitu;
  /// The visits of BaseGeometryEntity3d that only space has.
  /// @{
  bool visitInSitu(const MinEnclosingSphereTransform3d& transform) final;
  GeometryEntity3dPtr visitNonInSitu(const MinEnclosingSphereTransform3d& transform) const final;
  bool visit(const AreaMsr3d& measure, omReal64& value) const final;
  bool visit(const VolumeMsr3d& measure, omReal64& value) const final;
  /// @}

  /// What `Self` declares.
  /// @{
  eCoordinateSystem3dType getCoordinateSystem3dType() const final;
  eEntity3dType getEntity3dType() const final;
  /// @}

 protected:
  Entity3d() = default;
  Entity3d(const Entity3d&) = default;
  Entity3d(Entity3d&&) = default;
  Entity3d& operator=(const Entity3d&) = default;
  Entity3d& operator=(Entity3d&&) = default;
  ~Entity3d() override = default;
};

}  // namespace ormix::geom

#define ORMIX_GEOMETRY_ENTITY3D_LEVELS(keyword, Class, Base) \
  ORMIX_GEOMETRY_ENTITY_LEVELS(keyword, Entity3d, SpatialSpace, Class, Base)
#define ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(keyword, Class) \
  ORMIX_GEOMETRY_ENTITY_TEMPLATE_LEVELS(keyword, Entity3d, SpatialSpace, Class, BaseTypedGeometryEntity3d)
