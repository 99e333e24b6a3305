#pragma once

#include <ORMIXUtil/Exception/BaseException.h>

namespace ormix {

/// Thrown where a request names something the family does not handle, for example an unknown class name.
class ORMIX_UTIL_API UnHandleException : public BaseException {
 public:
  using BaseException::BaseException;
  ~UnHandleException() override;
};

}  // namespace ormix
