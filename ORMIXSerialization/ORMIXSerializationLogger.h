#pragma once

#include <ORMIXSerialization/Export.h>
#include <ORMIXUtil/Logger/Logger.h>
#include <ORMIXUtil/Message/LogMessageManager.h>

#include <string>

namespace ormix {

/// The family's base logger name followed by ".ORMIXSerialization".
ORMIX_SERIALIZATION_API const std::string& getORMIXSerializationLoggerName();

/// The library's log4cplus logger.
ORMIX_SERIALIZATION_API log4cplus::Logger& getORMIXSerializationLogger();

/// The library's message catalogue, named "ORMIXSerialization".
ORMIX_SERIALIZATION_API LogMessageManager& getORMIXSerializationLogMessageManager();

}  // namespace ormix
