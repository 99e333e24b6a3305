#pragma once

#include <ORMIXUtil/Export.h>

#include <string>

namespace ormix {

/// Version of the family of libraries, "major.minor.patch".
ORMIX_UTIL_API const std::string& getSDKStrVersion();

}  // namespace ormix
