#include <ORMIXUtil/Message/LogMessageFormater.h>

#include <boost/algorithm/string/replace.hpp>
#include <boost/format.hpp>
#include <locale>

namespace ormix {

namespace {
/// The classic locale: a text must not change with the application's number format. libstdc++ fills the character
/// tables of a locale at first use, without a lock (its bug 77704): done here, once, before several threads format.
const std::locale& formatLocale() {
  static const std::locale& locale = []() -> const std::locale& {
    const auto& characters = std::use_facet<std::ctype<char>>(std::locale::classic());
    characters.widen('0');
    for (int code = 0; code < 256; ++code) characters.narrow(static_cast<char>(code), '\0');
    return std::locale::classic();
  }();
  return locale;
}
}  // namespace

struct LogMessageFormater::Format {
  boost::format format{"", formatLocale()};
};

namespace {
template <class T>
void feedTo(boost::format& format, const T& argument) {
  // Exceptions are off, but an argument beyond the last placeholder is still counted: drop it here.
  if (format.remaining_args() > 0) format % argument;
}
}  // namespace

LogMessageFormater::LogMessageFormater(const LogMessageManager& manager)
    : _manager(manager), _format(std::make_unique<Format>()) {
  _format->format.exceptions(boost::io::no_error_bits);
}
LogMessageFormater::~LogMessageFormater() = default;

void LogMessageFormater::setMsgId(const std::string& domain, int id) {
  _format->format.clear();
  _format->format.exceptions(boost::io::no_error_bits);
  std::string text = _manager.getMessage(domain, id);
  // The text that stands for an unknown message is no format, whatever the domain is called.
  if (!_manager.hasMessage(domain, id)) boost::replace_all(text, "%", "%%");
  _format->format.parse(text);
}

std::string LogMessageFormater::string() const { return _format->format.str(); }

void LogMessageFormater::feed(std::string_view argument) { feedTo(_format->format, std::string(argument)); }
void LogMessageFormater::feed(bool argument) { feedTo(_format->format, argument); }
void LogMessageFormater::feed(char argument) { feedTo(_format->format, argument); }
void LogMessageFormater::feed(omInt64 argument) { feedTo(_format->format, argument); }
void LogMessageFormater::feed(omUInt64 argument) { feedTo(_format->format, argument); }
void LogMessageFormater::feed(omReal64 argument) { feedTo(_format->format, argument); }

}  // namespace ormix
