#include <ORMIXUtil/Enumeration.h>
#include <gtest/gtest.h>

#include <sstream>

namespace {
enum eFruit : int { eF_Apple, eF_Pear };
enum class UnnamedFruit { plum };
}  // namespace

namespace ormix {
template <>
struct EnumerationNames<eFruit> {
  static constexpr std::string_view typeName = "eFruit";
  static constexpr std::array<std::string_view, 2> names{"eF_Apple", "eF_Pear"};
};
}  // namespace ormix

TEST(Enumeration, textAndValueAreInverse) {
  using ormix::operator<<;
  for (const eFruit fruit : {eF_Apple, eF_Pear})
    EXPECT_EQ(ormix::enumerationFromString<eFruit>(ormix::toString(fruit)), fruit);
  for (const char* text : {"", "eF_", "ef_apple", "eF_Apple ", "0"})
    EXPECT_FALSE(ormix::enumerationFromString<eFruit>(text)) << text;
  EXPECT_EQ(ormix::toString(static_cast<eFruit>(3)), "eFruit(3)");
  std::ostringstream text;
  text << eF_Pear;
  EXPECT_EQ(text.str(), "eF_Pear");
}

TEST(Enumeration, onlyNamedEnumerationsTakePart) {
  EXPECT_TRUE(ormix::isNamedEnumeration<eFruit>);
  EXPECT_FALSE(ormix::isNamedEnumeration<UnnamedFruit>);
  EXPECT_FALSE(ormix::isNamedEnumeration<int>);
}
