#include <ORMIXUtil/Version.h>
#include <gtest/gtest.h>

TEST(Version, isTheProjects) { EXPECT_EQ(ormix::getSDKStrVersion(), ORMIX_PROJECT_VERSION); }

TEST(Version, isOneStringForAllCallers) { EXPECT_EQ(&ormix::getSDKStrVersion(), &ormix::getSDKStrVersion()); }
