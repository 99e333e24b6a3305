#pragma once

#include <ORMIXUtil/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

namespace ormix {

/// A number that is drawn once a process. Hashes of data that come from outside begin with it, so that nobody can make
/// data of which all hashes are equal, which would take a table quadratic time. No result may depend on it.
ORMIX_UTIL_API omUInt64 hashSecret() noexcept;

}  // namespace ormix
