#pragma once

// Both spellings of an archive, for tests that hold for either.

#include <ORMIXSerialization/ORMIXSerialization.h>

#include "support/Checks.h"

namespace support {

struct Cbor {
  using Output = ormix::CborOArchive;
  using Input = ormix::CborIArchive;
  static constexpr ormix::eArchiveFormat format = ormix::eArchiveFormat::Cbor;
};
struct Json {
  using Output = ormix::JsonOArchive;
  using Input = ormix::JsonIArchive;
  static constexpr ormix::eArchiveFormat format = ormix::eArchiveFormat::Json;
};
using Formats = ::testing::Types<Cbor, Json>;

/// Expectations on a result, whose message they show.
#define EXPECT_SUCCESS(expression)                   \
  do {                                               \
    const ormix::BoolResult outcome_ = (expression); \
    EXPECT_TRUE(outcome_) << outcome_.getMessage();  \
    EXPECT_EQ(outcome_.getMessage(), "");            \
  } while (false)
#define EXPECT_FAILURE(expression, part)                                                     \
  do {                                                                                       \
    const ormix::BoolResult outcome_ = (expression);                                         \
    EXPECT_FALSE(outcome_);                                                                  \
    EXPECT_NE(outcome_.getMessage().find(part), std::string::npos) << outcome_.getMessage(); \
  } while (false)

/// The bytes of an archive that `write` fills.
template <class Format>
std::string archived(const std::function<void(ormix::BaseOArchive&)>& write) {
  std::ostringstream stream;
  typename Format::Output archive(stream);
  write(archive);
  EXPECT_SUCCESS(archive.close());
  return stream.str();
}

/// An archive over bytes in memory.
template <class Format>
struct Reading {
  std::istringstream stream;
  typename Format::Input archive;
  explicit Reading(const std::string& bytes) : stream(bytes), archive(stream) {}
  /// Also of a temporary, until the end of the statement.
  typename Format::Input& get() { return archive; }
};

/// The object's archive.
template <class Format>
std::string archived(const ormix::BaseSerializationObject& object) {
  return archived<Format>([&object](ormix::BaseOArchive& archive) { EXPECT_SUCCESS(object.write(archive)); });
}

/// Reads the object that stands first in an archive.
template <class Format>
ormix::BoolResult readInto(const std::string& bytes, ormix::BaseSerializationObject& object) {
  return object.read(Reading<Format>(bytes).get());
}

/// Reads the only entry of an archive, "v".
template <class Format, class V>
ormix::BoolResult readValue(const std::string& bytes, V& value) {
  Reading<Format> reading(bytes);
  const ormix::BoolResult result = readItem(reading.archive, "v", value);
  return result ? reading.archive.close() : result;
}

template <class Format>
struct ArchiveTest : ::testing::Test {};

}  // namespace support
