#include <ORMIXSerialization/Archive/ClassVersionRegistry.h>

namespace ormix {

bool ClassVersionRegistry::isClassVersionRegistred(const std::string& className) const {
  return _versions.find(className) != _versions.end();
}

void ClassVersionRegistry::registerClassVersion(const std::string& className, omUInt32 version) {
  _versions[className] = version;
}

omUInt32 ClassVersionRegistry::getRegisterClassVersion(const std::string& className) const {
  const auto found = _versions.find(className);
  return found == _versions.end() ? 0 : found->second;
}

}  // namespace ormix
