#include <ORMIXSerialization/ORMIXSerialization.h>
#include <gtest/gtest.h>

#include "ORMIXGeometry/Entity/2d/PolygonWithHoles/SampleTree.h"

namespace {

using namespace polygontree;

struct Cbor {
  using Out = CborOArchive;
  using In = CborIArchive;
};
struct Json {
  using Out = JsonOArchive;
  using In = JsonIArchive;
};

template <class Format>
class PolygonTreeArchive : public ::testing::Test {
 protected:
  static BoolResult write(const Node& node, std::string& bytes) {
    std::ostringstream stream;
    typename Format::Out archive(stream);
    const BoolResult result = node.write(archive);
    archive.close();
    bytes = stream.str();
    return result;
  }
  static BoolResult read(const std::string& bytes, Node& node) {
    std::istringstream stream(bytes);
    typename Format::In archive(stream);
    return node.read(archive);
  }
};
using Formats = ::testing::Types<Cbor, Json>;
TYPED_TEST_SUITE(PolygonTreeArchive, Formats);

TYPED_TEST(PolygonTreeArchive, RestoresThreeLevelsAndTheirParents) {
  const NodePtr tree = sampleTree();
  std::string bytes;
  ASSERT_TRUE(this->write(*tree, bytes));
  const NodePtr restored = boost::make_shared<Node>();
  const BoolResult result = this->read(bytes, *restored);
  ASSERT_TRUE(result) << result.getMessage();
  EXPECT_EQ(printed(*restored), printed(*tree));
  EXPECT_EQ(restored->getPolygonHoles()[0]->getPolygon2dType(), eP2DT_Interior);
  EXPECT_TRUE(isLinked(*restored));
}

TYPED_TEST(PolygonTreeArchive, ReadsOnTheStackAndIntoAHole) {
  std::string bytes;
  ASSERT_TRUE(this->write(*sampleTree(), bytes));
  Node onStack;
  ASSERT_TRUE(this->read(bytes, onStack));
  EXPECT_FALSE(onStack.getPolygonHoles()[0]->getParent());
  EXPECT_TRUE(isLinked(*onStack.getPolygonHoles()[0]));
  EXPECT_TRUE(isLinked(*boost::make_shared<Node>(std::move(onStack))));
  const NodePtr tree = sampleTree();
  ASSERT_TRUE(this->read(bytes, *tree->getPolygonHoles()[1]));
  EXPECT_TRUE(isLinked(*tree));
}

TYPED_TEST(PolygonTreeArchive, RefusesWhatItCannotHold) {
  std::string bytes;
  const BoolResult tooDeep = this->write(*chain(1500), bytes);
  EXPECT_FALSE(tooDeep);
  EXPECT_FALSE(tooDeep.getMessage().empty());
  Node withNull;
  withNull.getPolygonHoles().push_back(nullptr);
  EXPECT_FALSE(this->write(withNull, bytes));
}

TYPED_TEST(PolygonTreeArchive, LeavesTheTreeAsItWasWhenReadingFails) {
  const NodePtr tree = sampleTree();
  const std::string expected = printed(*tree);
  std::string bytes;
  ASSERT_TRUE(this->write(*tree, bytes));
  EXPECT_FALSE(this->read(bytes.substr(0, bytes.size() * 2 / 3), *tree));
  EXPECT_EQ(printed(*tree), expected);
  EXPECT_TRUE(isLinked(*tree));
}

}  // namespace
