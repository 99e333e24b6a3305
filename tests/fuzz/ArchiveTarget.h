#pragma once

// What the archive targets share: whatever loads must come back the same after writing and reading it again.

#include <ORMIXSerialization/ORMIXSerialization.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

namespace fuzz {

[[noreturn]] inline void disagree(const char* what, const std::string& message) {
  std::fprintf(stderr, "%s: %s\n", what, message.c_str());
  std::abort();
}

/// All objects of an archive; false when it is refused, which must come with a message.
template <class Archive>
bool readAll(const std::string& bytes, ormix::SerializationObjectPtrColl& objects) {
  std::istringstream stream(bytes);
  Archive archive(stream);
  try {
    while (archive.nextKey()) {
      const auto object = ormix::readObject(archive);
      if (!object && object.getMessage().empty()) disagree("refused without a message", bytes);
      if (!object) return false;
      objects.push_back(object.getResult());
    }
  } catch (const ormix::BaseException& exception) {
    if (exception.getMessage().empty()) disagree("thrown without a message", bytes);
    return false;
  }
  return static_cast<bool>(archive.close());
}

inline std::string writeAll(const ormix::SerializationObjectPtrColl& objects, ormix::eArchiveFormat format) {
  std::ostringstream stream;
  const ormix::BoolResult saved = ormix::saveAll(stream, objects, format);
  if (!saved) disagree("what was read cannot be written", saved.getMessage());
  return stream.str();
}

template <class Archive>
void checkAgain(const ormix::SerializationObjectPtrColl& objects, ormix::eArchiveFormat format) {
  const std::string once = writeAll(objects, format);
  ormix::SerializationObjectPtrColl read;
  if (!readAll<Archive>(once, read)) disagree("what was written cannot be read", once);
  if (writeAll(read, format) != once) disagree("what was read again differs", once);
}

/// The body of a target: the bytes are an archive of this kind.
template <class Archive>
int check(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  ormix::SerializationObjectPtrColl objects;
  if (!readAll<Archive>(bytes, objects)) return 0;
  checkAgain<ormix::CborIArchive>(objects, ormix::eArchiveFormat::Cbor);
  checkAgain<ormix::JsonIArchive>(objects, ormix::eArchiveFormat::Json);
  return 0;
}

}  // namespace fuzz
