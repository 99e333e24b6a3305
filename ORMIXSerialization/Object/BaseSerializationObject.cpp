#include <ORMIXSerialization/Object/BaseSerializationObject.h>

namespace ormix {

BaseSerializationObject::~BaseSerializationObject() = default;

void BaseSerializationObject::copy(const BaseDynamicObject&) {}

BoolResult BaseSerializationObject::write(BaseOArchive&) const { return {}; }

BoolResult BaseSerializationObject::read(BaseIArchive&) { return {}; }

}  // namespace ormix
