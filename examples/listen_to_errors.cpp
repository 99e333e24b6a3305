// What the library logs goes to log4cplus under the name "ormix.ORMIXGeometry", and only there: a program that
// configures nothing hears nothing. Failures that return no value are exceptions as well.
#include <ORMIXGeometry/ORMIXGeometry.h>
#include <log4cplus/consoleappender.h>
#include <log4cplus/logger.h>

#include <iostream>

int main() {
  using namespace ormix::geom;
  const Segment2d<double> segment(0, 0, 3, 4);

  const auto measureArea = [&segment] {
    try {
      AreaMsr2d::measure(segment);
      return false;
    } catch (const ORMIXGeometryException& error) {
      std::cout << "caught: " << error.getMessage() << " (" << error.getFile() << ")\n";
      return true;
    }
  };
  const bool silent = measureArea();

  log4cplus::Logger::getInstance(getORMIXGeometryLoggerName())
      .addAppender(log4cplus::SharedAppenderPtr(new log4cplus::ConsoleAppender));
  return silent && measureArea() ? 0 : 1;
}
