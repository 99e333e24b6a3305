#pragma once

#include <ORMIXGeometry/Entity/BaseGeometryEntity.h>
#include <ORMIXGeometry/Enumeration.h>
#include <ORMIXSerialization/Object/VersionedLevel.h>

namespace ormix::geom {

/// How a measure treats the holes of an entity: combined with the outer boundary, or left out.
enum eHoleMsrPolicy { eHMP_ProcessHoles, eHMP_IgnoreHoles };

class ORMIX_GEOMETRY_API BaseGeometryMeasure;
}  // namespace ormix::geom

namespace ormix {
template <>
struct EnumerationNames<geom::eHoleMsrPolicy> {
  static constexpr std::string_view typeName = "eHoleMsrPolicy";
  static constexpr std::array<std::string_view, 2> names{"eHMP_ProcessHoles", "eHMP_IgnoreHoles"};
};

extern template class VersionedLevel<geom::BaseGeometryMeasure, BaseSerializationObject>;
}  // namespace ormix

namespace ormix::geom {

/// Root of all measures: computes a value from an entity without changing it. Holds one setting, the hole policy.
class ORMIX_GEOMETRY_API BaseGeometryMeasure : public VersionedLevel<BaseGeometryMeasure, BaseSerializationObject> {
 public:
  static constexpr const char* s_className = "ormix::geom::BaseGeometryMeasure";

  ~BaseGeometryMeasure() override;

  eHoleMsrPolicy getHoleMsrPolicy() const { return _holeMsrPolicy; }
  void setHoleMsrPolicy(eHoleMsrPolicy policy) { _holeMsrPolicy = policy; }

  void copy(const BaseDynamicObject& other) override;
  BoolResult write(BaseOArchive& archive) const override;
  BoolResult read(BaseIArchive& archive) override;

  virtual eCoordinateDimension getCoordinateDimension() const = 0;

 protected:
  BaseGeometryMeasure() = default;
  BaseGeometryMeasure(const BaseGeometryMeasure&) = default;
  BaseGeometryMeasure(BaseGeometryMeasure&&) = default;
  BaseGeometryMeasure& operator=(const BaseGeometryMeasure&) = default;
  BaseGeometryMeasure& operator=(BaseGeometryMeasure&&) = default;

 private:
  eHoleMsrPolicy _holeMsrPolicy = eHMP_ProcessHoles;
};

}  // namespace ormix::geom
