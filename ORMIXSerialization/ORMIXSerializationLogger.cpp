#include <ORMIXSerialization/ORMIXSerializationLogger.h>

namespace ormix {

const std::string& getORMIXSerializationLoggerName() {
  static const std::string name = getBaseLoggerName() + ".ORMIXSerialization";
  return name;
}

log4cplus::Logger& getORMIXSerializationLogger() {
  static log4cplus::Logger& logger = getLogger(getORMIXSerializationLoggerName());
  return logger;
}

LogMessageManager& getORMIXSerializationLogMessageManager() {
  static LogMessageManager& manager = LogMessageManager::getInstance("ORMIXSerialization");
  return manager;
}

}  // namespace ormix
