#pragma once

#include <ORMIXUtil/ProcessingResult.h>

namespace ormix {

class BaseIArchive;
class BaseOArchive;

/// Writes an archive's first entry: the section "ormix-archive" with the format's "version" and the "writer".
BoolResult writeArchiveHeader(BaseOArchive& archive);

/// Reads what `writeArchiveHeader` wrote; fails on another format and on a newer version of this one.
BoolResult readArchiveHeader(BaseIArchive& archive);

}  // namespace ormix
