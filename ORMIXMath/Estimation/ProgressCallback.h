#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <functional>

namespace ormix {

/// Called repeatedly during a long operation with the completed fraction, from 0 to 1 and never decreasing. Returns
/// true to continue, false to stop the operation. An empty function is not called.
using ProgressCallback = std::function<bool(omReal64 fraction)>;

}  // namespace ormix
