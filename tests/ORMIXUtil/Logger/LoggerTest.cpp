#include <ORMIXUtil/Logger/Logger.h>
#include <gtest/gtest.h>

#include <support/LogCapture.h>
#include <set>
#include <thread>

namespace {
std::string testLoggerName() { return ormix::getBaseLoggerName() + ".test"; }
void logError(const std::string& text) {
  ormix::logMessage(ormix::getLogger(testLoggerName()), ormix::s_errorLogLevel, text);
}
}  // namespace

// Each case runs in a process of its own under ctest, so here nobody has configured anything yet.
TEST(Logger, unconfiguredIsSilent) {
  ::testing::internal::CaptureStderr();
  ::testing::internal::CaptureStdout();
  logError("nobody listens");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
}

TEST(Logger, applicationsAppenderHearsTheMessage) {
  logError("too early");
  for (const std::string& name : {testLoggerName(), ormix::getBaseLoggerName()}) {
    const support::LogCapture capture(name);
    logError("100 % wrong");
    EXPECT_EQ(capture.messages(), (support::LogCapture::Messages{{ormix::s_errorLogLevel, "100 % wrong"}})) << name;
  }
}

TEST(Logger, silentAgainWhenTheApplicationsAppenderIsGone) {
  { const support::LogCapture capture(testLoggerName()); }
  ::testing::internal::CaptureStderr();
  logError("nobody listens any more");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

TEST(Logger, applicationsConfigurationIsKept) {
  const support::LogCapture capture(testLoggerName());
  log4cplus::Logger logger = log4cplus::Logger::getInstance(testLoggerName());
  logger.setLogLevel(log4cplus::FATAL_LOG_LEVEL);
  logError("below the level");
  logger.setLogLevel(log4cplus::NOT_SET_LOG_LEVEL);
  EXPECT_TRUE(capture.messages().empty());
  EXPECT_EQ(logger.getAllAppenders().size(), 1u);
}

TEST(Logger, levelsAreThoseOfLog4cplus) {
  EXPECT_EQ(ormix::s_warnLogLevel, log4cplus::WARN_LOG_LEVEL);
  EXPECT_EQ(ormix::s_errorLogLevel, log4cplus::ERROR_LOG_LEVEL);
}

TEST(Logger, isOneForEachNameFromSeveralThreads) {
  std::array<log4cplus::Logger*, 4> found{};
  std::vector<std::thread> threads;
  for (log4cplus::Logger*& logger : found)
    threads.emplace_back([&logger] { logger = &ormix::getLogger("ormix.test.threads"); });
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(std::set<log4cplus::Logger*>(found.begin(), found.end()).size(), 1u);
}
