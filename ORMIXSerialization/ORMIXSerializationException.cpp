#include <ORMIXSerialization/ORMIXSerializationException.h>

namespace ormix {

ORMIXSerializationException::~ORMIXSerializationException() = default;

}  // namespace ormix
