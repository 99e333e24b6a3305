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

TYPED_TEST(Entries, AnotherKindOfValueIsRefused) {
  const std::string bytes = pointArchive<TypeParam>();
  bool flag = true;
  std::string text = "old";
  omUInt64 number = 7;
  omReal64 real = 7;
  std::vector<omReal64> numbers{7};
  EXPECT_FAILURE(readItem(Reading<TypeParam>(bytes).get(), "_centerPt", flag), "a bool was wanted, a list was found");
  EXPECT_FAILURE(readItem(Reading<TypeParam>(bytes).get(), "_centerPt", text), "a text was wanted, a list was found");
  EXPECT_FAILURE(readItem(Reading<TypeParam>(bytes).get(), "_centerPt", number), "integer was wanted, a list");
  EXPECT_FAILURE(readItem(Reading<TypeParam>(bytes).get(), "_centerPt", real), "a real was wanted, a list was found");
  EXPECT_FAILURE(readItem(Reading<TypeParam>(bytes).get(), "_centerPt", numbers), "\"_centerPt\"");
  const std::string flagged = archived<TypeParam>([](BaseOArchive& archive) { archive.writeBool("flag", true); });
  EXPECT_FAILURE(Reading<TypeParam>(flagged).archive.beginSection("flag"), "a section was wanted, a bool was found");
  EXPECT_FAILURE(readItem(Reading<TypeParam>(flagged).get(), "flag", numbers), "a bool was found");
  EXPECT_TRUE(flag && text == "old" && number == 7 && real == 7 && numbers.size() == 1);
}

TYPED_TEST(Entries, IntegersOutOfRangeAndUnknownEnumeratorsAreRefused) {
  const std::string bytes = archived<TypeParam>([](BaseOArchive& archive) { archive.writeInteger("n", -129); });
  const std::string huge = archived<TypeParam>([](BaseOArchive& archive) { archive.writeUnsigned("n", ~omUInt64{0}); });
  const std::string text = archived<TypeParam>([](BaseOArchive& archive) { archive.writeText("n", "eK_Middle"); });
  omInt8 tiny = 7;
  omUInt64 positive = 7;
  omInt64 wide = 7;
  eKind kind = eK_Inner;
  EXPECT_FAILURE(readItem(Reading<TypeParam>(bytes).get(), "n", tiny), "a signed 8-bit integer");
  EXPECT_FAILURE(readItem(Reading<TypeParam>(bytes).get(), "n", positive), "unsigned 64-bit integer");
  EXPECT_FAILURE(readItem(Reading<TypeParam>(huge).get(), "n", wide), "signed 64-bit integer");
  EXPECT_FAILURE(readItem(Reading<TypeParam>(text).get(), "n", kind), "\"eK_Middle\" is not an enumerator of eKind");
  EXPECT_TRUE(tiny == 7 && positive == 7 && wide == 7 && kind == eK_Inner);
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
