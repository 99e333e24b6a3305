#include "ArchiveFormats.h"
#include "support/LogCapture.h"

namespace {

using namespace ormix;
using namespace sample;

template <class Format>
using ClassVersions = ArchiveTest<Format>;
TYPED_TEST_SUITE(ClassVersions, Formats);

/// A disc's archive in which the innermost class has this version.
template <class Format>
std::string discArchive(omUInt32 version) {
  return archived<Format>([version](BaseOArchive& archive) {
    for (const char* level : {"sample::Level0", "sample::Level1", "sample::Level2<ormix::omReal64>"})
      writeClassVersion(archive, level, 1);
    writeClassVersion(archive, "sample::Disc", version);
    writeItem(archive, "_centerPt", Vertex{1, 2});
    writeItem(archive, "_radius", 3.0);
  });
}

TYPED_TEST(ClassVersions, StandOnceAnArchive) {
  const std::string bytes = archived<TypeParam>([](BaseOArchive& archive) {
    EXPECT_SUCCESS(Disc({1, 2}, 3).write(archive));
    EXPECT_EQ(archive.getRegisterClassVersion("sample::Disc"), 1u);
    EXPECT_SUCCESS(Disc({4, 5}, 6).write(archive));
  });
  EXPECT_EQ(bytes.find("sample::Disc"), bytes.rfind("sample::Disc"));
  Reading<TypeParam> reading(bytes);
  Disc first, second;
  EXPECT_SUCCESS(first.read(reading.archive));
  EXPECT_EQ(reading.archive.getRegisterClassVersion("sample::Level0"), 1u);
  EXPECT_SUCCESS(second.read(reading.archive));
  EXPECT_EQ(first.radius(), 3);
  EXPECT_EQ(second.radius(), 6);
}

TYPED_TEST(ClassVersions, OlderOnesAreRead) {
  for (const omUInt32 version : {0u, 1u}) {
    Reading<TypeParam> reading(discArchive<TypeParam>(version));
    Disc disc;
    EXPECT_SUCCESS(disc.read(reading.archive));
    EXPECT_EQ(reading.archive.getRegisterClassVersion("sample::Disc"), version);
  }
}

TYPED_TEST(ClassVersions, NewerOnesAreLoggedAndThrown) {
  const std::string text = "Class sample::Disc was archived with version 2, the newest known is 1";
  const support::LogCapture capture(getORMIXSerializationLoggerName());
  Reading<TypeParam> reading(discArchive<TypeParam>(2));
  Disc disc({7, 8}, 9);
  try {
    disc.read(reading.archive);
    FAIL() << "nothing was thrown";
  } catch (const ORMIXSerializationException& exception) {
    EXPECT_EQ(exception.getMessage(), text);
    EXPECT_EQ(exception.what(), text);
  }
  EXPECT_EQ(disc.radius(), 9);
  EXPECT_EQ(capture.messages(), (support::LogCapture::Messages{{40000, text}}));
}

TYPED_TEST(ClassVersions, TooOldOnesAreAFailure) {
  const std::string bytes =
      archived<TypeParam>([](BaseOArchive& archive) { writeClassVersion(archive, "sample::Disc", 2); });
  Reading<TypeParam> known(bytes);
  EXPECT_SUCCESS(readClassVersion(known.archive, "sample::Disc", 3, 2));
  Reading<TypeParam> tooOld(bytes);
  EXPECT_FAILURE(readClassVersion(tooOld.archive, "sample::Disc", 3, 3),
                 "Class sample::Disc: Key \"version\": 2 is older than 3, the oldest known");
  EXPECT_FALSE(tooOld.archive.isClassVersionRegistred("sample::Disc"));
}

TEST(ClassVersionMessage, HasNumber25) {
  EXPECT_EQ(formatMessage<eORMIXSerializationMessage>(25, std::string("C"), 7, 3),
            "Class C was archived with version 7, the newest known is 3");
  EXPECT_EQ(getORMIXSerializationLoggerName(), getBaseLoggerName() + ".ORMIXSerialization");
}

TYPED_TEST(ClassVersions, AMissingOneIsAFailure) {
  const std::string bytes = archived<TypeParam>([](BaseOArchive& archive) { writeItem(archive, "_radius", 3.0); });
  Disc disc;
  EXPECT_FAILURE(disc.read(Reading<TypeParam>(bytes).get()), "\"sample::Level0\" was wanted, \"_radius\" was found");
}

}  // namespace
