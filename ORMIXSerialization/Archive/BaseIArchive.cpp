#include <ORMIXSerialization/Archive/BaseIArchive.h>

namespace ormix {

BaseIArchive::~BaseIArchive() = default;

}  // namespace ormix
