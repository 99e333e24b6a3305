#include "SampleClasses.h"
#include "support/ArchiveFormats.h"
#include "support/Checks.h"
#include "support/LogCapture.h"

namespace {

using namespace ormix;
using namespace sample;
using namespace support;

TEST(ClassVersions, NewerOnesAreLoggedAndThrownOlderOnesFail) {
  const std::string text = "Class sample::Disc was archived with version 2, the newest known is 1";
  const std::string bytes =
      archived<Cbor>([](BaseOArchive& archive) { writeClassVersion(archive, "sample::Disc", 2); });
  const auto read = [&](omUInt32 version, omUInt32 oldest) {
    Reading<Cbor> reading(bytes);
    const BoolResult result = readClassVersion(reading.archive, "sample::Disc", version, oldest);
    EXPECT_EQ(reading.archive.isClassVersionRegistred("sample::Disc"), result.getResult());
    return result;
  };
  const LogCapture capture(getORMIXSerializationLoggerName());
  EXPECT_EQ(thrownBy<ORMIXSerializationException>([&] { read(1, 0); }), text);
  EXPECT_EQ(capture.messages(), (LogCapture::Messages{{40000, text}}));
  EXPECT_SUCCESS(read(2, 2));
  EXPECT_SUCCESS(read(3, 2));
  EXPECT_FAILURE(read(3, 3), "Class sample::Disc: Key \"version\": 2 is older than 3, the oldest known");
  Disc disc;
  EXPECT_FAILURE(readInto<Cbor>(bytes, disc), "\"sample::Level0\" was wanted, \"sample::Disc\" was found");
}

TEST(ClassVersionMessage, HasNumber25) {
  EXPECT_EQ(formatMessage<eORMIXSerializationMessage>(25, std::string("C"), 7, 3),
            "Class C was archived with version 7, the newest known is 3");
  EXPECT_EQ(getORMIXSerializationLoggerName(), getBaseLoggerName() + ".ORMIXSerialization");
}

}  // namespace
