#pragma once

#include <ORMIXSerialization/Export.h>
#include <ORMIXUtil/Logger/Logger.h>
#include <ORMIXUtil/Message/LogMessageManager.h>

#include <string>

namespace ormix {

/// The base logger name of the libraries followed by ".ORMIXSerialization".
ORMIX_SERIALIZATION_API const std::string& getORMIXSerializationLoggerName();

/// The library's log4cplus logger; its errors are logged at level 40000.
ORMIX_SERIALIZATION_API log4cplus::Logger& getORMIXSerializationLogger();

/// The library's message catalogue, registered as "ORMIXSerialization".
ORMIX_SERIALIZATION_API LogMessageManager& getORMIXSerializationLogMessageManager();

}  // namespace ormix
