// Each test is a process of its own under ctest, so that what it uses first is really used first here.

#include <ORMIXGeometry/ORMIXGeometry.h>
#include <gtest/gtest.h>

#include <atomic>
#include <sstream>
#include <thread>
#include <vector>

namespace {

using namespace ormix;
using namespace ormix::geom;

/// Runs the function in eight threads that start together.
template <class F>
void inParallel(F function) {
  std::atomic<int> waiting{8};
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 8; ++thread)
    threads.emplace_back([&waiting, &function] {
      --waiting;
      while (waiting > 0) std::this_thread::yield();
      function();
    });
  for (std::thread& thread : threads) thread.join();
}

TEST(FirstUse, OfNamesLoggerAndMessagesIsSafeFromSeveralThreads) {
  inParallel([] {
    EXPECT_EQ(Circle2d<omReal64>::getTypeName(), "ormix::geom::Circle2d<ormix::omReal64>");
    EXPECT_EQ(Circle2d<omReal64>::getVersion(), 1u);
    EXPECT_EQ(BaseGeometryEntity2d::getTypeName(), "ormix::geom::BaseGeometryEntity2d");
    EXPECT_THROW(AreaMsr2d::measure(Line2d(1, 0)), ORMIXGeometryException);
    EXPECT_FALSE(getSDKStrVersion().empty());
  });
}

TEST(FirstUse, OfEveryRegisteredClassIsSafeFromSeveralThreads) {
  inParallel([] {
    auto& factory = DynamicObjectFactory::getInstance();
    for (const std::string& name : factory.getRegisteredNames()) {
      const auto object = boost::dynamic_pointer_cast<BaseSerializationObject>(factory.createShared(name));
      ASSERT_TRUE(object) << name;
      std::stringstream stream;
      {
        CborOArchive archive(stream);
        EXPECT_TRUE(object->write(archive)) << name;
        EXPECT_TRUE(archive.close());
      }
      CborIArchive archive(stream);
      EXPECT_TRUE(object->read(archive)) << name;
    }
  });
}

}  // namespace
