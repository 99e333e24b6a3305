#include "SampleClasses.h"
#include "support/ArchiveFormats.h"

namespace {

using namespace ormix;
using namespace sample;
using namespace support;

template <class Format>
using Entries = ArchiveTest<Format>;
TYPED_TEST_SUITE(Entries, Formats);

/// An archive with a section of two reals and an integer behind it.
template <class Format>
std::string pointArchive() {
  return archived<Format>([](BaseOArchive& archive) {
    writeItem(archive, "_centerPt", Vertex{1, 2.5});
    writeItem(archive, "count", 3);
  });
}

TYPED_TEST(Entries, AKeyThatIsNotThereNamesBoth) {
  Reading<TypeParam> reading(pointArchive<TypeParam>());
  omInt64 value = 7;
  EXPECT_FAILURE(reading.archive.readInteger("number", value), "\"number\" was wanted, \"_centerPt\" was found");
  EXPECT_EQ(value, 7);
  // The failure stays.
  EXPECT_FAILURE(reading.archive.beginSection("_centerPt"), "\"number\" was wanted");
  EXPECT_FAILURE(reading.archive.state(), "\"number\" was wanted");
  EXPECT_FAILURE(reading.archive.close(), "\"number\" was wanted");
  EXPECT_EQ(reading.archive.nextKey(), std::nullopt);
}

TYPED_TEST(Entries, MissingAndUnreadOnesAreNamed) {
  const std::string bytes = pointArchive<TypeParam>();
  Reading<TypeParam> section(bytes);
  omReal64 value = 0;
  EXPECT_SUCCESS(section.archive.beginSection("_centerPt"));
  EXPECT_SUCCESS(section.archive.readReal("x", value));
  EXPECT_SUCCESS(section.archive.readReal("y", value));
  EXPECT_EQ(section.archive.nextKey(), std::nullopt);
  EXPECT_FAILURE(section.archive.readReal("z", value), "\"z\" was wanted");
  Reading<TypeParam> open(bytes), unread(bytes), whole(bytes);
  EXPECT_SUCCESS(open.archive.beginSection("_centerPt"));
  EXPECT_FAILURE(open.archive.close(), "1 sections open");
  EXPECT_SUCCESS(unread.archive.beginSection("_centerPt"));
  EXPECT_FAILURE(unread.archive.endSection(), "\"x\"");
  Vertex vertex;
  EXPECT_SUCCESS(readItem(whole.archive, "_centerPt", vertex));
  EXPECT_FAILURE(whole.archive.close(), "\"count\"");
  EXPECT_FAILURE(Reading<TypeParam>(bytes).archive.endSection(), "No section is open");
}

/// The entry is not read as such a value, which stays as it was.
template <class Format, class V>
void expectRefused(const std::string& bytes, const char* key, const V& old, const char* why) {
  V value = old;
  EXPECT_FAILURE(readItem(Reading<Format>(bytes).get(), key, value), why);
  EXPECT_TRUE(value == old) << why;
}

TYPED_TEST(Entries, AnotherKindOfValueIsRefused) {
  const std::string bytes = pointArchive<TypeParam>();
  expectRefused<TypeParam>(bytes, "_centerPt", true, "a bool was wanted, a list was found");
  expectRefused<TypeParam>(bytes, "_centerPt", std::string("old"), "a text was wanted, a list was found");
  expectRefused<TypeParam>(bytes, "_centerPt", omUInt64(7), "integer was wanted, a list");
  expectRefused<TypeParam>(bytes, "_centerPt", omReal64(7), "a real was wanted, a list was found");
  expectRefused<TypeParam>(bytes, "_centerPt", std::vector<omReal64>{7}, "\"_centerPt\"");
  const std::string flagged = archived<TypeParam>([](BaseOArchive& archive) { archive.writeBool("flag", true); });
  expectRefused<TypeParam>(flagged, "flag", std::vector<omReal64>{7}, "a bool was found");
  EXPECT_FAILURE(Reading<TypeParam>(flagged).archive.beginSection("flag"), "a section was wanted, a bool was found");
}

TYPED_TEST(Entries, IntegersOutOfRangeAndUnknownEnumeratorsAreRefused) {
  const std::string bytes = archived<TypeParam>([](BaseOArchive& archive) { archive.writeInteger("n", -129); });
  const std::string huge = archived<TypeParam>([](BaseOArchive& archive) { archive.writeUnsigned("n", ~omUInt64{0}); });
  const std::string text = archived<TypeParam>([](BaseOArchive& archive) { archive.writeText("n", "eK_Middle"); });
  expectRefused<TypeParam>(bytes, "n", omInt8(7), "a signed 8-bit integer");
  expectRefused<TypeParam>(bytes, "n", omUInt64(7), "unsigned 64-bit integer");
  expectRefused<TypeParam>(huge, "n", omInt64(7), "signed 64-bit integer");
  expectRefused<TypeParam>(text, "n", eK_Inner, "\"eK_Middle\" is not an enumerator of eKind");
  std::ostringstream stream;
  typename TypeParam::Output archive(stream);
  EXPECT_FAILURE(writeItem(archive, "_kind", static_cast<eKind>(2)), "\"2\" is not an enumerator of eKind");
}

TYPED_TEST(Entries, TextsAreUtf8) {
  for (const std::string bad :
       {"\x80", "\xC0\x80", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xC3", "a\xFF"}) {
    std::ostringstream stream;
    typename TypeParam::Output archive(stream);
    EXPECT_FAILURE(archive.writeText("text", bad), "\"text\": the text is not valid UTF-8");
    EXPECT_FAILURE(archive.close(), "not valid UTF-8");
    std::ostringstream other;
    EXPECT_FAILURE(typename TypeParam::Output(other).writeBool(bad, true), "not valid UTF-8");
    // The same in the bytes of an archive that was good.
    std::string bytes =
        archived<TypeParam>([&](BaseOArchive& good) { good.writeText("text", std::string(bad.size(), '#')); });
    bytes.replace(bytes.find('#'), bad.size(), bad);
    Reading<TypeParam> reading(bytes);
    std::string text = "old";
    EXPECT_FALSE(reading.archive.readText("text", text));
    EXPECT_EQ(text, "old");
  }
}

TYPED_TEST(Entries, SectionsNestThousandLevels) {
  std::ostringstream stream;
  typename TypeParam::Output output(stream);
  for (int depth = 0; depth < 1000; ++depth) EXPECT_SUCCESS(output.beginSection("s"));
  for (int depth = 0; depth < 1000; ++depth) EXPECT_SUCCESS(output.endSection());
  EXPECT_SUCCESS(output.close());
  Reading<TypeParam> reading(stream.str());
  for (int depth = 0; depth < 1000; ++depth) EXPECT_SUCCESS(reading.archive.beginSection("s"));
  for (int depth = 0; depth < 1000; ++depth) EXPECT_SUCCESS(reading.archive.endSection());
  EXPECT_SUCCESS(reading.archive.close());
  typename TypeParam::Output refused(stream);
  for (int depth = 0; depth < 1000; ++depth) EXPECT_SUCCESS(refused.beginSection("s"));
  EXPECT_FAILURE(refused.beginSection("deepest"), "\"deepest\": sections are nested deeper than 1000 levels");
}

TYPED_TEST(Entries, WritingIsClosedOnceWithoutOpenSections) {
  std::ostringstream stream, other;
  typename TypeParam::Output archive(stream), open(other);
  EXPECT_SUCCESS(archive.close());
  EXPECT_SUCCESS(archive.close());
  const std::string whole = stream.str();
  EXPECT_FAILURE(archive.writeBool("late", true), "closed");
  EXPECT_FAILURE(archive.close(), "closed");
  EXPECT_EQ(stream.str(), whole);
  open.beginSection("s");
  EXPECT_FAILURE(open.close(), "1 sections open");
  EXPECT_FAILURE(typename TypeParam::Output(other).endSection(), "No section is open");
}

TYPED_TEST(Entries, ASectionManagerClosesItsSection) {
  const std::string bytes = archived<TypeParam>([](BaseOArchive& archive) {
    { ArchiveSectionManager section(archive, "first"); }
    ArchiveSectionManager second(archive, "second");
    EXPECT_SUCCESS(second.getState());
    EXPECT_SUCCESS(second.close());
    EXPECT_SUCCESS(second.close());
  });
  Reading<TypeParam> reading(bytes);
  { ArchiveSectionManager section(reading.archive, "first"); }
  EXPECT_SUCCESS(ArchiveSectionManager(reading.archive, "second").close());
  ArchiveSectionManager third(reading.archive, "third");
  EXPECT_FAILURE(third.getState(), "\"third\" was wanted");
  EXPECT_FAILURE(third.close(), "\"third\" was wanted");
}

}  // namespace
