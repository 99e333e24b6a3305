#include <ORMIXUtil/Exception/UnHandleException.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <type_traits>

TEST(BaseException, keepsWhatItWasGiven) {
  const ormix::BaseException error("ring is empty", "void f()", "Ring.cpp", 42);
  EXPECT_STREQ(error.what(), "ring is empty");
  EXPECT_EQ(error.getMessage(), "ring is empty");
  EXPECT_EQ(error.getFunction(), "void f()");
  EXPECT_EQ(error.getFile(), "Ring.cpp");
  EXPECT_EQ(error.getLine(), 42);
}

TEST(BaseException, derivedIsCaughtByEveryBaseAndKeepsItsTextWhenCopied) {
  const auto throwIt = [] { throw ormix::UnHandleException("unknown", "f", "F.cpp", 1); };
  EXPECT_THROW(throwIt(), ormix::UnHandleException);
  EXPECT_THROW(throwIt(), ormix::BaseException);
  try {
    throwIt();
  } catch (const std::exception& error) {
    EXPECT_STREQ(error.what(), "unknown");
  }
  EXPECT_TRUE(std::is_nothrow_destructible_v<ormix::BaseException>);
}
