#include <ORMIXUtil/ProcessingResult.h>
#include <gtest/gtest.h>

#include <type_traits>

using ormix::BoolResult;

TEST(ProcessingResult, startsSuccessfulAndCarriesTheReasonOfAFailure) {
  const BoolResult success;
  EXPECT_TRUE(success && success.getResult());
  EXPECT_EQ(success.getMessage(), "");
  const BoolResult failed = ormix::failure("disk full");
  EXPECT_FALSE(failed);
  EXPECT_EQ(failed.getMessage(), "disk full");
  EXPECT_EQ(ormix::ProcessingResult<int>().getResult(), 0);
}

TEST(ProcessingResult, convertsToBoolOnlyWhenAsked) {
  EXPECT_FALSE((std::is_convertible_v<BoolResult, bool>));
  EXPECT_TRUE((std::is_constructible_v<bool, BoolResult>));
  EXPECT_TRUE((std::is_convertible_v<bool, BoolResult>)) << "return true; must do";
}
