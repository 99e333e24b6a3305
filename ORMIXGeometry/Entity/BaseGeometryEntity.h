#pragma once

#include <ORMIXGeometry/Enumeration.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXSerialization/Object/BaseObjectWithSkeleton.h>
#include <ORMIXSerialization/Object/VersionedLevel.h>

namespace ormix::geom {

/// Dimension of the space an object lives in.
enum eCoordinateDimension {
  eCD_2d,  ///< the plane
  eCD_3d   ///< space
};

class ORMIX_GEOMETRY_API BaseGeometryEntity;
}  // namespace ormix::geom

namespace ormix {
/// Texts of eCoordinateDimension.
template <>
struct EnumerationNames<geom::eCoordinateDimension> {
  static constexpr std::string_view typeName = "eCoordinateDimension";  ///< name of the enumeration
  /// Names of the enumerators, in order of their values.
  static constexpr std::array<std::string_view, 2> names{"eCD_2d", "eCD_3d"};
};

extern template class VersionedLevel<geom::BaseGeometryEntity, BaseObjectWithSkeleton>;
}  // namespace ormix

namespace ormix::geom {

/// Base class of all geometric entities; holds no data. Entities are not synchronised: while one thread changes an
/// entity, no other thread may use it.
class ORMIX_GEOMETRY_API BaseGeometryEntity : public VersionedLevel<BaseGeometryEntity, BaseObjectWithSkeleton> {
 public:
  static constexpr const char* s_className = "ormix::geom::BaseGeometryEntity";  ///< registered name

  ~BaseGeometryEntity() override;

  /// Whether the entity belongs to the plane or to space.
  virtual eCoordinateDimension getCoordinateDimension() const = 0;

 protected:
  BaseGeometryEntity() = default;
  BaseGeometryEntity(const BaseGeometryEntity&) = default;
  BaseGeometryEntity(BaseGeometryEntity&&) = default;
  BaseGeometryEntity& operator=(const BaseGeometryEntity&) = default;
  BaseGeometryEntity& operator=(BaseGeometryEntity&&) = default;
};

}  // namespace ormix::geom
