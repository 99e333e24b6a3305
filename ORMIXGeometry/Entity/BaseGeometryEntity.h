#pragma once

#include <ORMIXGeometry/Enumeration.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXSerialization/Object/BaseObjectWithSkeleton.h>
#include <ORMIXSerialization/Object/VersionedLevel.h>

namespace ormix::geom {

/// Dimension of the space an object lives in.
enum eCoordinateDimension { eCD_2d, eCD_3d };

class ORMIX_GEOMETRY_API BaseGeometryEntity;
}  // namespace ormix::geom

namespace ormix {
template <>
struct EnumerationNames<geom::eCoordinateDimension> {
  static constexpr std::string_view typeName = "eCoordinateDimension";
  static constexpr std::array<std::string_view, 2> names{"eCD_2d", "eCD_3d"};
};

extern template class VersionedLevel<geom::BaseGeometryEntity, BaseObjectWithSkeleton>;
}  // namespace ormix

namespace ormix::geom {

/// Root of all geometric entities. Holds no data; entities are not synchronised: one entity must not be used from two
/// threads while one of them changes it.
class ORMIX_GEOMETRY_API BaseGeometryEntity : public VersionedLevel<BaseGeometryEntity, BaseObjectWithSkeleton> {
 public:
  static constexpr const char* s_className = "ormix::geom::BaseGeometryEntity";

  ~BaseGeometryEntity() override;

  virtual eCoordinateDimension getCoordinateDimension() const = 0;

 protected:
  BaseGeometryEntity() = default;
  BaseGeometryEntity(const BaseGeometryEntity&) = default;
  BaseGeometryEntity(BaseGeometryEntity&&) = default;
  BaseGeometryEntity& operator=(const BaseGeometryEntity&) = default;
  BaseGeometryEntity& operator=(BaseGeometryEntity&&) = default;
};

}  // namespace ormix::geom
