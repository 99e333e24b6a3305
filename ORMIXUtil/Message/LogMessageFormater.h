#pragma once

#include <ORMIXUtil/Export.h>
#include <ORMIXUtil/Message/LogMessageManager.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <locale>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>

namespace ormix {

/// Fills the placeholders of a catalogue text (%d, %s, %f, %g with Boost.Format semantics). Too few or too many
/// arguments never throw: what is missing stays blank, what is left over is dropped.
class ORMIX_UTIL_API LogMessageFormater {
 public:
  /// \param manager the catalogue of the texts, which must live as long as this object
  explicit LogMessageFormater(const LogMessageManager& manager);
  ~LogMessageFormater();

  /// Chooses the text and forgets arguments fed before.
  void setMsgId(const std::string& domain, int id);

  /// Feeds the next argument: a text, a number, or anything that prints to a stream.
  template <class T>
  LogMessageFormater& operator%(const T& argument) {
    if constexpr (std::is_convertible_v<const T&, std::string_view>)
      feed(std::string_view(argument));
    else if constexpr (std::is_same_v<T, bool> || std::is_same_v<T, char>)
      feed(argument);
    else if constexpr (std::is_floating_point_v<T>)
      feed(static_cast<omReal64>(argument));
    else if constexpr (std::is_integral_v<T> && std::is_signed_v<T>)
      feed(static_cast<omInt64>(argument));
    else if constexpr (std::is_integral_v<T>)
      feed(static_cast<omUInt64>(argument));
    else
      feedPrinted(argument);
    return *this;
  }

  /// The text with the arguments fed so far.
  std::string string() const;

 private:
  template <class T>
  void feedPrinted(const T& argument) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << argument;
    feed(std::string_view(text.str()));
  }
  void feed(std::string_view argument);
  void feed(bool argument);
  void feed(char argument);
  void feed(omInt64 argument);
  void feed(omUInt64 argument);
  void feed(omReal64 argument);

  struct Format;
  const LogMessageManager& _manager;
  std::unique_ptr<Format> _format;
};

}  // namespace ormix
