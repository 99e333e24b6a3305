#include <ORMIXSerialization/Object/BaseObjectWithSkeleton.h>

namespace ormix {

BaseObjectWithSkeleton::~BaseObjectWithSkeleton() = default;

}  // namespace ormix
