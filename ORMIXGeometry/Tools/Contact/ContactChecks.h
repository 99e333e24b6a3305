#pragma once

#include <ORMIXGeometry/Message/ToolsMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <cmath>

/// \file
/// What contacts of the plane and of space refuse alike; not installed.

namespace ormix::geom::detail {

/// \param what the number is, for the message
/// \throw ORMIXGeometryException, logged, when the number is negative or not finite
inline void requireNotNegative(const char* what, omReal64 number) {
  if (!(number >= 0 && std::isfinite(number)))
    logAndThrow(formatMessage<eToolsMessage>(eToolsMessage::eTM_NotNegative, what, number), __PRETTY_FUNCTION__,
                __FILE__, __LINE__);
}

/// \param isFinite whether all coordinates are
/// \throw ORMIXGeometryException, logged, when they are not
inline void requireFinite(bool isFinite) {
  if (!isFinite)
    logAndThrow(formatMessage<eToolsMessage>(eToolsMessage::eTM_RegionNotFinite), __PRETTY_FUNCTION__, __FILE__,
                __LINE__);
}

}  // namespace ormix::geom::detail
