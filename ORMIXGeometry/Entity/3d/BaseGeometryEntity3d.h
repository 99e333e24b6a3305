#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3dTypes.h>
#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>
#include <ORMIXGeometry/Entity/BaseGeometryEntity.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <vector>

namespace ormix::geom {

class ORMIX_GEOMETRY_API BaseGeometryEntity3d;
/// A spatial entity of any class, owned jointly; may be null.
using GeometryEntity3dPtr = boost::shared_ptr<BaseGeometryEntity3d>;
/// Spatial entities of any classes, in order.
using GeometryEntity3dPtrColl = std::vector<GeometryEntity3dPtr>;

}  // namespace ormix::geom

namespace ormix {
extern template class VersionedLevel<geom::BaseGeometryEntity3d, geom::BaseGeometryEntity>;
}  // namespace ormix

namespace ormix::geom {

/// Root of all spatial entities. Transforms and measures reach the concrete entity through the visits: two virtual
/// calls and no run-time type test. The order of the virtual functions is part of the interface.
class ORMIX_GEOMETRY_API BaseGeometryEntity3d : public VersionedLevel<BaseGeometryEntity3d, BaseGeometryEntity> {
 public:
  static constexpr const char* s_className = "ormix::geom::BaseGeometryEntity3d";  ///< registered name

  ~BaseGeometryEntity3d() override;

  /// Always `eCD_3d`.
  eCoordinateDimension getCoordinateDimension() const override;

  /// Applies a transform. `visitInSitu` changes this entity; false, without a log entry, when the pair of entity and
  /// transform is not supported or the transform fails, and the entity is then unchanged. `visitNonInSitu` returns a
  /// new entity, null in the same cases.
  /// @{
  virtual bool visitInSitu(const AnisotropicScaleTransform3d& transform) = 0;
  virtual GeometryEntity3dPtr visitNonInSitu(const AnisotropicScaleTransform3d& transform) const = 0;
  virtual bool visitInSitu(const HomographyTransform3d& transform) = 0;
  virtual GeometryEntity3dPtr visitNonInSitu(const HomographyTransform3d& transform) const = 0;
  virtual bool visitInSitu(const RigidTransform3d& transform) = 0;
  virtual GeometryEntity3dPtr visitNonInSitu(const RigidTransform3d& transform) const = 0;
  virtual bool visitInSitu(const RotationTransform3d& transform) = 0;
  virtual GeometryEntity3dPtr visitNonInSitu(const RotationTransform3d& transform) const = 0;
  virtual bool visitInSitu(const ScaleTransform3d& transform) = 0;
  virtual GeometryEntity3dPtr visitNonInSitu(const ScaleTransform3d& transform) const = 0;
  virtual bool visitInSitu(const SimilarityTransform3d& transform) = 0;
  virtual GeometryEntity3dPtr visitNonInSitu(const SimilarityTransform3d& transform) const = 0;
  virtual bool visitInSitu(const TranslationTransform3d& transform) = 0;
  virtual GeometryEntity3dPtr visitNonInSitu(const TranslationTransform3d& transform) const = 0;
  virtual bool visitInSitu(const CentroidTransform3d& transform) = 0;
  virtual GeometryEntity3dPtr visitNonInSitu(const CentroidTransform3d& transform) const = 0;
  virtual bool visitInSitu(const ConvexHullTransform3d& transform) = 0;
  virtual GeometryEntity3dPtr visitNonInSitu(const ConvexHullTransform3d& transform) const = 0;
  virtual bool visitInSitu(const EnvelopeTransform3d& transform) = 0;
  virtual GeometryEntity3dPtr visitNonInSitu(const EnvelopeTransform3d& transform) const = 0;
  virtual bool visitInSitu(const MinEnclosingSphereTransform3d& transform) = 0;
  virtual GeometryEntity3dPtr visitNonInSitu(const MinEnclosingSphereTransform3d& transform) const = 0;
  /// @}

  /// Computes a measure of this entity. False, without a log entry, when the measure does not support the entity; the
  /// value is then unspecified.
  /// @{
  virtual bool visit(const AreaMsr3d& measure, omReal64& value) const = 0;
  virtual bool visit(const VolumeMsr3d& measure, omReal64& value) const = 0;
  /// @}

  /// Whether the entity stores Cartesian coordinates, or a distance and two angles.
  virtual eCoordinateSystem3dType getCoordinateSystem3dType() const = 0;
  /// The family, the same for every coordinate type.
  virtual eEntity3dType getEntity3dType() const = 0;

 protected:
  BaseGeometryEntity3d() = default;
  BaseGeometryEntity3d(const BaseGeometryEntity3d&) = default;
  BaseGeometryEntity3d(BaseGeometryEntity3d&&) = default;
  BaseGeometryEntity3d& operator=(const BaseGeometryEntity3d&) = default;
  BaseGeometryEntity3d& operator=(BaseGeometryEntity3d&&) = default;
};

}  // namespace ormix::geom
