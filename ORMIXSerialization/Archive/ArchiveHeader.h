#pragma once

#include <ORMIXUtil/ProcessingResult.h>

namespace ormix {

class BaseIArchive;
class BaseOArchive;

/// Writes the first entry of an archive: the section "ormix-archive" with the entries "version" (of
/// the format) and "writer" (the name and version of this library).
BoolResult writeArchiveHeader(BaseOArchive& archive);

/// Reads what `writeArchiveHeader` wrote. Fails when the data are not such an archive and when the format version is
/// newer than this library.
BoolResult readArchiveHeader(BaseIArchive& archive);

}  // namespace ormix
