#pragma once

#include <ORMIXSerialization/Export.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <string>

namespace ormix {

class BaseIArchive;
class BaseOArchive;

/// Writes the version of a class, the first time that the class occurs in the archive: a section under the registered
/// name of the class with one entry "version".
ORMIX_SERIALIZATION_API BoolResult writeClassVersion(BaseOArchive& archive, const std::string& className,
                                                     omUInt32 version);

/// Reads what `writeClassVersion` wrote, the first time that the class occurs in the archive.
/// \param version the newest version that can be read
/// \param oldest  the oldest version that can be read
/// \return failure when the section is missing or the archived version is below `oldest`
/// \throw ORMIXSerializationException when the archived version is above `version`; the error is logged first, and
///        nothing more is read
ORMIX_SERIALIZATION_API BoolResult readClassVersion(BaseIArchive& archive, const std::string& className,
                                                    omUInt32 version, omUInt32 oldest = 0);

}  // namespace ormix
