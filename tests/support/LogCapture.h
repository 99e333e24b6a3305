#pragma once

#include <log4cplus/appender.h>
#include <log4cplus/logger.h>
#include <log4cplus/spi/loggingevent.h>

#include <string>
#include <utility>
#include <vector>

namespace support {

/// Collects what a logger gets while it lives, as an application's own appender would.
class LogCapture {
 public:
  explicit LogCapture(const std::string& loggerName)
      : _logger(log4cplus::Logger::getInstance(loggerName)), _appender(new Appender), _shared(_appender) {
    _logger.addAppender(_shared);
  }
  ~LogCapture() { _logger.removeAppender(_shared); }
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  /// Level and text of each message, in order.
  using Messages = std::vector<std::pair<int, std::string>>;
  const Messages& messages() const { return _appender->messages; }

 private:
  struct Appender : log4cplus::Appender {
    ~Appender() override { destructorImpl(); }
    void close() override { closed = true; }
    void append(const log4cplus::spi::InternalLoggingEvent& event) override {
      messages.emplace_back(event.getLogLevel(), event.getMessage());
    }
    Messages messages;
  };
  log4cplus::Logger _logger;
  Appender* _appender;
  log4cplus::SharedAppenderPtr _shared;  // owns _appender
};

}  // namespace support
