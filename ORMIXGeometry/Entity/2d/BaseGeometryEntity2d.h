#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2dTypes.h>
#include <ORMIXGeometry/Entity/2d/PlanarClasses.h>
#include <ORMIXGeometry/Entity/BaseGeometryEntity.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <vector>

namespace ormix::geom {

class ORMIX_GEOMETRY_API BaseGeometryEntity2d;
using GeometryEntity2dPtr = boost::shared_ptr<BaseGeometryEntity2d>;  ///< shared pointer to any planar entity
using GeometryEntity2dPtrColl = std::vector<GeometryEntity2dPtr>;     ///< planar entities of mixed classes

}  // namespace ormix::geom

namespace ormix {
extern template class VersionedLevel<geom::BaseGeometryEntity2d, geom::BaseGeometryEntity>;
}  // namespace ormix

namespace ormix::geom {

/// Base class of all planar entities. A transform or measure is applied to an entity by double dispatch: its virtual
/// function calls the virtual `visit...` of the entity, which calls the overload for the concrete class. The order of
/// the virtual functions is part of the binary interface.
class ORMIX_GEOMETRY_API BaseGeometryEntity2d : public VersionedLevel<BaseGeometryEntity2d, BaseGeometryEntity> {
 public:
  static constexpr const char* s_className = "ormix::geom::BaseGeometryEntity2d";  ///< registered name

  ~BaseGeometryEntity2d() override;

  /// eCD_2d
  eCoordinateDimension getCoordinateDimension() const override;

  /// Applies a transform; called by the transforms. In situ: transforms this entity; returns false, with the entity
  /// unchanged, where the transform does not support the entity's class or fails. Not in situ: returns a new entity,
  /// null in the same cases. A class that is not supported is not logged.
  /// @{
  virtual bool visitInSitu(const AnisotropicScaleTransform2d& transform) = 0;
  virtual GeometryEntity2dPtr visitNonInSitu(const AnisotropicScaleTransform2d& transform) const = 0;
  virtual bool visitInSitu(const HomographyTransform2d& transform) = 0;
  virtual GeometryEntity2dPtr visitNonInSitu(const HomographyTransform2d& transform) const = 0;
  virtual bool visitInSitu(const RigidTransform2d& transform) = 0;
  virtual GeometryEntity2dPtr visitNonInSitu(const RigidTransform2d& transform) const = 0;
  virtual bool visitInSitu(const RotationTransform2d& transform) = 0;
  virtual GeometryEntity2dPtr visitNonInSitu(const RotationTransform2d& transform) const = 0;
  virtual bool visitInSitu(const ScaleTransform2d& transform) = 0;
  virtual GeometryEntity2dPtr visitNonInSitu(const ScaleTransform2d& transform) const = 0;
  virtual bool visitInSitu(const SimilarityTransform2d& transform) = 0;
  virtual GeometryEntity2dPtr visitNonInSitu(const SimilarityTransform2d& transform) const = 0;
  virtual bool visitInSitu(const TranslationTransform2d& transform) = 0;
  virtual GeometryEntity2dPtr visitNonInSitu(const TranslationTransform2d& transform) const = 0;
  virtual bool visitInSitu(const CentroidTransform2d& transform) = 0;
  virtual GeometryEntity2dPtr visitNonInSitu(const CentroidTransform2d& transform) const = 0;
  virtual bool visitInSitu(const ConvexHullTransform2d& transform) = 0;
  virtual GeometryEntity2dPtr visitNonInSitu(const ConvexHullTransform2d& transform) const = 0;
  virtual bool visitInSitu(const EnvelopeTransform2d& transform) = 0;
  virtual GeometryEntity2dPtr visitNonInSitu(const EnvelopeTransform2d& transform) const = 0;
  virtual bool visitInSitu(const SimplifyTransform2d& transform) = 0;
  virtual GeometryEntity2dPtr visitNonInSitu(const SimplifyTransform2d& transform) const = 0;
  virtual bool visitInSitu(const MinEnclosingCircleTransform2d& transform) = 0;
  virtual GeometryEntity2dPtr visitNonInSitu(const MinEnclosingCircleTransform2d& transform) const = 0;
  /// @}

  /// Computes a measure; called by the measures. Returns false, without a log entry, where the measure does not support
  /// the entity; `value` is then unspecified.
  /// @{
  virtual bool visit(const PerimeterMsr2d& measure, omReal64& value) const = 0;
  virtual bool visit(const AreaMsr2d& measure, omReal64& value) const = 0;
  virtual bool visit(const MomentsMsr2d& measure, Moments2dO3& value) const = 0;
  virtual bool visit(const HuMomentsMsr2d& measure, HuMoments2dO3& value) const = 0;
  /// @}

  /// Whether the entity's numbers are Cartesian coordinates or polar ones.
  virtual eCoordinateSystem2dType getCoordinateSystem2dType() const = 0;
  /// The family of the entity; those of Ellipse2d and Square2d are not their own, see eEntity2dType.
  virtual eEntity2dType getEntity2dType() const = 0;

 protected:
  BaseGeometryEntity2d() = default;
  BaseGeometryEntity2d(const BaseGeometryEntity2d&) = default;
  BaseGeometryEntity2d(BaseGeometryEntity2d&&) = default;
  BaseGeometryEntity2d& operator=(const BaseGeometryEntity2d&) = default;
  BaseGeometryEntity2d& operator=(BaseGeometryEntity2d&&) = default;
};

}  // namespace ormix::geom
