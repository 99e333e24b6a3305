#pragma once

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Transform/2d/Transform2dTypes.h>
#include <ORMIXGeometry/Transform/BaseGeometryTransform.h>

namespace ormix::geom {

class ORMIX_GEOMETRY_API BaseGeometryTransform2d;
using GeometryTransform2dPtr = boost::shared_ptr<BaseGeometryTransform2d>;

}  // namespace ormix::geom

namespace ormix {
extern template class VersionedLevel<geom::BaseGeometryTransform2d, geom::BaseGeometryTransform>;
}  // namespace ormix

namespace ormix::geom {

/// Root of the transforms of planar entities.
class ORMIX_GEOMETRY_API BaseGeometryTransform2d
    : public VersionedLevel<BaseGeometryTransform2d, BaseGeometryTransform> {
 public:
  static constexpr const char* s_className = "ormix::geom::BaseGeometryTransform2d";

  ~BaseGeometryTransform2d() override;

  eCoordinateDimension getCoordinateDimension() const override;
  virtual eTransform2dType getTransform2dType() const = 0;

  /// Changes the entity in place. A failed result, the entity untouched, where the entity is not supported or an image
  /// is not defined.
  virtual BoolResult applyInSitu(BaseGeometryEntity2d& entity) const = 0;
  /// The image as a new entity; empty in the same cases.
  virtual GeometryEntity2dPtr apply(const BaseGeometryEntity2d& entity) const = 0;

  /// \name The same for the pointee; a null pointer fails too.
  /// @{
  BoolResult applyInSitu(const GeometryEntity2dPtr& entity) const;
  GeometryEntity2dPtr apply(const boost::shared_ptr<const BaseGeometryEntity2d>& entity) const;
  /// @}

 protected:
  BaseGeometryTransform2d() = default;
  BaseGeometryTransform2d(const BaseGeometryTransform2d&) = default;
  BaseGeometryTransform2d(BaseGeometryTransform2d&&) = default;
  BaseGeometryTransform2d& operator=(const BaseGeometryTransform2d&) = default;
  BaseGeometryTransform2d& operator=(BaseGeometryTransform2d&&) = default;
};

}  // namespace ormix::geom
