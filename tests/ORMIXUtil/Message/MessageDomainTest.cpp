#include <ORMIXUtil/Message/MessageDomain.h>
#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace kitchen {
struct eKitchenMessage {
  struct domain {};
  enum eId { eBurnt, eCold };
  static constexpr ormix::MessageText texts[] = {{eBurnt, "%s is burnt"}, {eCold, "%s is cold"}};
  static ormix::LogMessageManager& manager() { return ormix::LogMessageManager::getInstance("kitchen"); }
};
}  // namespace kitchen
using kitchen::eKitchenMessage;

TEST(MessageDomain, nameIsTheTagsRunTimeTypeName) {
  EXPECT_EQ(ormix::domainName<eKitchenMessage>(), "N7kitchen15eKitchenMessage6domainE");
}

TEST(MessageDomain, registersOnceFromSeveralThreads) {
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread)
    threads.emplace_back([] { const ormix::MessageMapRegistrator<eKitchenMessage> registrator; });
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(ormix::formatMessage<eKitchenMessage>(eKitchenMessage::eCold, "soup"), "soup is cold");

  // What an application has put in place of a text is not taken back by a second registration.
  eKitchenMessage::manager().addMessage(ormix::domainName<eKitchenMessage>(), eKitchenMessage::eCold, "%s: too cold");
  const ormix::MessageMapRegistrator<eKitchenMessage> again;
  EXPECT_EQ(ormix::formatMessage<eKitchenMessage>(eKitchenMessage::eCold, "soup"), "soup: too cold");
}

TEST(LogMessageManager, isOneForEachName) {
  auto& kitchen = ormix::LogMessageManager::getInstance("kitchen");
  EXPECT_EQ(&kitchen, &ormix::LogMessageManager::getInstance("kitchen"));
  EXPECT_NE(&kitchen, &ormix::LogMessageManager::getInstance("cellar"));
  EXPECT_EQ(kitchen.getName(), "kitchen");
  EXPECT_FALSE(ormix::LogMessageManager::getInstance("cellar").hasMessage(ormix::domainName<eKitchenMessage>(), 0));
}
