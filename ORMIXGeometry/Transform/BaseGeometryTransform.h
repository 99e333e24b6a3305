#pragma once

#include <ORMIXGeometry/Entity/BaseGeometryEntity.h>

namespace ormix::geom {
class ORMIX_GEOMETRY_API BaseGeometryTransform;
}  // namespace ormix::geom

namespace ormix {
extern template class VersionedLevel<geom::BaseGeometryTransform, BaseSerializationObject>;
}  // namespace ormix

namespace ormix::geom {

/// Root of all transforms of entities; holds no data.
class ORMIX_GEOMETRY_API BaseGeometryTransform : public VersionedLevel<BaseGeometryTransform, BaseSerializationObject> {
 public:
  static constexpr const char* s_className = "ormix::geom::BaseGeometryTransform";

  ~BaseGeometryTransform() override;

  virtual eCoordinateDimension getCoordinateDimension() const = 0;

 protected:
  BaseGeometryTransform() = default;
  BaseGeometryTransform(const BaseGeometryTransform&) = default;
  BaseGeometryTransform(BaseGeometryTransform&&) = default;
  BaseGeometryTransform& operator=(const BaseGeometryTransform&) = default;
  BaseGeometryTransform& operator=(BaseGeometryTransform&&) = default;
};

}  // namespace ormix::geom
