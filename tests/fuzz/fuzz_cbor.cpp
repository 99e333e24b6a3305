// Any bytes as a CBOR archive of whatever classes are registered.

#include "ArchiveTarget.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return fuzz::check<ormix::CborIArchive>(data, size);
}
