// Any text as a JSON archive of whatever classes are registered.

#include "ArchiveTarget.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return fuzz::check<ormix::JsonIArchive>(data, size);
}
