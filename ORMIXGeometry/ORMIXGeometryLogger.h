#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/Logger/Logger.h>
#include <ORMIXUtil/Message/LogMessageManager.h>

#include <string>

namespace ormix::geom {

/// The family's base logger name followed by ".ORMIXGeometry".
ORMIX_GEOMETRY_API const std::string& getORMIXGeometryLoggerName();

/// The library's log4cplus logger.
ORMIX_GEOMETRY_API log4cplus::Logger& getORMIXGeometryLogger();

/// The library's message catalogue, named "ORMIXGeometry".
ORMIX_GEOMETRY_API LogMessageManager& getORMIXGeometryLogMessageManager();

}  // namespace ormix::geom
