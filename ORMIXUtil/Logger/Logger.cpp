#include <ORMIXUtil/Logger/Logger.h>

#include <log4cplus/hierarchy.h>
#include <log4cplus/logger.h>
#include <log4cplus/nullappender.h>

#include <map>
#include <memory>
#include <mutex>

namespace ormix {

namespace {

/// True when some logger from `logger` up to the root has an appender.
bool hasAppender(log4cplus::Logger logger) {
  for (;;) {
    if (!logger.getAllAppenders().empty()) return true;
    if (!logger.getAdditivity() || logger.getName() == log4cplus::Logger::getRoot().getName()) return false;
    logger = logger.getParent();
  }
}

void attachNullAppenderIfUnconfigured(const log4cplus::Logger& logger) {
  static std::once_flag once;
  std::call_once(once, [&logger] {
    if (hasAppender(logger)) return;
    log4cplus::SharedAppenderPtr silent(new log4cplus::NullAppender);
    getLogger(getBaseLoggerName()).addAppender(silent);
  });
}

}  // namespace

const std::string& getBaseLoggerName() {
  static const std::string name = "ormix";
  return name;
}

log4cplus::Logger& getLogger(const std::string& name) {
  static std::mutex mutex;
  static std::map<std::string, std::unique_ptr<log4cplus::Logger>> loggers;
  const std::lock_guard<std::mutex> lock(mutex);
  std::unique_ptr<log4cplus::Logger>& logger = loggers[name];
  if (!logger) logger = std::make_unique<log4cplus::Logger>(log4cplus::Logger::getInstance(name));
  return *logger;
}

void logMessage(log4cplus::Logger& logger, int level, const std::string& text) {
  attachNullAppenderIfUnconfigured(logger);
  if (logger.isEnabledFor(level)) logger.forcedLog(level, text, __FILE__, __LINE__);
}

}  // namespace ormix
