#include <ORMIXSerialization/Archive/BaseIArchive.h>

namespace ormix {

BaseIArchive::~BaseIArchive() = default;

const std::string* BaseIArchive::peekKey() {
  _nextKey = nextKey();
  return _nextKey ? &*_nextKey : nullptr;
}

}  // namespace ormix
