#include <cstdlib>
#include <new>

#include "SampleClasses.h"
#include "support/ArchiveFormats.h"
#include "support/Random.h"

namespace {
/// Largest single piece of memory asked for since it was last set to 0.
std::size_t g_largestPiece = 0;
/// Pieces given until one is refused, negative for never.
int g_piecesLeft = -1;

void* takeMemory(std::size_t size) {
  g_largestPiece = std::max(g_largestPiece, size);
  if (g_piecesLeft >= 0 && --g_piecesLeft < 0) return nullptr;
  return std::malloc(size);
}
}  // namespace

[[gnu::noinline]] void* operator new(std::size_t size) {
  if (void* bytes = takeMemory(size)) return bytes;
  throw std::bad_alloc();
}
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return takeMemory(size); }
[[gnu::noinline]] void operator delete(void* bytes) noexcept { std::free(bytes); }
[[gnu::noinline]] void operator delete(void* bytes, std::size_t) noexcept { std::free(bytes); }

namespace {

using namespace ormix;
using namespace sample;
using namespace support;

template <class Format>
using HostileInput = ArchiveTest<Format>;
TYPED_TEST_SUITE(HostileInput, Formats);

template <class Format>
std::string treeArchive() {
  return archived<Format>([](BaseOArchive& archive) { EXPECT_SUCCESS(writeObject(archive, sampleTree(1))); });
}

/// A stream that cannot say how long it is.
struct SeeklessBuffer : std::stringbuf {
  using std::stringbuf::stringbuf;
  pos_type seekoff(off_type, std::ios_base::seekdir, std::ios_base::openmode) override { return off_type(-1); }
  pos_type seekpos(pos_type, std::ios_base::openmode) override { return off_type(-1); }
};

/// Reads one tree; a failure must come with a message, and an exception be of our own.
template <class Format>
bool readsTree(const std::string& bytes) {
  SeeklessBuffer buffer(bytes);
  std::istream stream(&buffer);
  typename Format::Input archive(stream);
  try {
    const ProcessingResult<SerializationObjectPtr> object = readObject(archive);
    EXPECT_EQ(object.getMessage().empty(), static_cast<bool>(object));
    const BoolResult closed = archive.close();
    EXPECT_EQ(closed.getMessage().empty(), static_cast<bool>(closed));
    return object && closed;
  } catch (const ORMIXSerializationException&) {
    return false;
  }
}

TYPED_TEST(HostileInput, TruncatedAnywhereOrFollowedByAnything) {
  const std::string bytes = treeArchive<TypeParam>();
  ASSERT_TRUE(readsTree<TypeParam>(bytes));
  // The newline behind a JSON text's last bracket may be missing.
  const std::size_t end = bytes.find_last_not_of('\n');
  for (std::size_t size = 0; size < end; ++size) EXPECT_FALSE(readsTree<TypeParam>(bytes.substr(0, size))) << size;
  for (const std::string tail : {"x", "]", "[]", "\xff", "\x9f", "1"}) EXPECT_FALSE(readsTree<TypeParam>(bytes + tail));
  EXPECT_FALSE(readsTree<TypeParam>(bytes + bytes));
}

// Most are refused, some only change a number: neither may do harm.
TYPED_TEST(HostileInput, WithFlippedBitsAndPiecesExchanged) {
  Random random(11);
  const std::string bytes = treeArchive<TypeParam>();
  const auto below = [&random](std::size_t bound) { return std::size_t{random()} % bound; };
  for (int round = 0; round < 20000; ++round) {
    std::string flipped = bytes;
    for (std::size_t flips = below(4) + 1; flips != 0; --flips) {
      char& byte = flipped[below(flipped.size())];
      byte = static_cast<char>(byte ^ (1 << below(8)));
    }
    readsTree<TypeParam>(flipped);
    std::string mixed = bytes;
    const std::size_t size = below(40);
    mixed.replace(below(bytes.size()), below(2) ? size : below(40), bytes.substr(below(bytes.size()), size));
    readsTree<TypeParam>(mixed);
  }
}

TYPED_TEST(HostileInput, NamesClassAndKeyOfAFailedField) {
  for (const char* key : {"flag", "tiny", "single", "_kind", "branches"}) {
    std::string bytes = treeArchive<TypeParam>();
    bytes.replace(bytes.rfind(key), 1, "#");
    std::istringstream stream(bytes);
    typename TypeParam::Input archive(stream);
    const std::string message = readObject(archive).getMessage();
    EXPECT_NE(message.find(std::string("\"") + key + "\" was wanted"), std::string::npos) << message;
    const char* inner = std::string(key) == "_kind" ? "Class sample::Ring: " : "Class sample::Tree: ";
    EXPECT_EQ(message.find(inner), 0u) << message;
    EXPECT_EQ(message.find("Class ", 1), std::string::npos) << message;
  }
}

TYPED_TEST(HostileInput, MemoryThatEndsIsNoFaultOfTheArchive) {
  const std::string bytes = treeArchive<TypeParam>(), expected = describe(sampleTree(1));
  bool wasRefused = true;
  for (int given = 0; wasRefused; ++given) {
    std::istringstream stream(bytes);
    SerializationObjectPtr object;
    std::string otherFailure;
    g_piecesLeft = given;
    try {
      object = load(stream);
    } catch (const std::bad_alloc&) {
    } catch (const std::exception& failure) {
      otherFailure = failure.what();
    }
    wasRefused = g_piecesLeft < 0;
    g_piecesLeft = -1;
    ASSERT_EQ(otherFailure, "") << given;
    ASSERT_TRUE(!object || describe(dynamic_cast<Tree&>(*object)) == expected) << given;
  }
}

/// Zeros without end, or as good as.
struct ZeroBuffer : std::streambuf {
  omUInt64 nbRead = 0;
  std::streamsize xsgetn(char* to, std::streamsize size) override {
    std::memset(to, 0, static_cast<std::size_t>(size));
    nbRead += static_cast<omUInt64>(size);
    return nbRead < (omUInt64(1) << 28) ? size : 0;
  }
  int_type underflow() override {
    static char zero = 0;
    setg(&zero, &zero, &zero + 1);
    return 0;
  }
};

TEST(HostileStream, IsRefusedFromItsFirstBytes) {
  ZeroBuffer buffer;
  std::istream stream(&buffer);
  EXPECT_FAILURE(openArchive(stream)->state(), "it begins neither as CBOR nor as a list in JSON");
  EXPECT_LE(buffer.nbRead, 65536u);
}

std::string repeated(const std::string& piece, std::size_t count) {
  std::string text;
  for (std::size_t at = 0; at < count; ++at) text += piece;
  return text;
}

TYPED_TEST(HostileInput, NestedWithoutEnd) {
  constexpr std::size_t depth = 100000;
  const bool cbor = TypeParam::format == eArchiveFormat::Cbor;
  const std::string bytes = archived<TypeParam>([](BaseOArchive& archive) { archive.writeBool("v", true); });
  const std::string start = bytes.substr(0, bytes.rfind(cbor ? '\xF5' : 't'));
  for (const std::string& nest :
       {cbor ? repeated("\x81", depth) : repeated("[", depth),
        cbor ? repeated("\x9f", depth) : repeated("[", depth) + repeated("]", depth),
        cbor ? repeated("\xa1\x61s", depth) : repeated("{\"s\":", depth),
        cbor ? repeated("\x81\xa1\x61s", depth) : repeated("[{\"s\":", depth),
        cbor ? repeated("\xc1", depth) : repeated("[{\"s\":", depth) + "1" + repeated("}]", depth)}) {
    Reading<TypeParam> reading(start + nest + (cbor ? "" : "}]"));
    std::vector<Vertex> rows;
    EXPECT_FALSE(readItem(reading.archive, "v", rows));
    Reading<TypeParam> sections(start + nest + (cbor ? "" : "}]"));
    BoolResult opened = sections.archive.beginSection("v");
    for (std::size_t level = 0; opened && level < depth; ++level) opened = sections.archive.beginSection("s");
    EXPECT_FALSE(opened);
  }
}

/// Reads entry "v" as one kind of value or another; it must fail without taking memory for what is only declared.
void expectRefused(const std::string& bytes, bool seekable, int kind) {
  std::stringbuf whole(bytes);
  SeeklessBuffer seekless(bytes);
  std::istream stream(seekable ? &whole : &seekless);
  CborIArchive archive(stream);
  std::vector<Vertex> rows;
  std::vector<omInt32> numbers;
  std::string text;
  ASSERT_TRUE(archive.state());
  g_largestPiece = 0;
  BoolResult result;
  if (kind == 0) result = readItem(archive, "v", rows);
  if (kind == 1) result = readItem(archive, "v", numbers);
  if (kind == 2) result = readItem(archive, "v", text);
  if (kind == 3) result = archive.beginSection("v") ? archive.endSection() : archive.state();
  EXPECT_FALSE(result);
  EXPECT_NE(result.getMessage(), "");
  EXPECT_LE(g_largestPiece, 65536u);
}

TEST(HostileCbor, DeclaresMoreThanItHolds) {
  using namespace std::string_literals;
  const std::string bytes = archived<Cbor>([](BaseOArchive& archive) { archive.writeBool("v", true); });
  const std::string start = bytes.substr(0, bytes.rfind('\xF5'));
  // 2^32 - 1, 2^64 - 8 and 2^47 - 8, as the length of a byte string, a text, a list and a map, alone, as a typed array
  // and as one of a shape that fits.
  for (const std::string& length :
       {"\x1a\xff\xff\xff\xff"s, "\x1b\xff\xff\xff\xff\xff\xff\xff\xf8"s, "\x1b\x00\x00\x7f\xff\xff\xff\xff\xf8"s})
    for (const std::string& prefix : {""s, "\xd8\x56"s, "\xd8\x4e"s, "\xd8\x41"s,
                                      "\xd8\x28\x82\x82\x1b\x0f\xff\xff\xff\xff\xff\xff\xff\x02\xd8\x56"s})
      for (const int major : {2, 3, 4, 5}) {
        std::string value = prefix + length;
        value[prefix.size()] = static_cast<char>(value[prefix.size()] | major << 5);
        for (const bool seekable : {true, false})
          for (int kind = 0; kind < 4; ++kind) expectRefused(start + value + "abcdefgh", seekable, kind);
      }
}

}  // namespace
