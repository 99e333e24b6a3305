#pragma once

#include <ORMIXSerialization/Export.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <string>

namespace ormix {

class BaseIArchive;
class BaseOArchive;

/// States a class's version in the archive, once an archive: a section named by the class that holds "version".
ORMIX_SERIALIZATION_API BoolResult writeClassVersion(BaseOArchive& archive, const std::string& className,
                                                     omUInt32 version);

/// Reads what `writeClassVersion` wrote, unless the archive knows the class already. A version below `oldest` is a
/// failed result. \throw ORMIXSerializationException when the archived version is newer than `version`; it is logged
/// first, and nothing
///        more is read
ORMIX_SERIALIZATION_API BoolResult readClassVersion(BaseIArchive& archive, const std::string& className,
                                                    omUInt32 version, omUInt32 oldest = 0);

}  // namespace ormix
