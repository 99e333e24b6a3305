#pragma once

#include <ORMIXUtil/Export.h>

#include <string>

namespace log4cplus {
class Logger;
}

namespace ormix {

/// \name Levels of log4cplus, by value, so that its headers stay out of ours.
/// @{
inline constexpr int s_warnLogLevel = 30000;   ///< something was corrected or left out
inline constexpr int s_errorLogLevel = 40000;  ///< a request failed
/// @}

/// Name of the logger that all loggers of the family descend from.
ORMIX_UTIL_API const std::string& getBaseLoggerName();

/// The log4cplus logger with this name, the same object at every call, kept until the process ends.
ORMIX_UTIL_API log4cplus::Logger& getLogger(const std::string& name);

/// Logs a text at a level. An application that has configured no appender anywhere above the logger hears nothing: the
/// first call gives the family's base logger a null appender, so that log4cplus does not complain on stderr. The
/// application's own configuration is never touched.
ORMIX_UTIL_API void logMessage(log4cplus::Logger& logger, int level, const std::string& text);

}  // namespace ormix
