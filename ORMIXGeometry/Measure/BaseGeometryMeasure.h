#pragma once

#include <ORMIXGeometry/Entity/BaseGeometryEntity.h>
#include <ORMIXGeometry/Enumeration.h>
#include <ORMIXSerialization/Object/VersionedLevel.h>

namespace ormix::geom {

/// How a measure treats the holes of an entity.
enum eHoleMsrPolicy {
  eHMP_ProcessHoles,  ///< adds or subtracts the measure of each hole; each measure says which
  eHMP_IgnoreHoles    ///< measures the exterior only
};

class ORMIX_GEOMETRY_API BaseGeometryMeasure;
}  // namespace ormix::geom

namespace ormix {
/// Texts of eHoleMsrPolicy.
template <>
struct EnumerationNames<geom::eHoleMsrPolicy> {
  static constexpr std::string_view typeName = "eHoleMsrPolicy";  ///< name of the enumeration
  /// Names of the enumerators, in order of their values.
  static constexpr std::array<std::string_view, 2> names{"eHMP_ProcessHoles", "eHMP_IgnoreHoles"};
};

extern template class VersionedLevel<geom::BaseGeometryMeasure, BaseSerializationObject>;
}  // namespace ormix

namespace ormix::geom {

/// Base class of all measures. A measure computes a value from an entity without changing it; its only data is the hole
/// policy. Measuring does not change the measure either, so that several threads may use one at the same time.
class ORMIX_GEOMETRY_API BaseGeometryMeasure : public VersionedLevel<BaseGeometryMeasure, BaseSerializationObject> {
 public:
  static constexpr const char* s_className = "ormix::geom::BaseGeometryMeasure";  ///< registered name

  ~BaseGeometryMeasure() override;

  /// How holes are measured; eHMP_ProcessHoles unless set otherwise.
  /// @{
  eHoleMsrPolicy getHoleMsrPolicy() const { return _holeMsrPolicy; }
  void setHoleMsrPolicy(eHoleMsrPolicy policy) { _holeMsrPolicy = policy; }
  /// @}

  /// Copies the hole policy.
  void copy(const BaseDynamicObject& other) override;
  /// Writes or reads the hole policy under the key "_holeMsrPolicy".
  /// @{
  BoolResult write(BaseOArchive& archive) const override;
  BoolResult read(BaseIArchive& archive) override;
  /// @}

  /// Whether the measure is for entities of the plane or of space.
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
