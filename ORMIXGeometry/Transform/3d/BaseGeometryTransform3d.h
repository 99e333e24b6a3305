#pragma once

#include <ORMIXGeometry/Entity/3d/BaseGeometryEntity3d.h>
#include <ORMIXGeometry/Transform/3d/Transform3dTypes.h>
#include <ORMIXGeometry/Transform/BaseGeometryTransform.h>

namespace ormix::geom {

class ORMIX_GEOMETRY_API BaseGeometryTransform3d;
using GeometryTransform3dPtr = boost::shared_ptr<BaseGeometryTransform3d>;

}  // namespace ormix::geom

namespace ormix {
extern template class VersionedLevel<geom::BaseGeometryTransform3d, geom::BaseGeometryTransform>;
}  // namespace ormix

namespace ormix::geom {

/// Root of the transforms of spatial entities.
class ORMIX_GEOMETRY_API BaseGeometryTransform3d
    : public VersionedLevel<BaseGeometryTransform3d, BaseGeometryTransform> {
 public:
  static constexpr const char* s_className = "ormix::geom::BaseGeometryTransform3d";

  ~BaseGeometryTransform3d() override;

  eCoordinateDimension getCoordinateDimension() const override;
  virtual eTransform3dType getTransform3dType() const = 0;

  /// Changes the entity in place. A failed result, the entity untouched, where the entity is not supported or an image
  /// is not defined.
  virtual BoolResult applyInSitu(BaseGeometryEntity3d& entity) const = 0;
  /// The image as a new entity; empty in the same cases.
  virtual GeometryEntity3dPtr apply(const BaseGeometryEntity3d& entity) const = 0;

  /// \name The same for the pointee; a null pointer fails too.
  /// @{
  BoolResult applyInSitu(const GeometryEntity3dPtr& entity) const;
  GeometryEntity3dPtr apply(const boost::shared_ptr<const BaseGeometryEntity3d>& entity) const;
  /// @}

 protected:
  BaseGeometryTransform3d() = default;
  BaseGeometryTransform3d(const BaseGeometryTransform3d&) = default;
  BaseGeometryTransform3d(BaseGeometryTransform3d&&) = default;
  BaseGeometryTransform3d& operator=(const BaseGeometryTransform3d&) = default;
  BaseGeometryTransform3d& operator=(BaseGeometryTransform3d&&) = default;
};

}  // namespace ormix::geom
