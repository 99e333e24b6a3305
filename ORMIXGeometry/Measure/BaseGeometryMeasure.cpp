#include <ORMIXGeometry/Measure/BaseGeometryMeasure.h>
#include <ORMIXSerialization/Object/RegisteredObject.ipp>

namespace ormix {
template class VersionedLevel<geom::BaseGeometryMeasure, BaseSerializationObject>;
}  // namespace ormix

namespace ormix::geom {

namespace {
constexpr const char* s_holeMsrPolicyKey = "_holeMsrPolicy";
}  // namespace

BaseGeometryMeasure::~BaseGeometryMeasure() = default;

void BaseGeometryMeasure::copy(const BaseDynamicObject& other) {
  VersionedLevel::copy(other);
  _holeMsrPolicy = static_cast<const BaseGeometryMeasure&>(other)._holeMsrPolicy;
}

BoolResult BaseGeometryMeasure::write(BaseOArchive& archive) const {
  const BoolResult result = VersionedLevel::write(archive);
  if (!result) return result;
  const BoolResult item = writeItem(archive, s_holeMsrPolicyKey, _holeMsrPolicy);
  return item ? item : detail::failedField(getTypeName(), item);
}

BoolResult BaseGeometryMeasure::read(BaseIArchive& archive) {
  const BoolResult result = VersionedLevel::read(archive);
  if (!result) return result;
  const BoolResult item = readItem(archive, s_holeMsrPolicyKey, _holeMsrPolicy);
  return item ? item : detail::failedField(getTypeName(), item);
}

}  // namespace ormix::geom
