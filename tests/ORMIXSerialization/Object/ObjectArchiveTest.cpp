#include <ORMIXSerialization/Object/RegisteredObject.ipp>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "SampleClasses.h"
#include "support/ArchiveFormats.h"
#include "support/Checks.h"

namespace {
bool g_diskIsBroken = false;
}

/// Takes the place of the C library's, in the library too.
extern "C" int fsync(int file) {
  if (!g_diskIsBroken) return static_cast<int>(::syscall(SYS_fsync, file));
  errno = EIO;
  return -1;
}

namespace {

using namespace ormix;
using namespace sample;
using namespace support;
namespace fs = std::filesystem;

/// A folder of its own for each test, removed behind it.
struct ObjectArchive : ::testing::Test {
  fs::path folder = fs::temp_directory_path() / ("ormix_archive_test_" + std::to_string(::getpid()));
  void SetUp() override { fs::create_directory(folder); }
  void TearDown() override { fs::remove_all(folder); }
  std::string path(const char* name) const { return (folder / name).string(); }
  std::size_t nbFiles() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
  }
};

std::string contents(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}
void put(const std::string& path, const std::string& bytes) { std::ofstream(path, std::ios::binary) << bytes; }

/// The message of the exception that loading the file must throw.
std::string loadFailure(const std::string& path) {
  const std::string message = thrownBy<ORMIXSerializationException>([&] { load(path); });
  EXPECT_NE(message.find(path), std::string::npos) << message;
  return message;
}

TEST_F(ObjectArchive, TheEndingChoosesTheFormatOnlyInWriting) {
  const Tree tree = sampleTree(2);
  EXPECT_SUCCESS(save(path("tree.json"), tree));
  EXPECT_SUCCESS(save(path("tree.any"), tree));
  EXPECT_EQ(contents(path("tree.json")).front(), '[');
  EXPECT_EQ(contents(path("tree.any")).front(), '\x9f');
  fs::rename(path("tree.json"), path("tree.cbor"));
  for (const char* name : {"tree.cbor", "tree.any"}) {
    const SerializationObjectPtr object = load(path(name));
    ASSERT_EQ(object->getClassName(), "sample::Tree");
    EXPECT_EQ(describe(dynamic_cast<Tree&>(*object)), describe(tree));
  }
}

TEST_F(ObjectArchive, SeveralObjectsKeepTheirOrder) {
  SerializationObjectPtrColl objects{boost::make_shared<Disc>(Vertex{1, 2}, 3), boost::make_shared<Ring>(),
                                     boost::make_shared<Disc>(Vertex{4, 5}, 6)};
  for (const char* name : {"all.json", "all.cbor"}) {
    EXPECT_SUCCESS(saveAll(path(name), objects));
    const SerializationObjectPtrColl read = loadAll(path(name));
    ASSERT_EQ(read.size(), 3u);
    EXPECT_EQ(read[1]->getClassName(), "sample::Ring");
    EXPECT_EQ(dynamic_cast<Disc&>(*read[2]).radius(), 6);
    EXPECT_NE(loadFailure(path(name)).find("\"sample::Ring\""), std::string::npos);
    EXPECT_SUCCESS(saveAll(path(name), {}));
    EXPECT_TRUE(loadAll(path(name)).empty());
    EXPECT_NE(loadFailure(path(name)).find("no more entries"), std::string::npos);
  }
  objects.push_back(nullptr);
  EXPECT_FAILURE(saveAll(path("null.json"), objects), "null pointer");
  EXPECT_FALSE(fs::exists(path("null.json")));
}

TEST_F(ObjectArchive, WhatCannotBeReadIsNamed) {
  put(path("empty"), "");
  put(path("text"), "Hello");
  put(path("unknown"), archived<Json>([](BaseOArchive& archive) {
        archive.beginSection("no::such::Class");
        archive.endSection();
      }));
  EXPECT_NE(loadFailure(path("none")).find("No such file"), std::string::npos);
  EXPECT_NE(loadFailure(path("empty")).find("empty"), std::string::npos);
  EXPECT_NE(loadFailure(path("text")).find("not an archive"), std::string::npos);
  EXPECT_NE(loadFailure(folder.string()).find("is a directory"), std::string::npos);
  EXPECT_NE(loadFailure(path("unknown")).find("\"no::such::Class\" is not registered"), std::string::npos);
  put(path("newer"), archived<Cbor>([](BaseOArchive& archive) {
        archive.beginSection("sample::Disc");
        writeClassVersion(archive, "sample::Level0", 5);
        archive.endSection();
      }));
  EXPECT_NE(loadFailure(path("newer")).find("Class sample::Level0 was archived with version 5"), std::string::npos);
}

TEST_F(ObjectArchive, AnOlderFileIsReplacedAsAWhole) {
  EXPECT_SUCCESS(save(path("disc"), Disc({1, 2}, 3)));
  const std::string old = contents(path("disc"));
  fs::permissions(path("disc"), fs::perms::owner_read | fs::perms::owner_write);
  Tree bad = sampleTree(1);
  bad.branches.push_back(nullptr);
  EXPECT_FAILURE(save(path("disc"), bad), path("disc"));
  EXPECT_EQ(contents(path("disc")), old);
  fs::create_symlink("disc", path("link"));
  EXPECT_SUCCESS(save(path("link"), Disc({1, 2}, 4)));
  EXPECT_TRUE(fs::is_symlink(path("link")));
  EXPECT_EQ(dynamic_cast<Disc&>(*load(path("disc"))).radius(), 4);
  EXPECT_EQ(fs::status(path("disc")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(nbFiles(), 2u);
}

TEST_F(ObjectArchive, WhatKilledProgramsLeftIsRemoved) {
  const std::string mine = "disc.tmp-" + std::to_string(::getpid()) + "-";
  for (int number = 0; number < 120; ++number) put(path((mine + std::to_string(number)).c_str()), "torn");
  put(path("disc.tmp-1-0"), "torn");
  put(path("disc.tmp-1-1"), "being written");
  const int writing = ::open(path("disc.tmp-1-1").c_str(), O_RDONLY);
  ASSERT_EQ(::flock(writing, LOCK_EX), 0);
  for (const char* other : {"disc.tmp-1", "disc.tmp-1-x", "disc.tmp-", "other.tmp-1-0"}) put(path(other), "another's");
  for (int round = 0; round < 2; ++round) {
    EXPECT_SUCCESS(save(path("disc"), Disc({1, 2}, 3)));
    EXPECT_EQ(nbFiles(), 6u);
    EXPECT_EQ(contents(path("disc.tmp-1-1")), "being written");
  }
  ::close(writing);
  EXPECT_SUCCESS(save(path("disc"), Disc({1, 2}, 3)));
  EXPECT_EQ(nbFiles(), 5u);
}

TEST_F(ObjectArchive, ALinkToNothingGetsItsTarget) {
  fs::create_directory(path("folder"));
  fs::create_symlink("folder/second", path("first"));
  fs::create_symlink("../disc", path("folder/second"));
  EXPECT_SUCCESS(save(path("first"), Disc({1, 2}, 3)));
  EXPECT_TRUE(fs::is_symlink(path("first")) && fs::is_symlink(path("folder/second")));
  EXPECT_FALSE(fs::is_symlink(path("disc")));
  EXPECT_EQ(dynamic_cast<Disc&>(*load(path("first"))).radius(), 3);
  fs::create_symlink("loop", path("loop"));
  EXPECT_FAILURE(save(path("loop"), Disc()), "Too many levels of symbolic links");
}

TEST_F(ObjectArchive, WhereNoOtherFileCanBeTheTargetIsWritten) {
  for (const std::size_t length : {240u, 245u, 250u, 255u}) {
    const std::string name(length, 'n');
    EXPECT_SUCCESS(save(path(name.c_str()), Disc({1, 2}, 3)));
    EXPECT_EQ(dynamic_cast<Disc&>(*load(path(name.c_str()))).radius(), 3);
  }
  put(path("disc"), "old");
  fs::permissions(path("disc"), fs::perms(0666));
  fs::permissions(folder, fs::perms(0555));
  const uid_t user = ::geteuid();
  ASSERT_EQ(::seteuid(user == 0 ? 65534 : user), 0);
  const BoolResult saved = save(path("disc"), Disc({1, 2}, 4)), refused = save(path("new"), Disc());
  ASSERT_EQ(::seteuid(user), 0);
  fs::permissions(folder, fs::perms(0755));
  EXPECT_SUCCESS(saved);
  EXPECT_FAILURE(refused, "Permission denied");
  EXPECT_EQ(dynamic_cast<Disc&>(*load(path("disc"))).radius(), 4);
}

TEST_F(ObjectArchive, BytesThatDoNotReachTheDiskAreAFailure) {
  EXPECT_SUCCESS(save(path("disc"), Disc({1, 2}, 3)));
  g_diskIsBroken = true;
  const BoolResult saved = save(path("disc"), Disc({1, 2}, 4));
  g_diskIsBroken = false;
  EXPECT_FAILURE(saved, "Input/output error");
  EXPECT_EQ(dynamic_cast<Disc&>(*load(path("disc"))).radius(), 3);
  EXPECT_EQ(nbFiles(), 1u);
}

TEST_F(ObjectArchive, WhatCannotBeWrittenIsNamed) {
  EXPECT_FAILURE(save(folder.string(), Disc()), "is a directory");
  EXPECT_FAILURE(save(path("no/such/folder/disc"), Disc()), "No such file or directory");
  if (fs::exists("/dev/full")) EXPECT_FAILURE(save("/dev/full", Disc()), "/dev/full");
  if (fs::exists("/dev/null")) EXPECT_SUCCESS(save("/dev/null", Disc()));
  EXPECT_TRUE(!fs::exists("/dev/null") || fs::is_character_file("/dev/null"));
}

/// Notes how far down the stack is where an object of it is made.
class Nest : public RegisteredObject<Nest, Level1> {
 public:
  static constexpr const char* s_className = "sample::Nest";
  Nest() { s_deepest = std::min<const void*>(s_deepest, __builtin_frame_address(0), std::less<>()); }
  std::vector<boost::shared_ptr<Nest>> inner;
  static const void* s_deepest;

 private:
  friend struct ormix::FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("inner", self.inner);
  }
};
const void* Nest::s_deepest = nullptr;
const DynamicRegistrator<Nest> g_nestRegistrator;

TEST_F(ObjectArchive, NestedObjectsTakeLittleStack) {
  constexpr std::ptrdiff_t depth = 490;
  boost::shared_ptr<Nest> outer = boost::make_shared<Nest>();
  for (std::ptrdiff_t level = 0; level < depth; ++level) {
    const auto around = boost::make_shared<Nest>();
    around->inner.push_back(std::move(outer));
    outer = around;
  }
  for (const char* name : {"nest.json", "nest.cbor"}) {
    EXPECT_SUCCESS(save(path(name), *outer));
    const void* const here = __builtin_frame_address(0);
    Nest::s_deepest = here;
    EXPECT_TRUE(load(path(name)));
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    constexpr std::ptrdiff_t mostOfALevel = 4096;
#else
    constexpr std::ptrdiff_t mostOfALevel = 640;
#endif
    EXPECT_LT((static_cast<const char*>(here) - static_cast<const char*>(Nest::s_deepest)) / depth, mostOfALevel);
  }
}

/// An archive asks the factory once a class, but does not use what it was told of a class that is gone since.
TEST_F(ObjectArchive, AClassIsKnownAsLongAsItIsRegistered) {
  DynamicObjectFactory& factory = DynamicObjectFactory::getInstance();
  const std::string name = Disc::getTypeName();
  const std::string bytes = archived<Cbor>([](BaseOArchive& archive) {
    for (int i = 0; i < 3; ++i) writeObject(archive, Disc({1, 2}, i));
  });
  Reading<Cbor> reading(bytes);
  EXPECT_TRUE(readObject(reading.archive));
  ASSERT_TRUE(factory.unRegisterClass(name));
  EXPECT_EQ(readObject(reading.archive).getMessage(),
            "Key \"(an object)\": class \"sample::Disc\" is not registered in the dynamic object factory");
  const auto createRing = [] { return Ring::createSharedObject(); };
  ASSERT_TRUE(factory.registerClass(name, nullptr, createRing));
  EXPECT_EQ(reading.archive.createObject(name)->getClassName(), "sample::Ring");
  ASSERT_TRUE(factory.unRegisterClass(name));
  ASSERT_TRUE(factory.registerClass(name, &Disc::createNewObject, &Disc::createSharedObject));
  EXPECT_EQ(dynamic_cast<Disc&>(*readObject(reading.archive).getResult()).radius(), 1);
}

/// A class whose base class has fields, and that takes over what was read itself.
class Coin : public RegisteredObject<Coin, Disc> {
 public:
  static constexpr const char* s_className = "sample::Coin";
  omInt32 value = 0;
  int nbAdopted = 0;
  Coin() = default;
  Coin(Disc disc, omInt32 v) : value(v) { static_cast<Disc&>(*this) = disc; }

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("value", self.value);
  }
  static void adopt(Coin& self, Coin& read) {
    self = std::move(read);
    ++self.nbAdopted;
  }
};

/// What an archive remembers of classes must not skip the fields of base classes.
TEST_F(ObjectArchive, BaseClassesMayHaveFields) {
  DynamicObjectFactory& factory = DynamicObjectFactory::getInstance();
  ASSERT_TRUE(factory.registerClass(Coin::getTypeName(), &Coin::createNewObject, &Coin::createSharedObject));
  for (const char* name : {"coins.cbor", "coins.json"}) {
    SerializationObjectPtrColl coins;
    for (omInt32 i = 0; i < 3; ++i) coins.push_back(boost::make_shared<Coin>(Disc({1, 2}, i + 1), 10 * i));
    EXPECT_SUCCESS(saveAll(path(name), coins));
    const auto read = loadAll(path(name));
    ASSERT_EQ(read.size(), 3u);
    for (omInt32 i = 0; i < 3; ++i) {
      const Coin& coin = dynamic_cast<Coin&>(*read[static_cast<std::size_t>(i)]);
      EXPECT_TRUE(coin.radius() == i + 1 && coin.value == 10 * i && coin.nbAdopted == 1) << i;
    }
  }
  ASSERT_TRUE(factory.unRegisterClass(Coin::getTypeName()));
}

/// An object that only the archive has may be read in place; one that a creator hands out again must not.
TEST_F(ObjectArchive, AnObjectThatOthersOwnIsUnchangedByAFailure) {
  static boost::shared_ptr<Disc> common;
  common = boost::make_shared<Disc>(Vertex{3, 4}, 5);
  DynamicObjectFactory& factory = DynamicObjectFactory::getInstance();
  ASSERT_TRUE(factory.unRegisterClass(Disc::getTypeName()));
  const auto createCommon = []() -> boost::shared_ptr<BaseDynamicObject> { return common; };
  ASSERT_TRUE(factory.registerClass(Disc::getTypeName(), nullptr, createCommon));
  const std::string bytes = archived<Cbor>([](BaseOArchive& archive) { writeObject(archive, Disc({1, 2}, 6)); });
  std::istringstream cut(bytes.substr(0, bytes.rfind("_radius"))), whole(bytes);
  EXPECT_THROW(loadAll(cut), ORMIXSerializationException);
  EXPECT_TRUE(common->center().x == 3 && common->radius() == 5);
  EXPECT_EQ(loadAll(whole).front(), common);
  EXPECT_TRUE(common->center().x == 1 && common->radius() == 6);
  ASSERT_TRUE(factory.unRegisterClass(Disc::getTypeName()));
  ASSERT_TRUE(factory.registerClass(Disc::getTypeName(), &Disc::createNewObject, &Disc::createSharedObject));
}

TEST_F(ObjectArchive, ObjectsOfAnotherClassAreRefused) {
  const std::string bytes = archived<Json>([](BaseOArchive& archive) {
    archive.beginSection("branches");
    writeObject(archive, Disc());
    archive.endSection();
  });
  std::vector<boost::shared_ptr<Tree>> branches(1);
  EXPECT_FAILURE(readItem(Reading<Json>(bytes).get(), "branches", branches), "\"sample::Disc\" cannot stand here");
  EXPECT_EQ(branches.size(), 1u);
}

}  // namespace
