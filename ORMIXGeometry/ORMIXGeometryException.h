#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/Exception/BaseException.h>

namespace ormix::geom {

/// Thrown by entry points that return a value and cannot: a measure, a conversion, a collection that failed.
class ORMIX_GEOMETRY_API ORMIXGeometryException : public BaseException {
 public:
  using BaseException::BaseException;
  ~ORMIXGeometryException() override;
};

/// Logs the text at error level on the library's logger, then throws it.
/// \param function,file,line the place that reports: pass `__PRETTY_FUNCTION__, __FILE__, __LINE__`
[[noreturn]] ORMIX_GEOMETRY_API void logAndThrow(const std::string& text, const char* function, const char* file,
                                                 int line);

}  // namespace ormix::geom
