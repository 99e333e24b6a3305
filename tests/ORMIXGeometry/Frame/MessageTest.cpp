#include <ORMIXGeometry/ORMIXGeometry.h>

#include <fstream>

#include "support/Checks.h"
#include "support/LogCapture.h"

namespace {

using namespace ormix;
using namespace ormix::geom;

// Log filters and stored logs know these texts and domain names, slips included. They are pinned by docs/messages.md: a
// line with catalogue and domain, then a row for each message.
TEST(Messages, AreThoseOfTheirPage) {
  std::ifstream page(ORMIX_TEST_MESSAGES);
  ASSERT_TRUE(page) << ORMIX_TEST_MESSAGES;
  std::string manager, domain;
  int next = 0, nbTexts = 0;
  const auto expectEnd = [&] {
    if (!domain.empty()) {
      EXPECT_FALSE(LogMessageManager::getInstance(manager).hasMessage(domain, next)) << domain << ' ' << next;
    }
  };
  for (std::string line; std::getline(page, line);) {
    const std::vector<std::string> parts = support::split(line, '`');
    if (line.rfind("Catalogue `", 0) == 0) {
      expectEnd();
      manager = parts.at(1);
      domain = parts.at(3);
      next = 0;
    } else if (line.rfind("| " + std::to_string(next) + " | `", 0) == 0) {
      std::string text = parts.at(1);
      if (const std::size_t escaped = text.find("\\n"); escaped != std::string::npos) text.replace(escaped, 2, "\n");
      EXPECT_EQ(LogMessageManager::getInstance(manager).getMessage(domain, next), text) << domain << ' ' << next;
      ++next;
      ++nbTexts;
    }
  }
  expectEnd();
  EXPECT_EQ(nbTexts, 26 + 6 + 5 + 24 + 19 + 27);
}

TEST(Messages, AreFormattedInOrder) {
  EXPECT_EQ(formatMessage<eTransformMessage>(eTransformMessage::eTM_Point3dFailed, "eT3DT_Scale", 1.5, -2.0, 0.25),
            "Failed to apply eT3DT_Scale transformation on point 3d with coordinates {1.500000, -2.000000, 0.250000}");
}

TEST(Failure, IsLoggedAtErrorLevelAndThrown) {
  EXPECT_EQ(getORMIXGeometryLoggerName(), getBaseLoggerName() + ".ORMIXGeometry");
  const support::LogCapture log(getORMIXGeometryLoggerName());
  const std::string expected = "Measure eM2DT_Area failed for geometry entity eE2DT_Segment";
  try {
    AreaMsr2d::measure(Segment2d<omReal64>(0, 0, 1, 1));
    FAIL() << "a segment has no area";
  } catch (const ORMIXGeometryException& exception) {
    EXPECT_EQ(exception.what(), expected);
    EXPECT_NE(exception.getFile().find("Measure/2d/AreaMsr2d"), std::string::npos) << exception.getFile();
    EXPECT_NE(exception.getFunction().find("AreaMsr2d::measure(const ormix::geom::BaseGeometryEntity2d&)"),
              std::string::npos)
        << exception.getFunction();
    EXPECT_GT(exception.getLine(), 0);
  }
  EXPECT_EQ(log.messages(), (support::LogCapture::Messages{{40000, expected}}));
}

}  // namespace
