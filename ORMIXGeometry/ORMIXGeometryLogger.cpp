#include <ORMIXGeometry/ORMIXGeometryLogger.h>

namespace ormix::geom {

const std::string& getORMIXGeometryLoggerName() {
  static const std::string name = getBaseLoggerName() + ".ORMIXGeometry";
  return name;
}

log4cplus::Logger& getORMIXGeometryLogger() {
  static log4cplus::Logger& logger = getLogger(getORMIXGeometryLoggerName());
  return logger;
}

LogMessageManager& getORMIXGeometryLogMessageManager() {
  static LogMessageManager& manager = LogMessageManager::getInstance("ORMIXGeometry");
  return manager;
}

}  // namespace ormix::geom
