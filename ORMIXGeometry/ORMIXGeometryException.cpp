#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/ORMIXGeometryLogger.h>

namespace ormix::geom {

ORMIXGeometryException::~ORMIXGeometryException() = default;

void logAndThrow(const std::string& text, const char* function, const char* file, int line) {
  logMessage(getORMIXGeometryLogger(), s_errorLogLevel, text);
  throw ORMIXGeometryException(text, function, file, line);
}

}  // namespace ormix::geom
