#include <ORMIXUtil/Object/BaseDynamicObject.h>

namespace ormix {

BaseDynamicObject::~BaseDynamicObject() = default;

void BaseDynamicObject::initCtorCopy(const BaseDynamicObject& other) { copy(other); }

}  // namespace ormix
