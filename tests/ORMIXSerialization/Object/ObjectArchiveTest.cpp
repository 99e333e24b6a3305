#include <ORMIXSerialization/Object/RegisteredObject.ipp>

#include "ArchiveFormats.h"

#include <algorithm>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

using namespace ormix;
using namespace sample;
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
  try {
    load(path);
  } catch (const ORMIXSerializationException& exception) {
    EXPECT_NE(exception.getMessage().find(path), std::string::npos) << exception.getMessage();
    return exception.getMessage();
  }
  ADD_FAILURE() << "nothing was thrown";
  return {};
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
}

TEST_F(ObjectArchive, ANewerVersionIsNamedWithItsFile) {
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
