#include <ORMIXUtil/ProcessingResult.h>
#include <gtest/gtest.h>

#include <type_traits>

using ormix::BoolResult;

TEST(ProcessingResult, boolResultStartsSuccessful) {
  const BoolResult result;
  EXPECT_TRUE(result);
  EXPECT_TRUE(result.getResult());
  EXPECT_EQ(result.getMessage(), "");
}

TEST(ProcessingResult, otherValuesStartValueInitialised) { EXPECT_EQ(ormix::ProcessingResult<int>().getResult(), 0); }

TEST(ProcessingResult, failureCarriesItsReason) {
  const BoolResult result = ormix::failure("disk full");
  EXPECT_FALSE(result);
  EXPECT_EQ(result.getMessage(), "disk full");
}

TEST(ProcessingResult, convertsToBoolOnlyWhenAsked) {
  EXPECT_FALSE((std::is_convertible_v<BoolResult, bool>));
  EXPECT_TRUE((std::is_constructible_v<bool, BoolResult>));
  EXPECT_TRUE((std::is_convertible_v<bool, BoolResult>)) << "return true; must do";
}
