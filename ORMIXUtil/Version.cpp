#include <ORMIXUtil/Version.h>

namespace ormix {

const std::string& getSDKStrVersion() {
  static const std::string version = ORMIX_VERSION_STRING;
  return version;
}

}  // namespace ormix
