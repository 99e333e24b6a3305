#include <ORMIXUtil/Message/LogMessageFormater.h>

#include <ostream>

#include "support/Checks.h"

namespace {

struct Printable {
  double value;
};
std::ostream& operator<<(std::ostream& stream, const Printable& printable) {
  return stream << "<" << printable.value << ">";
}

template <class... Arguments>
std::string format(const std::string& text, const Arguments&... arguments) {
  auto& manager = ormix::LogMessageManager::getInstance("formater test");
  manager.addMessage("domain", 1, text);
  ormix::LogMessageFormater formater(manager);
  formater.setMsgId("domain", 1);
  static_cast<void>((formater % ... % arguments));
  return formater.string();
}

}  // namespace

TEST(LogMessageFormater, fillsPlaceholdersAsBoostFormatDoes) {
  EXPECT_EQ(format("%s has %d points", std::string("ring"), 5u), "ring has 5 points");
  EXPECT_EQ(format("{%f, %g}", 1.5, 1e-7f), "{1.500000, 1e-07}");
  EXPECT_EQ(format("%2% before %1%", "a", "b"), "b before a");
  EXPECT_EQ(format("100 %% of %5d|%-5d|", 42, 42), "100 % of    42|42   |");
  EXPECT_EQ(format("%d", std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
  EXPECT_EQ(format("%d", std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
  EXPECT_EQ(format("%s", Printable{2.5}), "<2.5>");
  EXPECT_EQ(format("%s %s", 'c', "%d"), "c %d") << "arguments are not formats";
}

TEST(LogMessageFormater, wrongArgumentsAndBrokenTextsNeverThrow) {
  EXPECT_EQ(format("%s and %s", "one"), "one and ");
  EXPECT_EQ(format("%s and %s"), " and ");
  EXPECT_EQ(format("nothing", 1, 2, 3), "nothing");
  EXPECT_EQ(format("%d", 1, "left over"), "1");
  EXPECT_EQ(format("%d", "text"), "text");
  for (const char* text : {"%", "%5", "%1", "%1%%", "a % b", "%*d", "%|", "%|1$", "%-"})
    EXPECT_NO_THROW(format(text, 1)) << text;
}

TEST(LogMessageFormater, textDoesNotDependOnTheGlobalLocale) {
  const support::CommaLocale locale;
  EXPECT_EQ(format("%f %d %s", 1234.5, 1234567, Printable{1.5}), "1234.500000 1234567 <1.5>");
}

TEST(LogMessageFormater, unknownIdNamesDomainAndIdAndForgetsTheArguments) {
  auto& manager = ormix::LogMessageManager::getInstance("formater test");
  ormix::LogMessageFormater formater(manager);
  formater.setMsgId("no such domain %s", 77);
  formater % 1;
  EXPECT_EQ(formater.string(), "Unknown message 77 of domain no such domain %s");
  manager.addMessage("domain", 2, "%s!");
  formater.setMsgId("domain", 2);
  formater % "second";
  EXPECT_EQ(formater.string(), "second!");
}
