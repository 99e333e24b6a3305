#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <functional>

namespace ormix {

/// Told from time to time how far a long operation is, from 0 to 1 and never less than before; answers false to stop
/// it. An empty one asks for nothing.
using ProgressCallback = std::function<bool(omReal64 fraction)>;

}  // namespace ormix
