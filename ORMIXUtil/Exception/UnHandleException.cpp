#include <ORMIXUtil/Exception/UnHandleException.h>

namespace ormix {

UnHandleException::~UnHandleException() = default;

}  // namespace ormix
