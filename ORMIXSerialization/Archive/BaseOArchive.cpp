#include <ORMIXSerialization/Archive/BaseOArchive.h>

namespace ormix {

BaseOArchive::~BaseOArchive() = default;

}  // namespace ormix
