#pragma once

#include <ORMIXUtil/Enumeration.h>

namespace ormix::geom {

// Found by argument-dependent look-up for the enumerations of this namespace: printing one gives its name.
using ormix::toString;
using ormix::operator<<;

}  // namespace ormix::geom
