#pragma once

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/2d/BaseTypedGeometryEntity2d.h>
#include <ORMIXSerialization/Object/RegisteredObject.h>

namespace ormix::geom {

/// The uniform part of a concrete planar entity: every visit, answered by asking whether the transform or the measure
/// has an overload for `Self`, and the type queries. `Self` states `s_className`, `s_entity2dType` and, where it is not
/// Cartesian, `s_coordinateSystem2dType`. The bodies are in Entity2d.ipp, which only entity sources include.
template <class Self, class Base>
class ORMIX_GEOMETRY_API Entity2d : public RegisteredObject<Self, Base> {
 public:
  static constexpr eCoordinateSystem2dType s_coordinateSystem2dType = eCS2DT_Cartesian;

  bool visitInSitu(const AnisotropicScaleTransform2d& transform) final;
  GeometryEntity2dPtr visitNonInSitu(const AnisotropicScaleTransform2d& transform) const final;
  bool visitInSitu(const HomographyTransform2d& transform) final;
  GeometryEntity2dPtr visitNonInSitu(const HomographyTransform2d& transform) const final;
  bool visitInSitu(const RigidTransform2d& transform) final;
  GeometryEntity2dPtr visitNonInSitu(const RigidTransform2d& transform) const final;
  bool visitInSitu(const RotationTransform2d& transform) final;
  GeometryEntity2dPtr visitNonInSitu(const RotationTransform2d& transform) const final;
  bool visitInSitu(const ScaleTransform2d& transform) final;
  GeometryEntity2dPtr visitNonInSitu(const ScaleTransform2d& transform) const final;
  bool visitInSitu(const SimilarityTransform2d& transform) final;
  GeometryEntity2dPtr visitNonInSitu(const SimilarityTransform2d& transform) const final;
  bool visitInSitu(const TranslationTransform2d& transform) final;
  GeometryEntity2dPtr visitNonInSitu(const TranslationTransform2d& transform) const final;
  bool visitInSitu(const CentroidTransform2d& transform) final;
  GeometryEntity2dPtr visitNonInSitu(const CentroidTransform2d& transform) const final;
  bool visitInSitu(const ConvexHullTransform2d& transform) final;
  GeometryEntity2dPtr visitNonInSitu(const ConvexHullTransform2d& transform) const final;
  bool visitInSitu(const EnvelopeTransform2d& transform) final;
  GeometryEntity2dPtr visitNonInSitu(const EnvelopeTransform2d& transform) const final;
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

// The frame's levels of one class, declared in its header and instantiated in its source (`keyword` is `extern` there,
// nothing here).
#define ORMIX_GEOMETRY_ENTITY2D_LEVELS(keyword, Class, Base)        \
  namespace ormix {                                                 \
  keyword template class VersionedLevel<geom::Class, geom::Base>;   \
  keyword template class RegisteredObject<geom::Class, geom::Base>; \
  }                                                                 \
  namespace ormix::geom {                                           \
  keyword template class Entity2d<Class, Base>;                     \
  }

// The same for a class template and its four scalar types.
#define ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(keyword, Class)    \
  ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVEL(keyword, Class, omInt32)  \
  ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVEL(keyword, Class, omUInt32) \
  ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVEL(keyword, Class, omReal32) \
  ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVEL(keyword, Class, omReal64)
#define ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVEL(keyword, Class, T)                 \
  ORMIX_GEOMETRY_ENTITY2D_LEVELS(keyword, Class<T>, BaseTypedGeometryEntity2d<T>) \
  namespace ormix::geom {                                                         \
  keyword template class Class<T>;                                                \
  }
