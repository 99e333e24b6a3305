#include <fstream>
#include <optional>

#include "SampleClasses.h"
#include "support/ArchiveFormats.h"
#include "support/Checks.h"

namespace {

using namespace ormix;
using namespace sample;
using namespace support;

template <class Format>
using Streams = ArchiveTest<Format>;
TYPED_TEST_SUITE(Streams, Formats);

/// Takes `room` bytes and no more, as a disk that fills up.
struct SmallDisk : std::streambuf {
  std::size_t room;
  explicit SmallDisk(std::size_t bytes) : room(bytes) {}
  std::streamsize xsputn(const char*, std::streamsize size) override {
    const auto taken = std::min(room, static_cast<std::size_t>(size));
    room -= taken;
    return static_cast<std::streamsize>(taken);
  }
  int_type overflow(int_type c) override { return room-- == 0 ? (room = 0, traits_type::eof()) : c; }
};

/// Fails by an exception of its own.
struct ThrowingBuffer : std::streambuf {
  std::streamsize xsputn(const char*, std::streamsize) override { throw std::runtime_error("no"); }
  std::streamsize xsgetn(char*, std::streamsize) override { throw std::runtime_error("no"); }
};

/// Gives one byte a call and cannot seek, as a slow pipe.
struct DripBuffer : std::streambuf {
  std::string bytes;
  std::size_t at = 0;
  explicit DripBuffer(std::string all) : bytes(std::move(all)) {}
  int_type underflow() override {
    if (at == bytes.size()) return traits_type::eof();
    setg(&bytes[at], &bytes[at], &bytes[at] + 1);
    ++at;
    return traits_type::to_int_type(*gptr());
  }
};

TYPED_TEST(Streams, LocalesHaveNoInfluence) {
  const auto write = [](BaseOArchive& archive) { EXPECT_SUCCESS(writeObject(archive, sampleTree(1))); };
  const std::string classic = archived<TypeParam>(write);
  std::optional<CommaLocale> locale(std::in_place);
  const std::string comma = archived<TypeParam>(write);
  std::istringstream stream(comma);
  const SerializationObjectPtr object = load(stream);
  locale.reset();
  EXPECT_EQ(comma, classic);
  ASSERT_TRUE(object);
  EXPECT_EQ(describe(dynamic_cast<Tree&>(*object)), describe(sampleTree(1)));
}

TYPED_TEST(Streams, NeedNoSeeking) {
  Ring ring;
  for (int at = 0; at < 20000; ++at) ring.pointColl.push_back({at * 0.1, -at * 0.3});
  const std::string bytes = archived<TypeParam>([&](BaseOArchive& archive) { writeObject(archive, ring); });
  DripBuffer drip(bytes);
  std::istream stream(&drip);
  const SerializationObjectPtr object = load(stream);
  EXPECT_EQ(dynamic_cast<Ring&>(*object).pointColl, ring.pointColl);
}

TYPED_TEST(Streams, AFullDiskShowsInClose) {
  Ring ring;
  ring.pointColl.resize(20000);
  const std::string bytes = archived<TypeParam>([&](BaseOArchive& archive) { writeObject(archive, ring); });
  for (const std::size_t room : {std::size_t{0}, std::size_t{10}, bytes.size() / 2, bytes.size() - 1}) {
    SmallDisk disk(room);
    std::ostream stream(&disk);
    typename TypeParam::Output archive(stream);
    writeObject(archive, ring);
    EXPECT_FAILURE(archive.close(), "cannot be written");
    EXPECT_FAILURE(archive.close(), "cannot be written");
  }
  std::ofstream full("/dev/full");
  if (full) EXPECT_FAILURE(save(full, Disc({1, 2}, 3), TypeParam::format), "cannot be written");
}

TYPED_TEST(Streams, ThatThrowOrAreNotOpenAreFailures) {
  ThrowingBuffer buffer;
  std::ostream output(&buffer);
  output.exceptions(std::ios::badbit | std::ios::failbit);
  typename TypeParam::Output writing(output);
  EXPECT_FAILURE(writing.close(), "cannot be written");
  std::istream input(&buffer);
  input.exceptions(std::ios::badbit | std::ios::failbit | std::ios::eofbit);
  EXPECT_FAILURE(typename TypeParam::Input(input).state(), "cannot be read");
  // The end of a stream is nothing exceptional, whatever its owner has asked for.
  std::istringstream whole(archived<TypeParam>([](BaseOArchive& archive) { archive.writeBool("v", true); }));
  whole.exceptions(std::ios::badbit | std::ios::failbit | std::ios::eofbit);
  typename TypeParam::Input reading(whole);
  bool flag = false;
  EXPECT_SUCCESS(readItem(reading, "v", flag));
  EXPECT_SUCCESS(reading.close());
  std::ofstream closed;
  EXPECT_FAILURE(typename TypeParam::Output(closed).close(), "cannot be written");
  std::ifstream none;
  EXPECT_FALSE(typename TypeParam::Input(none).state());
}

}  // namespace
