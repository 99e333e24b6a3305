#pragma once

#include <ORMIXSerialization/Export.h>
#include <ORMIXUtil/Exception/BaseException.h>

namespace ormix {

/// Thrown by `read` functions when an archive was written by a newer version of a class, and by `load` and `loadAll`
/// for every failure.
class ORMIX_SERIALIZATION_API ORMIXSerializationException : public BaseException {
 public:
  using BaseException::BaseException;
  ~ORMIXSerializationException() override;
};

}  // namespace ormix
