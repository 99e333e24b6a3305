#include <ORMIXUtil/Exception/UnHandleException.h>
#include <ORMIXUtil/Object/DynamicRegistrator.h>

#include <atomic>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <memory>
#include <optional>
#include <thread>

#include "support/Checks.h"

using ormix::BaseDynamicObject;
using ormix::DynamicObjectFactory;

namespace {

class Lamp : public BaseDynamicObject {
 public:
  static const std::string& getTypeName() {
    static const std::string name = "test::Lamp";
    return name;
  }
  static BaseDynamicObject* createNewObject() { return new Lamp; }
  static boost::shared_ptr<BaseDynamicObject> createSharedObject() { return boost::make_shared<Lamp>(); }

  const std::string& getClassName() const override { return getTypeName(); }
  BaseDynamicObject* createNew() const override { return createNewObject(); }
  boost::shared_ptr<BaseDynamicObject> createShared() const override { return createSharedObject(); }
  bool hasCopySupport() const override { return true; }
  BaseDynamicObject* duplicate() const override { return new Lamp(*this); }
  boost::shared_ptr<BaseDynamicObject> duplicateShared() const override { return boost::make_shared<Lamp>(*this); }
  void copy(const BaseDynamicObject& other) override { watts = static_cast<const Lamp&>(other).watts; }

  int watts = 0;
};

/// Creators of another class under the same name.
BaseDynamicObject* createBrightLamp() {
  auto* const lamp = new Lamp;
  lamp->watts = 100;
  return lamp;
}
boost::shared_ptr<BaseDynamicObject> createBrightLampShared() {
  return boost::shared_ptr<BaseDynamicObject>(createBrightLamp());
}

DynamicObjectFactory& factory() { return DynamicObjectFactory::getInstance(); }

int wattsOf(const BaseDynamicObject& object) { return dynamic_cast<const Lamp&>(object).watts; }

}  // namespace

TEST(DynamicObjectFactory, createsByNameWhileTheRegistratorLives) {
  std::optional<ormix::DynamicRegistrator<Lamp>> registrator;
  EXPECT_FALSE(factory().isRegistered(Lamp::getTypeName()));
  registrator.emplace();
  EXPECT_TRUE(factory().isRegistered(Lamp::getTypeName()));
  const std::unique_ptr<BaseDynamicObject> owned(factory().createNew("test::Lamp"));
  EXPECT_EQ(owned->getClassName(), "test::Lamp");
  EXPECT_EQ(factory().createShared("test::Lamp")->getClassName(), "test::Lamp");
  registrator.reset();
  EXPECT_FALSE(factory().isRegistered(Lamp::getTypeName()));
}

TEST(DynamicObjectFactory, unknownNamesAndMissingCreatorsAreNamedInTheException) {
  ASSERT_TRUE(factory().registerClass("test::Half", nullptr, &createBrightLampShared));
  ASSERT_TRUE(factory().registerClass("test::None", nullptr, nullptr));
  EXPECT_EQ(wattsOf(*factory().createShared("test::Half")), 100);
  const auto expectNamed = [](const std::string& name, auto create) {
    EXPECT_NE(support::thrownBy<ormix::UnHandleException>(create).find("\"" + name + "\""), std::string::npos) << name;
  };
  for (const std::string name : {"test::Nothing", "", "%s %d", "test::None", "test::Half"}) {
    expectNamed(name, [&] { factory().createNew(name); });
    if (name != "test::Half") expectNamed(name, [&] { factory().createShared(name); });
  }
  EXPECT_TRUE(factory().unRegisterClass("test::Half"));
  EXPECT_TRUE(factory().unRegisterClass("test::None"));
}

TEST(DynamicObjectFactory, firstRegistrationWins) {
  const ormix::DynamicRegistrator<Lamp> first;
  EXPECT_FALSE(factory().registerClass("test::Lamp", &createBrightLamp, &createBrightLampShared));
  EXPECT_EQ(wattsOf(*factory().createShared("test::Lamp")), 0);
}

TEST(DynamicObjectFactory, registratorLeavesAForeignRegistrationAlone) {
  ASSERT_TRUE(factory().registerClass("test::Lamp", &createBrightLamp, &createBrightLampShared));
  { const ormix::DynamicRegistrator<Lamp> second; }
  EXPECT_TRUE(factory().isRegistered("test::Lamp"));
  EXPECT_TRUE(factory().unRegisterClass("test::Lamp"));
  EXPECT_FALSE(factory().unRegisterClass("test::Lamp"));
}

// One class stays known all the time while many others come, so that the table grows: whoever asks for it must always
// get it, and none of the others may be lost.
TEST(DynamicObjectFactory, servesSeveralThreadsAtOnce) {
  const ormix::DynamicRegistrator<Lamp> registrator;
  constexpr int nbRounds = 20000;
  std::atomic<int> failures{0}, waiting{4};
  const auto use = [&](int thread) {
    const auto own = [thread](int round) { return "test::" + std::to_string(thread) + "." + std::to_string(round); };
    --waiting;
    while (waiting > 0) std::this_thread::yield();
    for (int round = 0; round < nbRounds; ++round) {
      bool good = factory().registerClass(own(round), &Lamp::createNewObject, &Lamp::createSharedObject);
      for (int again = 0; again < 4; ++again) good &= wattsOf(*factory().createShared("test::Lamp")) == 0;
      good &= factory().isRegistered(own(round / 2 * 2));
      if (round % 2 != 0) good &= factory().unRegisterClass(own(round));
      failures += !good;
    }
    for (int round = 0; round < nbRounds; round += 2) failures += !factory().unRegisterClass(own(round));
  };
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread) threads.emplace_back(use, thread);
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures, 0);
  EXPECT_EQ(factory().getRegisteredNames(), std::vector<std::string>{"test::Lamp"});
}
